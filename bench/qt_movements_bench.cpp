#include "adapters/qt/report_grid_view.h"
#include "adapters/qt/user_interface.h"
#include "adapters/qt/window_frame.h"
#include "many_movements.h"

#include <benchmark/benchmark.h>

#include <QHeaderView>
#include <QImage>
#include <QLineEdit>
#include <QScrollBar>
#include <QSortFilterProxyModel>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QSqlQueryModel>
#include <QTableView>
#include <QTableWidget>
#include <QTest>

#include <ctime>
#include <fstream>

namespace kova::bench {
namespace {

using Clock = std::chrono::steady_clock;
constexpr std::int64_t Rows = 100'000;

/// The dialog on a 1280 × 800 surface, on its movements tab.
struct QtDay {
    explicit QtDay(std::int64_t rows) : file(rows), tab(shop, file.database.connection()) {}
    ~QtDay() {
        shop.component().DiscardForm();
        loop.settle();
    }
    QtDay(const QtDay&) = delete;
    QtDay& operator=(const QtDay&) = delete;
    /// Into a picture that stays, as a window's does: no allocation is timed.
    void paint() { userInterface.frame(*dialogOf(shop.component())->window())->render(&picture); }

    QtEventLoop loop;
    const RegionalSettings regional;
    QtUserInterface userInterface{loop, regional, QSize(1280, 800)};
    Shop shop{loop, userInterface};
    DayFile file;
    MovementsTab tab;
    QImage picture{1280, 800, QImage::Format_RGB32};
};

/// Fails loudly: the comparisons below need the file readable through Qt.
QSqlDatabase openThroughQt(const std::string& file) {
    auto database =
        QSqlDatabase::contains() ? QSqlDatabase::database() : QSqlDatabase::addDatabase("QSQLITE");
    database.close();
    database.setDatabaseName(QString::fromStdString(file));
    if (!database.open())
        throw std::runtime_error("no SQLite driver for Qt: install libqt6sql6-sqlite");
    return database;
}

void report(benchmark::State& state, double heapBefore, double sortTime) {
    state.counters["heap_MB"] = (heapInUse() - heapBefore) / 1e6;
    state.counters["sort_ms"] = sortTime * 1e3;
}

// This component's list: load, and the sort by the amount.
void ownList(benchmark::State& state) {
    QtDay day(Rows);
    const double before = heapInUse();
    double sortTime = 0;
    for (auto _ : state) {
        auto start = Clock::now();
        day.tab.load();
        state.SetIterationTime(seconds(Clock::now() - start));
        start = Clock::now();
        day.tab.grid().touchHeader(AmountColumn);
        sortTime = seconds(Clock::now() - start);
    }
    report(state, before, sortTime);
}
BENCHMARK(ownList)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);

// Qt's model of a query, fetched to the end, in a table that sorts through a proxy.
void sqlQueryModel(benchmark::State& state) {
    const QtDay application(1); // a QApplication
    const DayFile file(Rows);
    const auto database = openThroughQt(file.name());
    double sortTime = 0, before = 0;
    for (auto _ : state) {
        before = heapInUse();
        QTableView view;
        auto start = Clock::now();
        QSqlQueryModel model;
        model.setQuery(QString::fromStdString(DayFile::query()), database);
        while (model.canFetchMore())
            model.fetchMore();
        view.setModel(&model);
        state.SetIterationTime(seconds(Clock::now() - start));
        if (model.rowCount() != Rows)
            state.SkipWithError("rows are missing");
        start = Clock::now();
        QSortFilterProxyModel proxy;
        proxy.setSourceModel(&model);
        proxy.sort(static_cast<int>(AmountColumn));
        view.setModel(&proxy);
        sortTime = seconds(Clock::now() - start);
        report(state, before, sortTime);
    }
}
BENCHMARK(sqlQueryModel)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);

/// A cell that sorts by number.
struct AmountItem final : QTableWidgetItem {
    explicit AmountItem(double amount) { setData(Qt::DisplayRole, amount); }
};

