// Windows, the read-back and the notice: seen, out of the way, told of at once, and gone when they should be.
#include "till.h"
#include "unit/random_walk.h"
#include "unit/trace_file.h"

#include "adapters/qt/look.h"
#include "adapters/qt/notice_views.h"
#include "host/player/headless_cashier.h"
#include "host/player/qt/qt_cashier.h"
#include "widgets/notices.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QElapsedTimer>
#include <QMessageBox>
#include <QMetaEnum>
#include <QPointer>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include <gtest/gtest.h>

#include <dlfcn.h>

#include <stdexcept>
#include <thread>

namespace kova {
namespace {

using namespace std::chrono_literals;
using test::Till;

class DrawnAids : public test::ShownTill {
  protected:
    QWidget& part(const char* name) { return *till.frame().findChild<QWidget*>(name); }
    QImage picture(const char* name) { return part(name).grab().toImage(); }
    QWidget& key(const char* control, const char* key) {
        return *touchPoint(till.userInterface, *till.dialog().find(control), key)->widget;
    }
    void save() {
        till.composeMovement();
        till.control<TextBox>("txtVisore").setText("1250");
        till.control<PushButton>("cmdConferma").press();
        till.loop.settle();
    }
    void turnThePageAndBack() {
        till.control<TabControl>("TabControl").touchTab(1);
        till.control<TabControl>("TabControl").touchTab(0);
    }
};

TEST_F(DrawnAids, ReadBackStandsAboveTheKeys) {
    till.control<TextBox>("txtVisore").setText("1250");
    EXPECT_TRUE(part("readBack").isVisible());
    EXPECT_GE(key("Virtual_KeyPAD", "7").y(), part("readBack").geometry().bottom());
    const QImage before = picture("readBack");
    till.control<TextBox>("txtVisore").setText("12500");
    EXPECT_NE(picture("readBack"), before);
    till.process.screenAids = {.amountReadBack = false, .direction = false};
    till.process.entryChanged();
    EXPECT_FALSE(part("readBack").isVisible());
    EXPECT_EQ(key("Virtual_KeyPAD", "7").y(), 0);
}

TEST(Refusals, LeaveInSightWhatTheyAskFor) {
    for (const QColor& back : {QColor(Qt::white), QColor(226, 226, 226), look::toQt(colors::DarkBackground)})
        EXPECT_GE(look::contrast(look::warningOn(back), back), 3) << back.name().toStdString();
    const QSize fitting(780, 460); // on this toolkit's screen
    Till till(fitting);
    till.show();
    const auto refuse = [](Till& at, const char* field, const char* message) {
        bool seen = false;
        QImage ring;
        at.insideModal = [&](Window& window) {
            at.loop.settle();
            const QWidget& asked = at.widget(field);
            seen = !at.userInterface.frame(window)->geometry().intersects(
                QRect(asked.mapToGlobal(QPoint()), asked.size()));
            ring = at.widget(field).grab().toImage();
        };
        at.control<PushButton>("cmdConferma").press();
        EXPECT_TRUE(seen) << field;
        EXPECT_EQ(ring.pixelColor(1, ring.height() / 2), palette::Amber) << field;
        EXPECT_EQ(at.widget(field).accessibleDescription(), "manca") << field;
        EXPECT_EQ(std::exchange(at.messages, {}).back(), message);
    };
    refuse(till, "Pulsantiera_Pagamenti", "Selezionare un pagamento.");
    till.control<ButtonGrid>("Pulsantiera_Pagamenti").touch("1");
    EXPECT_EQ(till.widget("Pulsantiera_Pagamenti").accessibleDescription(), "");
    refuse(till, "Pulsantiera_Attivita", "Selezionare un tipo di operazione.");
    till.control<ButtonGrid>("Pulsantiera_Attivita").touch("2");
    till.wait(50);
    refuse(till, "txtNote", "Caricare una nota.");
    till.control<TextBox>("txtNote").paste("RESTO");
    refuse(till, "txtVisore", "Caricare un importo valido.");
    till.dialog().requestClose();
    Till pairs(fitting);
    pairs.component->SetSoftwareName("Cassa");
    pairs.show(Till::Layout::Double);
    pairs.control<ButtonGrid>("Pulsantiera_Pagamenti").touch("1");
    refuse(pairs, "Pulsantiera_Pagamenti_Versamenti", "Selezionare la modalità pagamento per il versamento.");
}

TEST_F(DrawnAids, NoticeTakesNothingAndFades) {
    till.dialog().moveFocus(till.control<TextBox>("txtVisore"));
    const QWidget* const focus = QApplication::focusWidget();
    save();
    const QPointer<QWidget> notice = &part("notice");
    ASSERT_TRUE(notice->isVisible());
    EXPECT_EQ(QApplication::focusWidget(), focus);
    EXPECT_NE(till.frame().childAt(notice->mapTo(&till.frame(), notice->rect().center())), notice);
    turnThePageAndBack();
    EXPECT_FALSE(notice->isVisible()) << "it went with its page";
    save();
    QElapsedTimer wall;
    wall.start();
    const QImage full = picture("notice");
    const auto changed = [&] { return picture("notice") != full; };
    EXPECT_TRUE(QTest::qWaitFor(changed, 3 * PageNoticeView::StayMilliseconds) && notice->isVisible());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !notice->isVisible(); }, PageNoticeView::StayMilliseconds));
    EXPECT_GE(wall.elapsed(), PageNoticeView::StayMilliseconds - 100);

    till.sink.then = [](const std::string&) { throw Error(5, "disk full"); };
    save();
    EXPECT_EQ(notice->accessibleName(), "NULLA è stato registrato: disk full");
    EXPECT_NE(picture("notice").pixelColor(8, 8), full.pixelColor(8, 8));
    turnThePageAndBack();
    QTest::qWait(PageNoticeView::StayMilliseconds + PageNoticeView::FadeMilliseconds + 100);
    EXPECT_TRUE(notice->isVisible()) << "a failure waits for the cashier";
    till.takeLog();
    till.dialog().requestClose();
    till.loop.settle();
    EXPECT_TRUE(notice.isNull());
}

