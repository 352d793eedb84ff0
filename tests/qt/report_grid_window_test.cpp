// The movements list on a real window, driven by a real mouse's events.
#include "adapters/qt/user_interface.h"
#include "adapters/qt/window_frame.h"
#include "services/conversions.h"
#include "widgets/report_grid.h"
#include "widgets/window_stack.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFileDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace kova {
namespace {

using namespace std::chrono_literals;

class ReportGridWindow : public testing::Test {
  protected:
    ReportGridWindow() {
        grid.setConventions({[this](std::string_view cell) { return parseNumber(cell, regional); },
                             {},
                             [this](double sum) { return toText(sum, regional); }});
        grid.setSummedColumns("importo", "valuta");
        grid.setMenuTexts({"copy", "all", "save"});
        fill(3);
        view = userInterface.present(window);
        stack.show(window, false);
        loop.settle();
    }
    ~ReportGridWindow() override { stack.remove(window); }
    void fill(int records) {
        grid.deleteRecords();
        grid.deleteColumns();
        for (const char* caption : {"Tipo", "importo", "Valuta"})
            grid.addColumn(3, caption, 20, true);
        for (int i = 0; i < records; ++i) {
            grid.addRecord();
            for (const std::string& cell :
                 {std::string(i % 2 == 0 ? "A" : "B"), std::to_string(10 - i), std::string("€")})
                grid.addItem(static_cast<std::size_t>(i), cell);
        }
        grid.populate();
    }
    TouchPoint at(const std::string& part) { return userInterface.touchPoint(grid, part).value(); }
    void send(QEvent::Type kind, const TouchPoint& place, Qt::KeyboardModifiers keys = Qt::NoModifier) {
        QMouseEvent event(kind, place.point, place.widget->mapToGlobal(place.point), Qt::LeftButton,
                          kind == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, keys);
        QApplication::sendEvent(place.widget, &event);
    }
    void touch(const std::string& part, Qt::KeyboardModifiers keys = Qt::NoModifier) {
        send(QEvent::MouseButtonPress, at(part), keys);
        send(QEvent::MouseButtonRelease, at(part), keys);
    }
    void drag(const TouchPoint& from, const QPointF& to) {
        send(QEvent::MouseButtonPress, from);
        for (const double share : {0.3, 0.7, 1.0})
            send(QEvent::MouseMove, {from.widget, from.point + (to - from.point) * share});
        send(QEvent::MouseButtonRelease, {from.widget, to});
    }
    void longTouch(const std::string& part) {
        send(QEvent::MouseButtonPress, at(part));
        loop.advance(700ms);
        send(QEvent::MouseButtonRelease, at(part));
    }
    QMenu* menu() { return at("row 0").widget->findChild<QMenu*>(); }
    [[nodiscard]] std::string shown() const {
        std::string text;
        for (const auto& row : grid.rows())
            text += row.group != ReportGrid::Row::None ? "[" + grid.group(row).value + "]"
                                                       : std::to_string(row.record);
        return text;
    }