// Qt's table of items, filled row by row.
void tableWidget(benchmark::State& state) {
    const QtDay application(1);
    const DayFile file(Rows);
    const auto database = openThroughQt(file.name());
    double sortTime = 0, before = 0;
    for (auto _ : state) {
        before = heapInUse();
        auto start = Clock::now();
        QSqlQuery query(database);
        query.setForwardOnly(true);
        query.exec(QString::fromStdString(DayFile::query()));
        QTableWidget table(static_cast<int>(Rows), 7);
        int row = 0;
        for (; query.next(); ++row)
            for (int column = 0; column < 7; ++column)
                table.setItem(row, column,
                              column == static_cast<int>(AmountColumn)
                                  ? new AmountItem(query.value(column).toDouble())
                                  : new QTableWidgetItem(query.value(column).toString()));
        state.SetIterationTime(seconds(Clock::now() - start));
        if (row != Rows)
            state.SkipWithError("rows are missing");
        start = Clock::now();
        table.sortItems(static_cast<int>(AmountColumn));
        sortTime = seconds(Clock::now() - start);
        report(state, before, sortTime);
    }
}
BENCHMARK(tableWidget)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);

// The first frame after a load: must not depend on how many rows there are.
void firstPaint(benchmark::State& state) {
    QtDay day(state.range(0));
    for (auto _ : state) {
        day.tab.load();
        const auto start = Clock::now();
        day.paint();
        state.SetIterationTime(seconds(Clock::now() - start));
    }
}
BENCHMARK(firstPaint)->UseManualTime()->Unit(benchmark::kMillisecond)->Arg(100)->Arg(Rows)->Iterations(40);

/// Bytes of this process by their name in the system's account of it.
double processBytes(const char* name) {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        double kilobytes = 0;
        if (word == name && status >> kilobytes)
            return kilobytes * 1024;
    }
    throw std::runtime_error("no such account");
}

