// A whole day at the till with real mouse, touch and key events: what arrives is what was entered, exactly
// once and in order, and closed dialogs leave nothing behind.
#include "till.h"

#include "adapters/qt/bounce_filter.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QMetaMethod>
#include <QPointingDevice>
#include <QTest>
#include <QThread>
#include <QTimer>
#include <QWindow>

#include <gtest/gtest.h>

#include <map>
#include <mutex>
#include <set>

extern quintptr qtHookData[]; // where Qt takes the callbacks of tools that watch its objects

namespace kova {
namespace {

using test::as;
using test::Till;

std::mutex objectsMutex; // Qt's own threads make objects too
std::set<QObject*> objects;

void added(QObject* object) {
    const std::lock_guard lock(objectsMutex);
    objects.insert(object);
}
void removed(QObject* object) {
    const std::lock_guard lock(objectsMutex);
    objects.erase(object);
}

struct Receivers : QObject {
    static int of(const QObject& sender, const QMetaMethod& signal) {
        return (sender.*&Receivers::receivers)(("2" + signal.methodSignature()).constData());
    }
};

/// What lives in the process on behalf of dialogs.
struct Holdings {
    std::ptrdiff_t widgets = 0, timers = 0, connections = 0, signalSlots = 0;
    std::map<std::string, int> objects; ///< by class
    friend bool operator==(const Holdings&, const Holdings&) = default;
    friend void PrintTo(const Holdings& held, std::ostream* out) {
        *out << held.widgets << " widgets, " << held.timers << " timers, " << held.connections
             << " connections, " << held.signalSlots << " slots, " << testing::PrintToString(held.objects);
    }
};

class WholeDay : public testing::Test {
  protected:
    WholeDay() {
        till.insideModal = [this](Window& window) {
            tap(window, window.name() == "frmMsgBox" ? "cmd1" : "CMD_Annulla");
        };
    }
    ~WholeDay() override { qtHookData[3] = qtHookData[4] = 0; }
    static bool watch() {
        qtHookData[3] = reinterpret_cast<quintptr>(&added);
        qtHookData[4] = reinterpret_cast<quintptr>(&removed);
        return true;
    }
    Holdings holdings() {
        till.wait(50);
        Holdings held;
        held.widgets = QApplication::allWidgets().size();
        for (QObject* const object : objects) {
            if (object->thread() != qApp->thread() || qobject_cast<QThread*>(object) != nullptr)
                continue; // a pool's threads come and go
            ++held.objects[object->metaObject()->className()];
            if (qobject_cast<QTimer*>(object) != nullptr) // those of Qt's caches are its own
                held.timers += QAbstractEventDispatcher::instance()->registeredTimers(object).size();
            for (int i = 0; i < object->metaObject()->methodCount(); ++i)
                if (const auto method = object->metaObject()->method(i);
                    method.methodType() == QMetaMethod::Signal)
                    held.connections += Receivers::of(*object, method);
        }
        held.signalSlots = static_cast<std::ptrdiff_t>(
            till.process.platform.languageRuntime.languageChanged.connectedSlots());
        return held;
    }

    void tap(Window& window, const char* name, std::optional<std::string> part = {},
             std::optional<int> index = {}) {
        WindowFrame& frame = *till.userInterface.frame(window);
        const auto place = till.userInterface.touchPoint(*window.find(name, index), part);
        const QPoint point = place->widget->mapTo(&frame, place->point.toPoint());
        if (byMouse) {
            QTest::mouseClick(frame.windowHandle(), Qt::LeftButton, {}, point);
        } else {
            if (point == last) // else it would be a bounce
                QTest::qSleep(static_cast<int>(BounceFilter::WindowMilliseconds) + 5);
            QTest::touchEvent(&frame, screen.get()).press(0, point, &frame).commit();
            QTest::touchEvent(&frame, screen.get()).release(0, point, &frame).commit();
            last = point;
        }
        till.loop.settle();
    }
    void tap(const char* name, std::optional<std::string> part = {}, std::optional<int> index = {}) {
        tap(till.dialog(), name, std::move(part), index);
    }
    /// As a cashier does: touches, and goes on once the mark is seen.
    void choose(const char* grid, const std::string& key) {
        tap(grid, key);
        const auto& buttons = till.control<ButtonGrid>(grid);
        ASSERT_TRUE(QTest::qWaitFor([&] { return buttons.find(key)->marked; })) << grid << " " << key;
    }
    void refused(const char* why) {
        tap("cmdConferma");
        refusals.emplace_back(why);
    }
    void note(const std::string& text) {
        tap("txtNote");
        for (const char letter : text)
            tap("Virtual_Keyboard", std::string(1, letter));
    }
    double amount(int number) {
        const int cents = 95 + number * 1370 + number % 10;
        const std::string text =
            std::to_string(cents / 100) + "," + std::to_string(cents / 10 % 10) + std::to_string(cents % 10);
        if (number % 6 == 0) {
            till.dialog().moveFocus(*till.dialog().find("cmdConferma"));
            for (const char character : text)
                QTest::keyClick(till.frame().windowHandle(), character);
        } else {
            for (const char character : text)
                tap("Virtual_KeyPAD", std::string(1, character == ',' ? '.' : character));
        }
        return cents / 100.0;
    }
    void confirm(std::vector<test::RecordingSink::Movement> entered) {
        till.sink.movements.clear();
        tap("cmdConferma");
        EXPECT_EQ(till.sink.movements, entered);
        events.insert(events.end(), entered.size(), "SalvaPagamento");
    }
    void single(int number);
    void pair(int number);