TEST_F(DrawnAids, ButtonsOfAMessageFollowTheLanguage) {
    QString yes;
    QTimer::singleShot(0, &till.frame(), [&] {
        auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        till.runtime.change(9);
        yes = box->button(QMessageBox::Yes)->text();
    });
    till.attended.answer = [](const PlatformMessage&) { return MessageAnswer::No; };
    EXPECT_EQ(till.attended.messageBox({"?", PlatformMessage::YesNo, "?"}), MessageAnswer::No);
    EXPECT_EQ(yes, "Yes");
}

TEST_F(DrawnAids, LetNoTouchThroughToABlockedWindow) {
    auto& confirm = till.control<PushButton>("cmdConferma");
    const auto place = *touchPoint(till.userInterface, confirm);
    const auto click = [&] { QTest::mouseClick(place.widget, Qt::LeftButton, {}, place.point.toPoint()); };
    int presses = 0;
    const auto pressed = confirm.pressed.connect([&] { ++presses; });
    till.countCoins(click);
    EXPECT_EQ(presses, 0);
    click();
    EXPECT_EQ(presses, 1);
}

std::ostringstream told;

void listen(QAccessibleEvent* event) {
    const auto& part = *event->accessibleInterface();
    const QString kind = QMetaEnum::fromType<QAccessible::Event>().valueToKey(event->type());
    const QString state = part.state().checked ? "checked" : part.text(QAccessible::Value);
    told << (kind + " \"" + part.text(QAccessible::Name) + "\" " + state).toStdString() << '\n';
}

