// The movements list on a real window, driven by a real mouse's events.
#include "text_paper.h"
#include "till.h"

#include "adapters/qt/report_grid_view.h"
#include "unit/report_checks.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QDir>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <semaphore>
#include <set>
#include <thread>

namespace kova {
namespace {

using test::ShownTill;
using test::TextPaper;

class ReportGridWindow : public ShownTill {
  protected:
    ReportGridWindow() {
        till.control<TabControl>("TabControl").touchTab(1);
        fill(3);
        till.loop.settle();
    }
    void fill(std::size_t records) {
        grid.deleteRecords();
        grid.deleteColumns();
        for (const char* caption : {"Tipo", "importo", "Valuta"})
            grid.addColumn(3, caption, 20, true);
        for (std::size_t i = 0; i < records; ++i) {
            grid.addRecord();
            grid.addItem(i, i % 2 == 0 ? "A" : "B");
            grid.addItem(i, std::to_string(10 - static_cast<int>(i)));
            grid.addItem(i, "€");
        }
        grid.populate();
    }
    /// The group-by area, a column's header or its right border, or a row counted from the first in sight.
    QPointF at(const std::string& part) {
        const auto& view = dynamic_cast<ReportGridView&>(list);
        const int number = std::atoi(part.c_str() + part.find(' ') + 1);
        if (part.starts_with("row"))
            return view.cell(list.findChild<QScrollBar*>()->value() + number, 0).center();
        const QRectF header = view.cell(-1, number);
        if (part == "group area")
            return {header.center().x(), header.top() / 2};
        return part.starts_with("border") ? QPointF(header.right(), header.center().y()) : header.center();
    }
    /// Gestures give what is shown after them.
    std::string touch(const std::string& part, Qt::KeyboardModifiers keys = Qt::NoModifier) {
        QTest::mouseClick(&list, Qt::LeftButton, keys, at(part).toPoint());
        return shown();
    }
    std::string drag(const std::string& from, const QPointF& to) {
        const QPointF start = at(from);
        QTest::mousePress(&list, Qt::LeftButton, {}, start.toPoint());
        for (const double share : {0.3, 0.7, 1.0}) {
            const QPointF on = start + (to - start) * share;
            QMouseEvent move(QEvent::MouseMove, on, list.mapToGlobal(on), Qt::LeftButton, Qt::LeftButton, {});
            QApplication::sendEvent(&list, &move);
        }
        QTest::mouseRelease(&list, Qt::LeftButton, {}, to.toPoint());
        return shown();
    }
    std::string longTouch(const std::string& part) {
        QTest::mousePress(&list, Qt::LeftButton, {}, at(part).toPoint());
        till.wait(700);
        QTest::mouseRelease(&list, Qt::LeftButton, {}, at(part).toPoint());
        return shown();
    }
    [[nodiscard]] std::string shown() const {
        std::string text;
        for (const auto& row : grid.rows())
            text += row.group != ReportGrid::Row::None ? "[" + grid.group(row).value + "]"
                                                       : std::to_string(row.record);
        return text;
    }