    QtEventLoop loop{QtEventLoop::Time::Stepped};
    RegionalSettings regional;
    QtUserInterface userInterface{loop, regional, {.surface = {1280, 800}}};
    WindowStack stack;
    Window window{"window", "list", {0, 0, 15195, 8955}};
    ReportGrid grid{{&window, "grid", {120, 120, 15015, 6975}}};
    std::unique_ptr<WindowView> view;
};

TEST_F(ReportGridWindow, SortsGroupsAndUngroupsUnderAFinger) {
    touch("header 1");
    EXPECT_EQ(shown(), "210");
    touch("header 1");
    EXPECT_EQ(shown(), "012");
    drag(at("header 0"), at("group area").point);
    EXPECT_EQ(shown(), "[A]02[B]1") << "dragged into the area";
    touch("row 0");
    EXPECT_EQ(shown(), "[A][B]1") << "collapsed";
    touch("group area");
    EXPECT_EQ(shown(), "012");
    longTouch("header 0");
    EXPECT_EQ(shown(), "[A]02[B]1") << "a long touch sends the header there";
    EXPECT_EQ(grid.sortColumn(), 1U) << "and sorts nothing";
    touch("group area");
    drag(at("header 0"), at("row 2").point);
    EXPECT_EQ(shown(), "012") << "a header let go elsewhere changes nothing";
}

TEST_F(ReportGridWindow, GivesColumnsTheRoomOfTheirTextsUntilABorderMoves) {
    grid.addRecord();
    grid.addItem(3, "A long text that the others have no need of");
    grid.populate();
    const double left = at("border 0").point.x();
    const double right = at("border 1").point.x();
    EXPECT_GT(left, 1.3 * (right - left));
    drag(at("border 0"), at("border 0").point - QPointF(left / 2, 0));
    EXPECT_NEAR(at("border 0").point.x(), left / 2, right * 0.02) << "it stays where the finger left it";
    EXPECT_NEAR(at("border 1").point.x(), right, right * 0.02) << "the room goes to the next column alone";
    EXPECT_FALSE(grid.sortColumn());
}

TEST_F(ReportGridWindow, ScrollsUnderAFingerAndSelectsWithoutScrolling) {
    fill(200);
    auto* bar = at("row 0").widget->findChild<QScrollBar*>();
    ASSERT_TRUE(bar->isVisible());
    const TouchPoint low = at("row 9");
    drag(low, at("row 2").point);
    EXPECT_EQ(bar->value(), 7);
    EXPECT_TRUE(grid.selectedRecords().empty()) << "a drag selects nothing";
    touch("row 1");
    touch("row 3", Qt::ShiftModifier);
    touch("row 2", Qt::ControlModifier);
    EXPECT_EQ(grid.selectedRecords(), (std::vector<std::size_t>{8, 10}));
    EXPECT_EQ(bar->value(), 7);
    grid.touchHeader(1);
    EXPECT_EQ(bar->value(), 0) << "another order is read from its beginning";
}

TEST_F(ReportGridWindow, CopiesWhatIsSelected) {
    QWidget* const list = at("row 0").widget;
    longTouch("row 1");
    ASSERT_NE(menu(), nullptr);
    EXPECT_FALSE(menu()->actions().at(0)->isEnabled()) << "nothing is selected";
    menu()->actions().at(1)->trigger();
    EXPECT_EQ(grid.selectedRecords().size(), 3U);
    menu()->close();
    touch("row 2");
    touch("row 0", Qt::ControlModifier);
    QKeyEvent copy(QEvent::KeyPress, Qt::Key_C, Qt::ControlModifier);
    QApplication::sendEvent(list, &copy);
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(), "A\t10\t€\r\nA\t8\t€\r\n");
}

TEST_F(ReportGridWindow, SavesTheListToAFileOrSaysWhyNot) {
    QTemporaryDir folder;
    const auto save = [&](const QString& name) {
        const TouchPoint place = at("row 1");
        QContextMenuEvent ask(QContextMenuEvent::Mouse, place.point.toPoint(),
                              place.widget->mapToGlobal(place.point.toPoint()));
        QApplication::sendEvent(at("row 1").widget, &ask);
        ASSERT_NE(menu(), nullptr);
        menu()->actions().at(2)->trigger();
        menu()->close();
        auto* dialog = at("row 0").widget->findChild<QFileDialog*>();
        ASSERT_NE(dialog, nullptr);
        emit dialog->fileSelected(name);
        dialog->close();
        loop.settle();
    };
    touch("header 1");
    save(folder.filePath("list.csv"));
    QFile file(folder.filePath("list.csv"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll().toStdString(),
              "\xEF\xBB\xBFTipo;importo;Valuta\r\nA;8;€\r\nB;9;€\r\nA;10;€\r\n");
    EXPECT_EQ(at("row 0").widget->findChild<QMessageBox*>(), nullptr);
    save(folder.filePath("missing/list.csv"));
    EXPECT_NE(at("row 0").widget->findChild<QMessageBox*>(), nullptr);
}

TEST_F(ReportGridWindow, ShowsSumsUnderTheListAndInTheHeaders) {
    const auto textOf = [&] {
        view.reset();
        view = userInterface.present(window);
        loop.settle();
        return userInterface.frame(window)->grab().toImage();
    };
    const QImage with = textOf();
    grid.setSummedColumns("", "");
    grid.populate();
    const QImage without = textOf();
    const int bottom = with.height() * 7000 / 8955;
    bool differs = false;
    for (int y = bottom - 20; y < bottom; ++y)
        for (int x = with.width() * 3 / 4; x < with.width() * 98 / 100; ++x)
            differs = differs || with.pixel(x, y) != without.pixel(x, y);
    EXPECT_TRUE(differs);
}

} // namespace
} // namespace kova
