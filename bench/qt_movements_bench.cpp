#include "adapters/qt/user_interface.h"
#include "adapters/qt/window_frame.h"
#include "many_movements.h"

#include <benchmark/benchmark.h>

#include <QHeaderView>
#include <QImage>
#include <QSortFilterProxyModel>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QSqlQueryModel>
#include <QTableView>
#include <QTableWidget>

namespace kova::bench {
namespace {

using Clock = std::chrono::steady_clock;
constexpr std::int64_t Rows = 100'000;

/// The dialog on a 1280 × 800 surface, on its movements tab.
struct QtDay {
    explicit QtDay(std::int64_t rows) : file(rows), tab(shop, file) {}
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

} // namespace
} // namespace kova::bench

BENCHMARK_MAIN();