    ReportGrid& grid = till.control<ReportGrid>("grd_mov_giornata");
    QWidget& list = till.widget("grd_mov_giornata");
};

TEST_F(ReportGridWindow, SortsGroupsAndUngroupsUnderAFinger) {
    EXPECT_EQ(touch("header 1"), "210");
    EXPECT_EQ(touch("header 1"), "012");
    EXPECT_EQ(drag("header 0", at("group area")), "[A]02[B]1") << "dragged into the area";
    EXPECT_EQ(touch("row 0"), "[A][B]1") << "collapsed";
    EXPECT_EQ(touch("group area"), "012");
    EXPECT_EQ(longTouch("header 0"), "[A]02[B]1") << "a long touch sends the header there";
    EXPECT_EQ(grid.sortColumn(), 1U) << "and sorts nothing";
    touch("group area");
    EXPECT_EQ(drag("header 0", at("row 2")), "012") << "a header let go elsewhere changes nothing";
}

TEST_F(ReportGridWindow, GivesColumnsTheRoomOfTheirTextsUntilABorderMoves) {
    grid.addRecord();
    grid.addItem(3, "A long text that the others have no need of");
    grid.populate();
    const double left = at("border 0").x();
    const double right = at("border 1").x();
    EXPECT_GT(left, 1.3 * (right - left));
    drag("border 0", at("border 0") - QPointF(left / 2, 0));
    EXPECT_NEAR(at("border 0").x(), left / 2, right * 0.02) << "it stays where the finger left it";
    EXPECT_NEAR(at("border 1").x(), right, right * 0.02) << "the room goes to the next column alone";
    EXPECT_FALSE(grid.sortColumn());
    const double kept = at("border 0").x();
    touch("border 0");
    EXPECT_EQ(grid.sortColumn(), 0U) << "a border that is touched is part of the header";
    grid.search("8");
    grid.groupBy(0);
    EXPECT_NEAR(at("border 0").x(), kept, 1);
}

TEST_F(ReportGridWindow, MeasuresItsColumnsInTheFontThatTheyAreDrawnIn) {
    grid.setRowPoints(14);
    const double left = at("border 0").x();
    grid.touchHeader(1);
    EXPECT_EQ(at("border 0").x(), left);
}

TEST_F(ReportGridWindow, SearchesForWhatIsTypedByKeysOrOnItsBoard) {
    auto& field = *till.frame().findChild<QLineEdit*>("grd_mov_giornata_search");
    auto& board = *till.frame().findChild<QWidget*>("grd_mov_giornata_board");
    till.dialog().moveFocus(grid);
    QTest::keyClick(&list, 'b');
    EXPECT_EQ(shown(), "1");
    QTest::keyClick(till.frame().focusWidget(), 'x');
    EXPECT_EQ(shown(), "");
    EXPECT_FALSE(board.isVisible());
    QTest::mouseClick(&field, Qt::LeftButton);
    EXPECT_TRUE(board.isVisible());
    EXPECT_EQ(till.frame().focusWidget(), &field);
    for (const char* key : {"_\b", "_\b", "_a"})
        QTest::mouseClick(board.findChild<QWidget*>(board.objectName() + key), Qt::LeftButton);
    EXPECT_EQ(shown(), "02");
    touch("row 0");
    EXPECT_FALSE(board.isVisible());
    EXPECT_EQ(grid.selectedRecords(), std::vector<std::size_t>{0});
    fill(3);
    EXPECT_TRUE(field.text().isEmpty());
}

TEST_F(ReportGridWindow, IsUsedByKeysAlone) {
    const auto press = [&](std::initializer_list<Qt::Key> keys) {
        for (const Qt::Key key : keys)
            QTest::keyClick(till.frame().focusWidget(), key);
        return till.frame().focusWidget()->objectName().toStdString();
    };
    till.dialog().moveFocus(grid);
    press({Qt::Key_Up, Qt::Key_Right, Qt::Key_Return});
    EXPECT_EQ(shown(), "210") << "sorted at the header";
    press({Qt::Key_Down, Qt::Key_Down, Qt::Key_Space});
    EXPECT_EQ(grid.selectedRecords(), std::vector<std::size_t>{1});
    grid.groupBy(0);
    press({Qt::Key_Return});
    EXPECT_EQ(shown(), "[A][B]1");
    EXPECT_EQ(press({Qt::Key_Up, Qt::Key_Up}), "grd_mov_giornata_search");
    EXPECT_EQ(press({Qt::Key_Right}), "grd_mov_giornata_menu");
    EXPECT_EQ(press({Qt::Key_Return, Qt::Key_Down, Qt::Key_Return}), "grd_mov_giornata_menu");
    EXPECT_EQ(grid.selectedRecords().size(), 3U) << "the second choice";
    EXPECT_EQ(press({Qt::Key_Return, Qt::Key_Escape}), "grd_mov_giornata_menu");
    press({Qt::Key_F1});
    EXPECT_TRUE(till.frame().findChild<QLabel*>("KeyHelp")->text().contains("Cerca nell'elenco"));
    press({Qt::Key_Escape});
    EXPECT_EQ(press({Qt::Key_Backtab}), "grd_mov_giornata_search");
    EXPECT_EQ(press({Qt::Key_Tab, Qt::Key_Tab}), "comboData_text");
    EXPECT_EQ(press({Qt::Key_Backtab}), "grd_mov_giornata");
}

TEST_F(ReportGridWindow, ScrollsUnderAFingerAndSelectsWithoutScrolling) {
    fill(200);
    const auto* bar = list.findChild<QScrollBar*>();
    ASSERT_TRUE(bar->isVisible());
    drag("row 9", at("row 2"));
    EXPECT_EQ(bar->value(), 7);
    EXPECT_TRUE(grid.selectedRecords().empty()) << "a drag selects nothing";
    touch("row 1");
    touch("row 3", Qt::ShiftModifier);
    touch("row 2", Qt::ControlModifier);
    EXPECT_EQ(grid.selectedRecords(), (std::vector<std::size_t>{8, 10}));
    EXPECT_EQ(bar->value(), 7);
    grid.touchHeader(1);
    EXPECT_EQ(bar->value(), 0) << "another order is read from its beginning";
    grid.touchHeader(1);
    grid.touchHeader(1);
    grid.setNewest(199);
    grid.populate();
    EXPECT_EQ(bar->value(), bar->maximum()) << "a new one where it is newest";
}

TEST_F(ReportGridWindow, CopiesAndSavesWhatIsShownOrSaysWhyNot) {
    const auto choose = [&](int action) {
        longTouch("row 1");
        till.frame()
            .findChild<QWidget*>("grd_mov_giornata_choices")
            ->findChildren<QAbstractButton*>()
            .at(action)
            ->click();
    };
    longTouch("row 1");
    touch("row 2");
    EXPECT_TRUE(grid.selectedRecords().empty() &&
                till.frame().findChild<QWidget*>("grd_mov_giornata_choices")->isHidden())
        << "a touch outside closes the menu alone";
    const QTemporaryDir home;
    qputenv("HOME", home.path().toUtf8());
    const auto save = [&](int touches) {
        choose(2);
        auto* const window = list.findChild<QDialog*>("SaveWindow");
        window->findChild<QLineEdit*>()->setText("list");
        const auto buttons = window->findChildren<QPushButton*>();
        auto* const confirm = *std::ranges::find_if(buttons, &QPushButton::isDefault);
        confirm->click();
        confirm->click(); // bounced
        if (touches > 1) {
            QTest::qWait(600);
            confirm->click();
        }
        window->close();
        till.loop.settle();
    };
    const auto saved = [&] {
        QFile file(home.filePath("list.csv"));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll().toStdString();
    };
    touch("header 1");
    choose(1);
    EXPECT_EQ(grid.selectedRecords().size(), 3U);
    touch("row 2");
    touch("row 0", Qt::ControlModifier);
    QTest::keyClick(&list, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(), "A\t8\t€\r\nA\t10\t€\r\n");

    const PageNotice& notice = *grid.notice();
    save(1);
    EXPECT_EQ(notice.text(), "Elenco salvato: list.csv");
    const std::string first = "\xEF\xBB\xBFTipo;importo;Valuta\r\nA;8;€\r\nB;9;€\r\nA;10;€\r\n";
    EXPECT_EQ(saved(), first);
    touch("header 1");
    save(1);
    EXPECT_EQ(saved(), first) << "asked, and not answered";
    save(2);
    EXPECT_NE(saved(), first);
    till.dialog().setSaveFolder(home.path().toStdString());
    choose(2);
    choose(2);
    EXPECT_EQ(QDir(home.path()).entryList({"movimenti*.csv"}).size(), 2);
    till.dialog().setSaveFolder(home.filePath("missing").toStdString());
    choose(2);
    EXPECT_TRUE(notice.text().starts_with("Elenco NON salvato: movimenti") && notice.pending())
        << notice.text();
}

TEST_F(ReportGridWindow, ShowsSumsOrSaysThatTheyWouldNotBeWhole) {
    const auto shows = [&](const QString& words) {
        till.loop.settle();
        const TextPaper paper(list);
        return std::ranges::any_of(paper.texts, [&](const auto& text) { return text.words.contains(words); });
    };
    touch("header 1");
    EXPECT_TRUE(shows("Ordina per: importo") && shows("Σ") && shows("€ 27,00"));
    test::addMovements(till.database());
    till.database().failures = {{"Operation", 2}};
    till.control<PushButton>("cmdCaricaMovimenti").press();
    const QString warning = "Elenco non letto fino in fondo: possono mancare movimenti";
    EXPECT_TRUE(shows(warning));
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&list)->text(QAccessible::Description), warning);
    EXPECT_FALSE(shows("Σ"));
    EXPECT_EQ(till.takeLog().size(), 1U);
}