    const bool watching = watch();
    Till till{{1280, 800}, QtEventLoop::Time::Live};
    std::unique_ptr<QPointingDevice> screen{QTest::createTouchDevice()};
    QPoint last;
    bool byMouse = false;
    std::string currency;
    std::vector<std::string> refusals, events;
};

void WholeDay::single(int number) {
    const auto drawer = static_cast<std::int16_t>(number % 5);
    const int payment = number % 3 + 1;
    const int activity = number / 3 % 3 + 1;
    std::string text = activity == 1
                           ? "Fondo cassa"
                           : std::string("N").append(std::to_string(number)); // the first brings its own
    choose("Pulsantiera_Pagamenti", std::to_string(payment));
    if (number % 4 == 0)
        choose("Pulsantiera_Valuta",
               currency = std::array{"€", "CHF", "USD", "GBP"}[static_cast<std::size_t>(number / 4 % 4)]);
    if (number % 7 == 3)
        refused("Selezionare un tipo di operazione.");
    choose("Pulsantiera_Attivita", std::to_string(activity));
    if (drawer > 0)
        tap("cmdCassetto", {}, drawer);
    if (activity != 1 && number % 5 == 2)
        refused("Caricare una nota.");
    if (activity != 1)
        note(text);
    if (number % 8 == 1) {
        tap("Virtual_KeyPAD", ".");
        refused("Caricare un importo valido.");
        tap("Virtual_KeyPAD", "BACKSPACE");
    }
    const double sum = amount(number);
    confirm({{payment, sum, currency, text, drawer, activity, activity != 2}});
    if (activity == 2)
        events.emplace_back("ApriCassetto");
}

void WholeDay::pair(int number) {
    const int out = number % 3 + 1, in = (number + 1) % 3 + 1;
    choose("Pulsantiera_Pagamenti", std::to_string(out));
    if (number % 4 == 1)
        refused("Selezionare la modalità pagamento per il versamento.");
    choose("Pulsantiera_Pagamenti_Versamenti", std::to_string(in));
    const bool noted = number % 2 == 0;
    if (noted) {
        note("CAMBIO");
        tap("cmdNascondiTastiera");
    }
    const double sum = amount(number);
    confirm({{out, sum, "€", noted ? "CAMBIO" : "Prelievo", 0, 2, false},
             {in, sum, "€", noted ? "CAMBIO" : "Versamento", 0, 3, true}});
}

TEST_F(WholeDay, TakesTwoHundredMovementsAndLeavesNothing) {
    constexpr int shows = 11, movements = 19;
    Holdings before;
    for (int show = 0; show < shows; ++show) {
        if (show == 1) // the first one made what stays until the process ends
            before = holdings();
        const bool pairs = show % 4 == 3;
        byMouse = show % 3 == 1;
        till.component->ActiveColorMetroStyle(show % 2 == 1);
        till.component->UsaSoloValutaAziendale(pairs);
        till.component->SetSoftwareName("Cassa");
        if (pairs)
            till.database().table("Attiva_Gestione_MultiCassetto", {"Valore"}, {{"0"}});
        till.show(pairs ? Till::Layout::Double : Till::Layout::DrawersAndCurrencies);
        for (int number = show * movements; number < (show + 1) * movements; ++number)
            pairs ? pair(number) : single(number);
        tap("CMD_CaricaMoneta");
        tap("TabControl", "1");
        tap("cmdAnteprima");
        events.emplace_back("Anteprima");
        tap("PushButton1");
        ASSERT_EQ(till.component->dialog()->window(), nullptr);
    }
    EXPECT_EQ(holdings(), before);
    EXPECT_EQ(till.messages, refusals);
    EXPECT_EQ(till.sink.events, events);
}

} // namespace
} // namespace kova
