// A real touch screen's events, through the toolkit's whole way from the window system to the model: what
// arrives is what was entered, exactly once, and closed dialogs leave nothing behind.
#include "till.h"

#include "adapters/qt/button_grid_view.h"
#include "screen/bounce_filter.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QPointingDevice>
#include <QScreen>
#include <QTest>

#include <gtest/gtest.h>

namespace kova {
namespace {

using test::Till;
using Part = std::optional<std::string>;

class TouchScreen : public testing::Test {
  protected:
    TouchScreen() = default;
    explicit TouchScreen(std::unique_ptr<QtEventLoop> loop) : till({1280, 800}, std::move(loop)) {}
    /// In the window, of a control or a part of it.
    QPoint at(Control& control, const Part& part = {}) {
        const auto place = touchPoint(till.userInterface, control, part);
        return place->widget->mapTo(till.userInterface.frame(control.window()), place->point.toPoint());
    }
    QPoint at(const char* name, const Part& part = {}) { return at(*till.dialog().find(name), part); }
    /// In the window that is in front.
    auto begin() {
        front = till.userInterface.frame(*till.process.windows.active());
        return QTest::touchEvent(front, screen.get());
    }
    void down(const QPoint& point, int finger = 0) {
        begin().press(finger, fingers[finger] = point, front).commit();
    }
    void move(const QPoint& point, int finger = 0) {
        begin().move(finger, fingers[finger] = point, front).commit();
    }
    void up(int finger = 0) {
        auto touch = begin();
        touch.release(finger, fingers.extract(finger).mapped(), front);
        for (const auto& [other, place] : fingers)
            touch.stationary(other);
        touch.commit();
    }
    void touch(const QPoint& point) {
        down(point);
        up();
    }
    static void rest() { QTest::qSleep(static_cast<int>(BounceFilter::Pause.count()) + 20); }
    /// What the screen shows around a place, as far as it was repainted.
    QImage onScreen(const QPoint& place) {
        till.loop.settle();
        auto* const window = till.frame().screen();
        return window->grabWindow(till.frame().winId(), place.x() - 20, place.y() - 20, 40, 40).toImage();
    }
    const std::string& amount() { return till.control<TextBox>("txtVisore").text(); }

