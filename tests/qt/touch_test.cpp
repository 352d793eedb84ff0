// A real touch screen's events, through the toolkit's whole way from the window system to the model.
#include "till.h"

#include "adapters/qt/bounce_filter.h"

#include <QAccessible>
#include <QPointingDevice>
#include <QScreen>
#include <QScrollBar>
#include <QTest>

#include <gtest/gtest.h>

namespace kova {
namespace {

using test::as;
using test::Till;

class TouchScreen : public testing::Test {
  protected:
    using Places = std::vector<std::pair<const char*, std::string>>;
    TouchScreen() { till.show(); }
    /// In the window, of a control or a part of it.
    QPoint at(const std::string& name, const std::optional<std::string>& part = {}) {
        const auto place = till.userInterface.touchPoint(*till.dialog().find(name), part);
        return place->widget->mapTo(&till.frame(), place->point.toPoint());
    }
    void down(const QPoint& point, int finger = 0) {
        QTest::touchEvent(&till.frame(), screen.get()).press(finger, point, &till.frame()).commit();
        fingers[finger] = point;
    }
    void move(const QPoint& point, int finger = 0) {
        QTest::touchEvent(&till.frame(), screen.get()).move(finger, point, &till.frame()).commit();
        fingers[finger] = point;
    }
    void up(int finger = 0) {
        const QPoint point = fingers[finger];
        fingers.erase(finger);
        auto touch = QTest::touchEvent(&till.frame(), screen.get());
        touch.release(finger, point, &till.frame());
        for (const auto& [other, place] : fingers)
            touch.stationary(other);
        touch.commit();
    }
    void touch(const QPoint& point) {
        down(point);
        up();
    }
    static void rest() { QTest::qSleep(static_cast<int>(BounceFilter::WindowMilliseconds) + 20); }
    /// What the screen shows around a place, as far as it was repainted.
    QImage onScreen(const QPoint& place) {
        till.loop.settle();
        return till.frame()
            .screen()
            ->grabWindow(till.frame().winId(), place.x() - 20, place.y() - 20, 40, 40)
            .toImage();
    }
    QImage picture(const std::string& name) { return till.widget(name).grab().toImage(); }