/// No desktop asks for events here: the toolkit's platform part, which has no header, is told that one does.
bool askForEvents(bool on) {
    auto* const platform =
        static_cast<void**>(dlsym(RTLD_DEFAULT, "_ZN22QGuiApplicationPrivate20platform_integrationE"));
    const auto accessibility = reinterpret_cast<void* (*)(void*)>(
        dlsym(RTLD_DEFAULT, "_ZNK20QPlatformIntegration13accessibilityEv"));
    const auto setActive = reinterpret_cast<void (*)(void*, bool)>(
        dlsym(RTLD_DEFAULT, "_ZN22QPlatformAccessibility9setActiveEb"));
    if (platform == nullptr || accessibility == nullptr || setActive == nullptr)
        return false;
    setActive(accessibility(*platform), on);
    QAccessible::installUpdateHandler(on ? &listen : nullptr);
    return QAccessible::isActive() == on;
}

TEST(AccessibleChanges, TellAtOnceOfMarksAndOfTheAmountAsItIsKeyedIn) {
    Till till;
    till.show(Till::Layout::DrawersAndCurrencies);
    if (!askForEvents(true))
        GTEST_SKIP() << "this toolkit cannot be told to send events";
    told.str("");
    till.control<ButtonGrid>("Pulsantiera_Pagamenti").touch("1");
    till.control<ButtonGrid>("Pulsantiera_Pagamenti").touch("2");
    till.control<ButtonGrid>("Pulsantiera_Valuta").touch("CHF");
    for (const char* key : {"1", ".", "5", "BACKSPACE"})
        till.control<NumericKeypad>("Virtual_KeyPAD").touchKey(key);
    askForEvents(false);
    test::expectTrace("accessible_changes", told.str());
}

TEST(Windows, StayOnTheirScreenWithTheirFrame) {
    QtEventLoop loop;
    const RegionalSettings regional;
    Wording words;
    for (const int width : {20000, 7275}) {
        Window window("window", "title", {0, 0, width, 12000});
        WindowFrame frame(window, loop, regional, words, {}, 0);
        window.setVisible(true);
        const QRect screen = frame.screen()->availableGeometry();
        const bool whole = width > 10000;
        EXPECT_EQ(frame.isMaximized(), whole);
        for (const int out : {0, 50}) { // a system's bar, another screen, or being restored moves it
            frame.setWindowState(Qt::WindowNoState);
            frame.setGeometry(frame.geometry().adjusted(out, out, 3 * out, 3 * out));
            QCoreApplication::processEvents();
            EXPECT_TRUE(screen.contains(frame.frameGeometry())) << width << ' ' << out;
        }
        EXPECT_EQ(frame.frameGeometry() == screen, whole);
        frame.detach();
    }
}

TEST(Waiting, IsSaidOverTheDialogAndBeforeThereIsOne) {
    Till till;
    const auto seen = [&] {
        std::pair<int, int> signs; // on their own, and in the dialog
        QImage drawn;
        const auto look = [&](std::chrono::seconds) {
            for (QWindow* const window : QGuiApplication::allWindows())
                if (window->objectName() == "waiting" && window->isVisible()) {
                    ++signs.first;
                    drawn = window->screen()->grabWindow(window->winId()).toImage();
                }
            if (till.userInterface.showsWindow() && till.frame().findChild<QWidget*>("waiting") != nullptr)
                ++signs.second;
            return std::string("Connessione");
        };
        EXPECT_THROW(till.userInterface.await({look, true},
                                              [] {
                                                  std::this_thread::sleep_for(500ms);
                                                  throw std::range_error("that the server did not answer");
                                              }),
                     std::range_error);
        if (signs.first > 0) {
            EXPECT_EQ(drawn.pixelColor(drawn.rect().center().x(), 4), palette::Paper);
            EXPECT_EQ(drawn.pixelColor(0, 0), palette::Blue);
        }
        for (const QWindow* const window : QGuiApplication::allWindows())
            EXPECT_NE(window->objectName(), "waiting");
        return signs;
    };
    bool said = false;
    const auto say = [&](std::chrono::seconds) {
        said = true;
        return std::string();
    };
    till.userInterface.await({say, true}, [] { std::this_thread::sleep_for(100ms); });
    EXPECT_FALSE(said) << "of what is soon over";
    EXPECT_GT(seen().first, 0);
    till.show();
    till.loop.settle();
    const auto [alone, inDialog] = seen();
    EXPECT_EQ(alone, 0);
    EXPECT_GT(inDialog, 0);
    EXPECT_EQ(till.frame().findChild<QWidget*>("waiting"), nullptr);
}