    Till till;
    std::unique_ptr<QPointingDevice> screen{QTest::createTouchDevice()};
    std::map<int, QPoint> fingers;
    WindowFrame* front = nullptr;
};

TEST_F(TouchScreen, ActsWhenTheFingerGoesUpInside) {
    till.show();
    const QPoint confirm = at("cmdConferma");
    down(confirm);
    EXPECT_EQ(till.messages.size(), 0U);
    up();
    EXPECT_EQ(till.messages.size(), 1U) << "refused, once";
    rest();
    down(confirm);
    move(confirm + QPoint(0, -200));
    up();
    EXPECT_EQ(till.messages.size(), 1U) << "it left the button";
    for (const char* grid : {"Pulsantiera_Pagamenti", "Virtual_KeyPAD"}) {
        down(at(grid, "1"));
        move(at(grid, "2"));
        up();
    }
    EXPECT_EQ(std::to_string(till.process.selection.idPagamento) + amount(), "-1")
        << "it went up in another cell, or on another key";
    touch(at("TabControl", "1"));
    EXPECT_EQ(till.control<TabControl>("TabControl").selected(), 1);
}

TEST_F(TouchScreen, ShowsAtOnceWhatIsUnderTheFinger) {
    till.show();
    for (const auto& [name, part] : std::vector<std::pair<const char*, Part>>{
             {"cmdConferma", {}}, {"Pulsantiera_Attivita", "2"}, {"Virtual_KeyPAD", "5"}}) {
        const QPoint place = at(name, part);
        const QImage before = onScreen(place);
        down(place);
        EXPECT_NE(onScreen(place), before) << name;
        move(QPoint(5, 5));
        EXPECT_EQ(onScreen(place), before) << name << " shows that going up now would do nothing";
        up();
    }
    const QPoint key = at("Virtual_KeyPAD", "8");
    const QImage before = onScreen(key);
    touch(key);
    EXPECT_EQ(onScreen(key), before) << "it acted";
}

TEST_F(TouchScreen, TakesABounceForOneTouchButFastFingersForMany) {
    till.show();
    const QPoint seven = at("Virtual_KeyPAD", "7");
    touch(seven);
    touch(seven + QPoint(2, 1));
    EXPECT_EQ(amount(), "7");
    touch(at("Virtual_KeyPAD", "8"));
    EXPECT_EQ(amount(), "78") << "another key is another touch, however soon";
    for (int i = 0; i < 2; ++i) {
        touch(at("Virtual_KeyPAD", "0"));
        rest();
    }
    EXPECT_EQ(amount(), "7800") << "the same key twice, as fast as a finger can";
    down(at("Virtual_KeyPAD", "1"), 0);
    down(at("Virtual_KeyPAD", "2"), 1);
    up(0);
    up(1);
    EXPECT_EQ(amount(), "780012") << "the next finger came before the last one went";
}

TEST_F(TouchScreen, IsHeardWhereThatIsWanted) {
    struct Heard final : Sounds {
        void play(Tone tone) noexcept override { all += "ksr"[static_cast<int>(tone)]; }
        std::string all;
    } heard;
    till.process.platform.sounds = &heard;
    till.userInterface.onTouch([&] { till.process.play(Sounds::Tone::Key); });
    const auto work = [&](const std::map<std::string, std::string>& machine, bool host) {
        till.process.sounds = host;
        till.store.values = machine;
        till.show();
        touch(at("Virtual_KeyPAD", "7"));
        touch(QPoint(2, at("cmdConferma").y())); // the page
        touch(at("cmdConferma"));                // refused
        rest();
        till.composeMovement();
        till.control<TextBox>("txtVisore").setText("7");
        for (int i = 0; i < 2; ++i, rest())
            touch(at("cmdConferma")); // saved, and at rest
        till.component->DiscardForm();
        return std::exchange(heard.all, {});
    };
    EXPECT_EQ(work({}, false) + work({{"Sounds", "0"}}, true), "");
    EXPECT_EQ(work({}, true) + work({{"Sounds", "1"}}, false), "kkrkskkrks");
}

TEST_F(TouchScreen, PansAGridOfManyButtons) {
    till.show(Till::Layout::ManyButtons);
    auto& activities = till.control<ButtonGrid>("Pulsantiera_Attivita");
    std::string key;
    const auto touched = activities.buttonClick.connect([&](const std::string& button) { key = button; });
    const auto picture = [&] { return till.widget("Pulsantiera_Attivita").grab().toImage(); };
    const QImage before = picture();
    const QPoint fourth = at("Pulsantiera_Attivita", "4");
    down(fourth);
    move(fourth - QPoint(100, 0));
    EXPECT_EQ(picture(), before) << "the finger only left its button";
    move(fourth - QPoint(100 + 3 * 83, 0));
    up();
    EXPECT_EQ(key, "") << "panning touches nothing";
    rest();
    touch(fourth);
    EXPECT_EQ(key, "7") << "the strip went with the finger";
    activities.selectButton("20", true);
    const auto& grid = dynamic_cast<ButtonGridView&>(till.widget("Pulsantiera_Attivita"));
    const QRectF sight(grid.rect());
    EXPECT_TRUE(sight.contains(grid.face(19)) && !sight.contains(grid.face(0))) << "what is marked";
}

/// In the clock's time.
class WholeDay : public TouchScreen {
  protected:
    WholeDay() : TouchScreen(std::make_unique<QtEventLoop>()) {
        till.insideModal = [this](Window& window) {
            tap(*window.find(window.name() == "frmMsgBox" ? "cmd1" : "CMD_Annulla"));
        };
    }
    /// What lives in the process on behalf of dialogs, by class or kind. An object that nothing holds is a
    /// leak checker's to find.
    std::map<std::string, std::ptrdiff_t> holdings() {
        QTest::qWait(50);
        till.loop.settle();
        std::map<std::string, std::ptrdiff_t> held;
        QObjectList objects = qApp->findChildren<QObject*>() << qApp;
        for (QWidget* const window : QApplication::topLevelWidgets())
            objects << window << window->findChildren<QObject*>();
        for (QObject* const object : objects) {
            ++held[object->metaObject()->className()];
            held["timers"] += QAbstractEventDispatcher::instance()->registeredTimers(object).size();
        }
        return held;
    }
    void tap(Control& control, const Part& part = {}) {
        const QPoint point = at(control, part);
        if (point == std::exchange(last, point)) // else it would be a bounce
            rest();
        touch(point);
        till.loop.settle();
    }
    void tap(const char* name, const Part& part = {}, std::optional<int> index = {}) {
        tap(*till.dialog().find(name, index), part);
    }
    /// As a cashier does: touches, and goes on once the mark is seen.
    void choose(const char* grid, const std::string& key) {
        tap(grid, key);
        const auto& buttons = till.control<ButtonGrid>(grid);
        ASSERT_TRUE(QTest::qWaitFor([&] { return buttons.find(key)->marked; })) << grid << " " << key;
    }
    void enterAndConfirm(int number);