// What a list takes from the system: at most, while its rows are read and its texts made; at rest, with the
// window open; and after that has closed.
void memory(benchmark::State& state) {
    QtDay day(state.range(0));
    day.loop.settle();
    for (auto _ : state) {
        std::ofstream("/proc/self/clear_refs") << "5"; // the peak begins anew
        const double before = processBytes("VmRSS:");
        const auto perRow = [&](const char* name) {
            return (processBytes(name) - before) / static_cast<double>(state.range(0));
        };
        day.tab.load();
        day.loop.settle();
        state.counters["peak_B_row"] = perRow("VmHWM:");
        state.counters["rest_B_row"] = perRow("VmRSS:");
        day.shop.component().DiscardForm();
        day.loop.settle();
        state.counters["left_B_row"] = perRow("VmRSS:");
    }
}
BENCHMARK(memory)->Arg(100'000)->Arg(1'000'000)->Iterations(1)->Unit(benchmark::kMillisecond);

/// A cashier's touches and keys on the list.
class Cashier {
  public:
    explicit Cashier(QtDay& day)
        : day_(day),
          list_(dynamic_cast<ReportGridView&>(
              day.userInterface.view(*dialogOf(day.shop.component())->window()->find("grd_mov_giornata"))
                  ->widget())),
          bar_(*list_.findChild<QScrollBar*>()),
          field_(*list_.parentWidget()->findChild<QLineEdit*>("grd_mov_giornata_search")) {
        list_.setFocus();
        see();
    }
    /// A header, or a row counted from the first in sight.
    void touch(int row, int column) {
        const QPointF at = list_.cell(row < 0 ? row : bar_.value() + row, column).center();
        QTest::mouseClick(&list_, Qt::LeftButton, {}, at.toPoint());
    }
    void key(Qt::Key key, Qt::KeyboardModifiers with = {}) { QTest::keyClick(&list_, key, with); }
    void scrollTo(int row) { bar_.setValue(row); }
    void group(int column) { list_.switchGroup(column); }
    void search(const char* text) { field_.setText(text); }
    /// Handles what waits, painting among it.
    void see() { day_.loop.settle(); }

  private:
    QtDay& day_;
    ReportGridView& list_;
    QScrollBar& bar_;
    QLineEdit& field_;
};

using Act = std::function<void(Cashier&)>;
struct Gesture {
    std::string name;
    Act act, before, after; ///< what is timed, and what goes before it and takes it back
};

std::vector<Gesture> gestures() {
    const Act nothing = [](Cashier&) {};
    const Act toTop = [](Cashier& it) { it.scrollTo(0); };
    const Act selectAll = [](Cashier& it) { it.key(Qt::Key_A, Qt::ControlModifier); };
    const Act showAll = [](Cashier& it) { it.search(""); };
    const auto search = [](const char* text) { return [text](Cashier& it) { it.search(text); }; };
    std::vector<Gesture> all{
        {"page up", [](Cashier& it) { it.key(Qt::Key_PageUp); }, nothing, nothing},
        {"to the middle", [](Cashier& it) { it.scrollTo(500'000); }, toTop, nothing},
        {"to the end", [](Cashier& it) { it.key(Qt::Key_End); }, toTop, nothing},
        {"select", [](Cashier& it) { it.touch(3, 2); }, nothing, nothing},
        {"select all", selectAll, nothing, nothing},
        {"copy all", [](Cashier& it) { it.key(Qt::Key_C, Qt::ControlModifier); }, selectAll, nothing},
        {"search n", search("n"), nothing, showAll},
        {"search 9", search("9"), nothing, showAll},
        {"search 1.77", search("1.77"), nothing, showAll},
        {"search 77 after 7", search("77"), search("7"), showAll},
        {"search in vain", search("qqq"), nothing, showAll},
        {"show all again", showAll, search("n"), nothing},
    };
    for (int column = 0; column < 7; ++column) {
        const std::string name = std::to_string(column);
        const Act sort = [=](Cashier& it) { it.touch(-1, column); };
        const Act group = [=](Cashier& it) { it.group(column); };
        all.push_back({"sort by " + name, sort, nothing, [=](Cashier& it) { sort(it), sort(it); }});
        all.push_back({"sort down by " + name, sort, sort, sort});
        all.push_back({"as loaded after " + name, sort, [=](Cashier& it) { sort(it), sort(it); }, nothing});
        all.push_back({"group by " + name, group, nothing, group});
        all.push_back({"collapse, grouped by " + name, [](Cashier& it) { it.touch(0, 0); }, group, group});
        all.push_back({"ungroup after " + name, group, group, nothing});
    }
    return all;
}

// From a touch or a key to the pixels, in a list of a million movements; `cpu_ms` is the processor's time.
void touchMillion(benchmark::State& state, const Gesture& gesture) {
    QtDay day(1'000'000);
    day.tab.load();
    Cashier cashier(day);
    double cpu = 0;
    for (auto _ : state) {
        gesture.before(cashier);
        cashier.see();
        const auto cpuStart = std::clock();
        const auto start = Clock::now();
        gesture.act(cashier);
        cashier.see();
        state.SetIterationTime(seconds(Clock::now() - start));
        cpu += static_cast<double>(std::clock() - cpuStart) / CLOCKS_PER_SEC;
        gesture.after(cashier);
    }
    state.counters["cpu_ms"] = benchmark::Counter(cpu * 1e3, benchmark::Counter::kAvgIterations);
}

} // namespace
} // namespace kova::bench

int main(int count, char** arguments) {
    for (const auto& gesture : kova::bench::gestures())
        benchmark::RegisterBenchmark(("touchMillion/" + gesture.name).c_str(), kova::bench::touchMillion,
                                     gesture)
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond)
            ->Iterations(4);
    benchmark::Initialize(&count, arguments);
    benchmark::RunSpecifiedBenchmarks();
}