/// A day of three movements, of which the last can be read when `hold` returns.
class HeldDay final : public DatabaseConnection, private Snapshot {
  public:
    explicit HeldDay(std::function<void()> hold) : hold_(std::move(hold)) {
        addColumn("Tipo");
        for (const char* kind : {"A", "B", "C"}) {
            add(std::string_view(kind));
            endRow();
        }
    }
    Recordset query(const Query&) override { return Recordset({std::shared_ptr<void>(), this}); }
    [[nodiscard]] bool onAnyThread() const override { return true; }

  private:
    [[nodiscard]] Value at(std::size_t row, std::size_t column) const override {
        if (row == 2)
            hold_();
        return Snapshot::at(row, column);
    }
    std::function<void()> hold_;
};

/// Calls back while the sign of a wait is painted.
class SignWatch final : public QObject {
  public:
    explicit SignWatch(std::function<void()> seen) : seen_(std::move(seen)) {
        qApp->installEventFilter(this);
    }
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint && watched->objectName() == "waiting")
            seen_();
        return false;
    }

  private:
    std::function<void()> seen_;
};

TEST_F(ReportGridWindow, IsFilledBesideASignThatShowsNothingOfIt) {
    std::binary_semaphore shown{0};
    bool handled = false;
    std::set<QString> words;
    const SignWatch watch([&] {
        EXPECT_FALSE(handled) << "an event was handled";
        for (const auto& text : TextPaper(list).texts)
            words.insert(text.words);
        shown.release();
    });
    bool inTime = false;
    std::thread::id filling;
    till.process.SharedConnection = std::make_shared<HeldDay>([&] {
        filling = std::this_thread::get_id();
        inTime = till.process.waitingSign && shown.try_acquire_for(std::chrono::seconds(10));
    });
    QTimer::singleShot(0, &list, [&] { handled = true; });
    auto& load = till.control<PushButton>("cmdCaricaMovimenti");
    load.press();
    EXPECT_TRUE(inTime);
    EXPECT_EQ(this->shown(), "012");
    EXPECT_EQ(words, std::set{QString::fromStdString(grid.groupHint())}) << "nor that there is nothing";
    till.loop.settle();
    EXPECT_TRUE(handled);
    till.process.waitingSign = false;
    load.press();
    EXPECT_EQ(filling, std::this_thread::get_id());
}

} // namespace
} // namespace kova