    Till till;
    std::unique_ptr<QPointingDevice> screen{QTest::createTouchDevice()};
    std::map<int, QPoint> fingers;
};

TEST_F(TouchScreen, ActsWhenTheFingerGoesUpInside) {
    int presses = 0;
    const auto counting = till.control<PushButton>("cmdConferma").pressed.connect([&] { ++presses; });
    const QPoint confirm = at("cmdConferma");
    down(confirm);
    EXPECT_EQ(presses, 0);
    up();
    EXPECT_EQ(presses, 1);
    rest();
    down(confirm);
    move(confirm + QPoint(0, -200));
    up();
    EXPECT_EQ(presses, 1) << "it left the button";

    std::string key;
    const auto touched =
        till.control<ButtonGrid>("Pulsantiera_Pagamenti").buttonClick.connect([&](const std::string& button) {
            key = button;
        });
    down(at("Pulsantiera_Pagamenti", "1"));
    move(at("Pulsantiera_Pagamenti", "2"));
    up();
    EXPECT_EQ(key, "") << "it went up in another cell";
    touch(at("Pulsantiera_Pagamenti", "3"));
    EXPECT_EQ(key, "3");

    down(at("Virtual_KeyPAD", "7"));
    move(at("Virtual_KeyPAD", "8"));
    up();
    EXPECT_EQ(till.control<TextBox>("txtVisore").text(), "");
    touch(at("TabControl", "1"));
    EXPECT_EQ(till.control<TabControl>("TabControl").selected(), 1);
}

TEST_F(TouchScreen, ShowsAtOnceWhatIsUnderTheFinger) {
    for (const auto& [name, part] : std::vector<std::pair<std::string, std::optional<std::string>>>{
             {"cmdConferma", {}}, {"Pulsantiera_Attivita", "2"}, {"Virtual_KeyPAD", "5"}}) {
        const QPoint place = at(name, part);
        const QImage before = onScreen(place);
        down(place);
        EXPECT_NE(onScreen(place), before) << name;
        move(QPoint(5, 5));
        EXPECT_EQ(onScreen(place), before) << name << " shows that going up now would do nothing";
        up();
    }
}

TEST_F(TouchScreen, ShowsAKeyUpAgainOnceItActed) {
    till.control<TextBox>("txtVisore").paste("1");
    const QPoint key = at("Virtual_KeyPAD", "8");
    const QImage before = onScreen(key);
    touch(key);
    EXPECT_EQ(onScreen(key), before);
}

TEST_F(TouchScreen, TypesFastDigitsAndWithTwoThumbs) {
    const auto& amount = till.control<TextBox>("txtVisore");
    for (const char* key : {"5", "0", "0"}) {
        touch(at("Virtual_KeyPAD", key));
        rest();
    }
    EXPECT_EQ(amount.text(), "500") << "the same key twice, as fast as a finger can";
    down(at("Virtual_KeyPAD", "1"), 0);
    down(at("Virtual_KeyPAD", "2"), 1);
    up(0);
    up(1);
    EXPECT_EQ(amount.text(), "50012") << "the next finger came before the last one went";
}

TEST_F(TouchScreen, TakesABouncedTouchForOne) {
    const auto& amount = till.control<TextBox>("txtVisore");
    const QPoint seven = at("Virtual_KeyPAD", "7");
    touch(seven);
    touch(seven + QPoint(2, 1));
    EXPECT_EQ(amount.text(), "7");
    touch(at("Virtual_KeyPAD", "8"));
    EXPECT_EQ(amount.text(), "78") << "another key is another touch, however soon";
    int touches = 0; // of a button whose handler takes less time than a bounce
    const auto counting =
        till.control<ButtonGrid>("Pulsantiera_Pagamenti").buttonClick.connect([&](const std::string&) {
            ++touches;
        });
    const QPoint cash = at("Pulsantiera_Pagamenti", "1");
    touch(cash);
    touch(cash);
    EXPECT_EQ(touches, 1);
    rest();
    touch(cash);
    EXPECT_EQ(touches, 2);
}

TEST_F(TouchScreen, SavesOnceHoweverOftenConfirmIsTouchedMeanwhile) {
    till.composeMovement();
    till.control<TextBox>("txtVisore").paste("12,5");
    const QPoint confirm = at("cmdConferma");
    till.sink.then = [&](const std::string& event) {
        if (event != "SalvaPagamento")
            return;
        rest();
        touch(confirm);
    };
    const auto place = till.userInterface.touchPoint(till.control<PushButton>("cmdConferma"));
    QTest::mouseClick(place->widget, Qt::LeftButton, {}, place->point.toPoint());
    till.loop.settle();
    EXPECT_EQ(till.sink.movements.size(), 1U);
    EXPECT_TRUE(till.messages.empty());
}

TEST_F(TouchScreen, PansAGridOfManyButtons) {
    till.dialog().requestClose();
    till.show(Till::Layout::ManyButtons);
    auto& activities = till.control<ButtonGrid>("Pulsantiera_Attivita");
    std::string key;
    const auto touched = activities.buttonClick.connect([&](const std::string& button) { key = button; });
    const QImage before = picture("Pulsantiera_Attivita");
    const QPoint fourth = at("Pulsantiera_Attivita", "4");
    down(fourth);
    move(fourth - QPoint(100, 0));
    EXPECT_EQ(picture("Pulsantiera_Attivita"), before) << "the finger only left its button";
    move(fourth - QPoint(100 + 3 * 83, 0));
    up();
    EXPECT_EQ(key, "") << "panning touches nothing";
    rest();
    touch(fourth);
    EXPECT_EQ(key, "7") << "the strip went with the finger";
    activities.selectButton("20", true);
    auto* const grid = QAccessible::queryAccessibleInterface(&till.widget("Pulsantiera_Attivita"));
    EXPECT_FALSE(grid->child(19)->state().offscreen) << "what the program marks is brought into sight";
    EXPECT_TRUE(grid->child(0)->state().offscreen);
}

TEST_F(TouchScreen, ScrollsTheMovements) {
    till.control<TabControl>("TabControl").touchTab(1);
    auto& grid = till.control<ReportGrid>("grd_mov_giornata");
    grid.deleteRecords();
    grid.deleteColumns();
    grid.addColumn(100, "Ora", 20, true);
    for (int i = 0; i < 200; ++i) {
        grid.addRecord();
        grid.addItem(grid.recordCount() - 1, std::to_string(i));
    }
    grid.populate();
    till.loop.settle();
    auto* const bar = till.widget("grd_mov_giornata").findChild<QScrollBar*>();
    ASSERT_NE(bar, nullptr);
    const QPoint row = at("grd_mov_giornata", "row 8");
    down(row);
    for (int moved = 20; moved <= 200; moved += 20)
        move(row - QPoint(0, moved));
    up();
    EXPECT_GT(bar->value(), 1);
    EXPECT_TRUE(grid.selectedRecords().empty()) << "scrolling touches nothing";
    rest();
    touch(at("grd_mov_giornata", "row 2"));
    EXPECT_EQ(grid.selectedRecords(), std::vector<std::size_t>{static_cast<std::size_t>(bar->value()) + 2});
}

} // namespace
} // namespace kova
