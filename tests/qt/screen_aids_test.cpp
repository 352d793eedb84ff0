// The read-back and the notice on real windows: seen, out of the way, and gone when they should be.
#include "till.h"

#include "adapters/qt/page_notice_view.h"
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

using test::Till;

class DrawnAids : public testing::Test {
  protected:
    QWidget& part(const char* name) { return *till.frame().findChild<QWidget*>(name); }
    void save() {
        till.composeMovement();
        till.control<TextBox>("txtVisore").setText("1250");
        till.control<PushButton>("cmdConferma").press();
        till.loop.settle();
    }
    Till till;
};

TEST_F(DrawnAids, ReadBackStandsUnderTheAmountAndIsSpoken) {
    till.show();
    till.control<TextBox>("txtVisore").setText("1250");
    EXPECT_TRUE(part("readBack").isVisible());
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&part("readBack"))->text(QAccessible::Name),
              "1.250,00 €");
    const QRect key =
        till.userInterface.touchPoint(*till.dialog().find("Virtual_KeyPAD"), "7")->widget->geometry();
    EXPECT_GE(key.top(), part("readBack").geometry().bottom());
    const QImage before = part("readBack").grab().toImage();
    till.control<TextBox>("txtVisore").setText("12500");
    EXPECT_NE(part("readBack").grab().toImage(), before);
    till.process.screenAids = {.amountReadBack = false, .direction = false};
    till.process.entryChanged();
    EXPECT_FALSE(part("readBack").isVisible());
    EXPECT_EQ(till.userInterface.touchPoint(*till.dialog().find("Virtual_KeyPAD"), "7")->widget->y(), 0);
}

TEST_F(DrawnAids, NoticeTakesNothingAndFades) {
    till.show();
    till.dialog().moveFocus(till.control<TextBox>("txtVisore"));
    const QWidget* const focus = QApplication::focusWidget();
    save();
    QWidget& notice = part("notice");
    ASSERT_TRUE(notice.isVisible());
    auto* const spoken = QAccessible::queryAccessibleInterface(&notice);
    EXPECT_EQ(spoken->role(), QAccessible::AlertMessage);
    EXPECT_EQ(spoken->text(QAccessible::Name), "Registrato: − 1.250,00 € · Prelievo · Contanti");
    EXPECT_EQ(QApplication::focusWidget(), focus);
    EXPECT_NE(till.frame().childAt(notice.mapTo(&till.frame(), notice.rect().center())), &notice);
    till.control<TabControl>("TabControl").touchTab(1);
    till.control<TabControl>("TabControl").touchTab(0);
    EXPECT_FALSE(notice.isVisible()) << "it went with its page";

    save();
    QElapsedTimer wall;
    wall.start();
    const QImage full = notice.grab().toImage();
    bool faded = false;
    while (notice.isVisible() && wall.elapsed() / 3 < PageNoticeView::StayMilliseconds) {
        QTest::qWait(50);
        faded |= notice.isVisible() && notice.grab().toImage() != full;
    }
    EXPECT_FALSE(notice.isVisible());
    EXPECT_TRUE(faded);
    EXPECT_GE(wall.elapsed(), PageNoticeView::StayMilliseconds - 100);
}

TEST_F(DrawnAids, NoticeOfAFailureWaitsForTheCashier) {
    till.show();
    save();
    const QImage success = part("notice").grab().toImage();
    till.sink.then = [](const std::string&) { throw Error(5, "disk full"); };
    save();
    QWidget& notice = part("notice");
    EXPECT_EQ(notice.accessibleName(), "NULLA è stato registrato: disk full");
    EXPECT_NE(notice.grab().toImage().pixelColor(8, 8), success.pixelColor(8, 8));
    till.control<TabControl>("TabControl").touchTab(1);
    till.control<TabControl>("TabControl").touchTab(0);
    QTest::qWait(PageNoticeView::StayMilliseconds + PageNoticeView::FadeMilliseconds + 100);
    EXPECT_TRUE(notice.isVisible());
    till.takeLog();
}

TEST_F(DrawnAids, WordsFollowTheLanguageOfTheComponent) {
    till.regional = *regionalSettings("de-CH");
    till.show();
    const auto spoken = [&](const char* control, const char* key) {
        return till.userInterface.touchPoint(*till.dialog().find(control), key)->widget->accessibleName();
    };
    EXPECT_EQ(part("Virtual_KeyPAD").accessibleName(), "Tastierino numerico");
    till.runtime.change(1031);
    EXPECT_EQ(part("Virtual_KeyPAD").accessibleName(), "Ziffernblock");
    EXPECT_EQ(spoken("Virtual_KeyPAD", "."), "Komma");
    EXPECT_EQ(spoken("Virtual_Keyboard", " "), "Leertaste");
    EXPECT_EQ(part("comboData_calendar").accessibleName(), "Datentransfer, Kalender");
    till.process.decimalKey = DecimalKey::Region;
    till.process.entryChanged();
    EXPECT_EQ(spoken("Virtual_KeyPAD", "."), "Punkt");
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

TEST_F(DrawnAids, NothingOfANoticeIsLeftWhenItsWindowCloses) {
    till.show();
    save();
    const QPointer<QWidget> notice = &part("notice");
    till.dialog().requestClose();
    till.loop.settle();
    EXPECT_TRUE(notice.isNull());
}

} // namespace
} // namespace kova
