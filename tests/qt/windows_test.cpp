// Windows, the read-back and the notice: seen, out of the way, and gone when they should be.
#include "till.h"

#include "adapters/qt/caption.h"
#include "adapters/qt/page_notice_view.h"
#include "host/qt_cashier.h"
#include "widgets/page_notice.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QElapsedTimer>
#include <QMessageBox>
#include <QPointer>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

namespace kova {
namespace {

using namespace std::chrono_literals;
using test::Till;

class DrawnAids : public test::ShownTill {
  protected:
    QWidget& part(const char* name) { return *till.frame().findChild<QWidget*>(name); }
    QImage picture(const char* name) { return part(name).grab().toImage(); }
    QWidget& key(const char* control, const char* key) {
        return *till.userInterface.touchPoint(*till.dialog().find(control), key)->widget;
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

TEST_F(DrawnAids, ReadBackStandsAboveTheKeysAndIsSpoken) {
    till.control<TextBox>("txtVisore").setText("1250");
    EXPECT_TRUE(part("readBack").isVisible());
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&part("readBack"))->text(QAccessible::Name),
              "1.250,00 €");
    EXPECT_GE(key("Virtual_KeyPAD", "7").y(), part("readBack").geometry().bottom());
    const QImage before = picture("readBack");
    till.control<TextBox>("txtVisore").setText("12500");
    EXPECT_NE(picture("readBack"), before);
    till.process.screenAids = {.amountReadBack = false, .direction = false};
    till.process.entryChanged();
    EXPECT_FALSE(part("readBack").isVisible());
    EXPECT_EQ(key("Virtual_KeyPAD", "7").y(), 0);
}

TEST_F(DrawnAids, NoticeTakesNothingAndFades) {
    till.dialog().moveFocus(till.control<TextBox>("txtVisore"));
    const QWidget* const focus = QApplication::focusWidget();
    save();
    const QPointer<QWidget> notice = &part("notice");
    ASSERT_TRUE(notice->isVisible());
    auto* const spoken = QAccessible::queryAccessibleInterface(notice);
    EXPECT_EQ(spoken->role(), QAccessible::AlertMessage);
    EXPECT_EQ(spoken->text(QAccessible::Name), "Registrato: − 1.250,00 € · Prelievo · Contanti");
    EXPECT_EQ(QApplication::focusWidget(), focus);
    EXPECT_NE(till.frame().childAt(notice->mapTo(&till.frame(), notice->rect().center())), notice);
    turnThePageAndBack();
    EXPECT_FALSE(notice->isVisible()) << "it went with its page";
    save();
    QElapsedTimer wall;
    wall.start();
    const QImage full = picture("notice");
    bool faded = false;
    while (notice->isVisible() && wall.elapsed() / 3 < PageNoticeView::StayMilliseconds) {
        QTest::qWait(50);
        faded |= notice->isVisible() && picture("notice") != full;
    }
    EXPECT_TRUE(faded && !notice->isVisible());
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

TEST_F(DrawnAids, WordsFollowTheLanguageOfTheComponent) {
    till.regional = *regionalSettings("de-CH");
    EXPECT_EQ(part("Virtual_KeyPAD").accessibleName(), "Tastierino numerico");
    till.runtime.change(1031);
    EXPECT_EQ(part("Virtual_KeyPAD").accessibleName(), "Ziffernblock");
    EXPECT_EQ(key("Virtual_KeyPAD", ".").accessibleName(), "Komma");
    EXPECT_EQ(key("Virtual_Keyboard", " ").accessibleName(), "Leertaste");
    EXPECT_EQ(part("comboData_calendar").accessibleName(), "Datentransfer, Kalender");
    till.process.decimalKey = DecimalKey::Region;
    till.process.entryChanged();
    EXPECT_EQ(key("Virtual_KeyPAD", ".").accessibleName(), "Punkt");
    QString yes;
    QTimer::singleShot(0, &till.frame(), [&] {
        auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        till.runtime.change(9);
        yes = box->button(QMessageBox::Yes)->text();
    });
    till.answer = [](const PlatformMessage&) { return MessageAnswer::No; };
    EXPECT_EQ(till.userInterface.messageBox({"?", PlatformMessage::YesNo, "?"}), MessageAnswer::No);
    EXPECT_EQ(yes, "Yes");
}

TEST_F(DrawnAids, LetNoTouchThroughToABlockedWindowAndNoFailureGoUnseen) {
    QtCashier cashier(till.userInterface);
    auto& confirm = till.control<PushButton>("cmdConferma");
    const auto place = *till.userInterface.touchPoint(confirm);
    const auto click = [&] { QTest::mouseClick(place.widget, Qt::LeftButton, {}, place.point.toPoint()); };
    int presses = 0;
    const auto pressed = confirm.pressed.connect([&] { ++presses; });
    till.countCoins(click);
    EXPECT_EQ(presses, 0);
    click();
    EXPECT_EQ(presses, 1);
    const auto failing =
        till.control<PushButton>("cmd_print").pressed.connect([] { throw Error(5, "handler"); });
    till.control<TabControl>("TabControl").touchTab(1);
    EXPECT_THROW(cashier.press(till.control<PushButton>("cmd_print")), Error);
    EXPECT_THROW(cashier.screenshot(till.dialog(), "/nonexistent/x.png"), Error);
}

TEST(LiveTime, RunsAModalWindowUntilItsTimersCloseIt) {
    QtEventLoop loop(QtEventLoop::Time::Live);
    const RegionalSettings regional;
    QtUserInterface userInterface(loop, regional);
    WindowStack stack;
    Window window("window", "title", {0, 0, 3000, 1500});
    const auto view = userInterface.present(window);
    Timer timer(loop, 20ms);
    int ticks = 0;
    const auto closing = timer.tick.connect([&] {
        if (++ticks == 3)
            stack.remove(window);
    });
    stack.show(window, true);
    timer.start();
    userInterface.runModal(window);
    EXPECT_EQ(ticks, 3);
    stack.show(window, true);
    const auto failing = timer.tick.connect([] { throw Error(1, "tick"); });
    EXPECT_THROW(userInterface.runModal(window), Error);
}

TEST(Captions, LoseNothingThatTheyDoNotMarkAsCut) {
    const QtEventLoop loop(QtEventLoop::Time::Stepped);
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