TEST(LiveTime, EndsAModalWindowWhoseTimerFails) {
    QtEventLoop loop;
    const RegionalSettings regional;
    QtUserInterface userInterface(loop, regional);
    WindowStack stack;
    Window window("window", "title", {0, 0, 3000, 1500});
    const auto view = userInterface.present(window);
    Timer timer(loop, 20ms);
    int ticks = 0;
    const auto failing = timer.tick.connect([&] {
        if (++ticks == 3)
            throw Error(1, "tick");
    });
    stack.show(window, true);
    timer.start();
    EXPECT_THROW(userInterface.runModal(window), Error);
    EXPECT_EQ(ticks, 3);
}

/// KOVA_WALK_STEPS asks for a longer one.
TEST(RandomWalkOnWindows, ShowsWhatTheModelsShow) {
    const int asked = qEnvironmentVariableIntValue("KOVA_WALK_STEPS");
    const int steps = asked > 0 ? asked : 1500;
    test::Tally onModels, onWindows;
    std::vector<std::string> expected, seen;
    for (const unsigned seed : {3U, 14U}) {
        test::World world;
        HeadlessCashier hands(world.loop);
        test::walkAtRandom({world, hands, {}, &expected}, seed, steps, onModels);
        Till till;
        QtCashier fingers(till.time(), till.userInterface);
        test::walkAtRandom({till, fingers, {}, &seen}, seed, steps, onWindows);
    }
    const auto [first, other] = std::ranges::mismatch(expected, seen);
    EXPECT_TRUE(first == expected.end() && other == seen.end())
        << "step " << first - expected.begin() << "\nmodels:  " << (first == expected.end() ? "" : *first)
        << "\nwindows: " << (other == seen.end() ? "" : *other);
    EXPECT_GT(onModels.movements, steps / 200);
    EXPECT_GT(onModels.counted, 0);
    EXPECT_GT(onModels.listed, 10);
}

TEST(Captions, AreReadAtArmsLength) {
    const QtEventLoop loop;
    const QFont font = look::font({"Tahoma", look::LegiblePoints, true}, {look::PanelUnit, look::PanelUnit});
    EXPECT_GE(QFontMetricsF(font).capHeight(), 16) << "minutes of arc at 60 cm";
    const std::vector<look::CaptionPlace> cells{{"Fondo cassa iniziale", {80, 90}},
                                                {"Sachbezugskonten", {80, 90}}};
    const auto captions = look::setCaptions(cells, font, look::PanelUnit, look::CaptionSizes::Common);
    EXPECT_GE(captions[0].font.pixelSize(), 16) << "one that is too long is set smaller alone";
}

TEST(Captions, LoseNothingThatTheyDoNotMarkAsCut) {
    const QtEventLoop loop;
    const QString text = "Bar-Einzahlung auf das Donaudampfschifffahrtsgesellschaftskasse 12/2026";
    int whole = 0;
    for (int width = 12; width < 200; width += 4)
        for (const int height : {14, 40, 90}) {
            const auto caption =
                look::setCaptions({{text, QSizeF(width, height)}}, look::font({"Tahoma", 11, true}, {1, 1}),
                                  1, look::CaptionSizes::Own)[0];
            const QFontMetricsF metrics(caption.font);
            EXPECT_LE(static_cast<double>(caption.lines.size() - 1) * metrics.lineSpacing(), height);
            EXPECT_GE(caption.font.pixelSize(), 10) << "legible";
            if (!caption.whole) {
                EXPECT_TRUE(caption.lines.last().endsWith(QChar(0x2026))) << width << 'x' << height;
                continue;
            }
            ++whole;
            for (const QString& line : caption.lines)
                EXPECT_LE(metrics.horizontalAdvance(line), width);
            EXPECT_EQ(caption.lines.join("").remove('-').remove(' '), QString(text).remove('-').remove(' '));
        }
    EXPECT_GT(whole, 20);
}

} // namespace
} // namespace kova