    QPoint last;
    std::vector<Movement> entered;
};

void WholeDay::enterAndConfirm(int number) {
    const auto drawer = static_cast<std::int16_t>(number % 5);
    const int payment = number % 3 + 1, activity = number % 2 + 2;
    const std::string currency = std::array{"€", "CHF", "USD", "GBP"}[static_cast<std::size_t>(number % 4)];
    const std::string note = "N" + std::to_string(number);
    choose("Pulsantiera_Pagamenti", std::to_string(payment));
    choose("Pulsantiera_Valuta", currency);
    if (drawer > 0)
        tap("cmdCassetto", {}, drawer);
    tap("txtNote");
    for (const char letter : note)
        tap("Virtual_Keyboard", std::string(1, letter));
    for (const char key : std::to_string(number) + ".5" + std::to_string(number % 10))
        tap("Virtual_KeyPAD", std::string(1, key));
    tap("cmdConferma"); // refused
    choose("Pulsantiera_Attivita", std::to_string(activity));
    tap("cmdConferma");
    tap("cmdConferma"); // too soon to be meant
    QTest::qSleep(static_cast<int>(PushButton::RestTime.count()));
    entered.push_back(
        {payment, number + 0.5 + number % 10 / 100.0, currency, note, drawer, activity, activity == 3});
}

TEST_F(WholeDay, ArrivesAsItWasEnteredAndLeavesNothing) {
    constexpr int shows = 11, movements = 2;
    std::map<std::string, std::ptrdiff_t> before;
    for (int show = 0; show < shows; ++show) {
        if (show == 1) // the first one made what stays until the process ends
            before = holdings();
        till.component->ActiveColorMetroStyle(show % 2 == 1);
        till.show(Till::Layout::DrawersAndCurrencies);
        for (int number = show * movements; number < (show + 1) * movements; ++number)
            enterAndConfirm(number);
        tap("CMD_CaricaMoneta");
        tap("TabControl", "1");
        tap("cmdAnteprima");
        tap("PushButton1");
        ASSERT_EQ(dialogOf(*till.component)->window(), nullptr);
    }
    EXPECT_EQ(holdings(), before);
    EXPECT_EQ(till.sink.movements, entered);
    EXPECT_EQ(till.messages.size(), shows * movements) << "each was refused once";
    EXPECT_EQ(till.sink.days.size(), shows);
}

} // namespace
} // namespace kova
