#include "many_movements.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <filesystem>
#include <malloc.h>
#include <sqlite3.h>

namespace kova::bench {
namespace {

using Clock = std::chrono::steady_clock;

/// Bytes on the heap, as the C library counts them.
double heapInUse() {
    const auto info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
}

struct HeadlessShop {
    HeadlessEventLoop loop;
    HeadlessUserInterface userInterface{[](Window&) { throw std::logic_error("no window is expected"); }};
    Shop shop{loop, userInterface};
};

/// What any program must do that reads the rows: step, and look at each cell without keeping it.
class RawReading {
  public:
    RawReading(const std::string& file, const std::string& sql) {
        if (sqlite3_open_v2(file.c_str(), &database_, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK ||
            sqlite3_db_config(database_, SQLITE_DBCONFIG_MAINDBNAME, "dbo") != SQLITE_OK ||
            sqlite3_prepare_v2(database_, sql.c_str(), -1, &statement_, nullptr) != SQLITE_OK)
            throw std::runtime_error(sqlite3_errmsg(database_));
    }
    RawReading(const RawReading&) = delete;
    RawReading& operator=(const RawReading&) = delete;
    ~RawReading() {
        sqlite3_finalize(statement_);
        sqlite3_close(database_);
    }
    std::size_t read() {
        std::size_t rows = 0;
        for (; sqlite3_step(statement_) == SQLITE_ROW; ++rows)
            for (int column = 0; column < sqlite3_column_count(statement_); ++column)
                readCell(column);
        sqlite3_reset(statement_);
        return rows;
    }

  private:
    void readCell(int column) {
        switch (sqlite3_column_type(statement_, column)) {
        case SQLITE_INTEGER:
            benchmark::DoNotOptimize(sqlite3_column_int64(statement_, column));
            break;
        case SQLITE_FLOAT:
            benchmark::DoNotOptimize(sqlite3_column_double(statement_, column));
            break;
        default:
            benchmark::DoNotOptimize(sqlite3_column_text(statement_, column));
            benchmark::DoNotOptimize(sqlite3_column_bytes(statement_, column));
        }
    }
    sqlite3* database_ = nullptr;
    sqlite3_stmt* statement_ = nullptr;
};

/// The list of a day with so many movements, in a database file that both sides read.
class Day {
  public:
    explicit Day(std::int64_t rows) {
        std::filesystem::remove(file_);
        auto database = SqliteHostDatabase::openFile(file_);
        database.createSchema();
        database.loadSample();
        createMovements(database, rows);
        till.shop.component().Inizializza(database.connection());
        till.shop.component().SetSoftwareName("FALCA");
        till.shop.component().Show(0);
        till.shop.control<TabControl>("TabControl").touchTab(1);
        till.shop.control<DateField>("comboData").paste(MovementsDay);
    }
    Day(const Day&) = delete;
    Day& operator=(const Day&) = delete;
    ~Day() { std::filesystem::remove(file_); }

    [[nodiscard]] std::string sql() const {
        return " SELECT [Data Operazione] as [Data-Ora Aggiornamento], [Tipo Operazione], [Tipo Pagamento], "
               "importo, "
               "Valuta, [Note Movimento], [Operatore]  FROM [dbo].[Report_Drawer_Operation]  WHERE "
               "[dbo].[Report_Drawer_Operation].[Data Operazione] BETWEEN '2026-11-02 00:00:00' and "
               "'2026-11-02 "
               "23:59:59' ORDER BY Ordinamento , [Data operazione] ";
    }
    [[nodiscard]] const std::string& file() const { return file_; }
    void load() { till.shop.control<PushButton>("cmdCaricaMovimenti").press(); }
    ReportGrid& grid() { return till.shop.control<ReportGrid>("grd_mov_giornata"); }
    void touchHeader(std::size_t column) { grid().touchHeader(column); }

    HeadlessShop till;

  private:
    std::string file_ = (std::filesystem::temp_directory_path() / "kova-movements-bench.sqlite").string();
};

double seconds(Clock::duration duration) {
    return std::chrono::duration<double>(duration).count();
}

// From the touch on the load button to the rows ready to be drawn. `times_raw` compares with stepping through
// the same query in the same run; `grid_MB` is what the grid holds, `heap_MB` what the heap grew by.
void loadMovements(benchmark::State& state) {
    Day day(state.range(0));
    RawReading raw(day.file(), day.sql());
    double rawTime = 0, loadTime = 0;
    const double before = heapInUse();
    for (auto _ : state) {
        const auto start = Clock::now();
        const std::size_t rows = raw.read();
        const auto half = Clock::now();
        day.load();
        const auto end = Clock::now();
        if (day.grid().rows().size() != rows || rows != static_cast<std::size_t>(state.range(0)))
            state.SkipWithError("rows are missing");
        rawTime += seconds(half - start);
        loadTime += seconds(end - half);
        state.SetIterationTime(seconds(end - half));
    }
    state.counters["times_raw"] = loadTime / rawTime;
    state.counters["grid_MB"] = static_cast<double>(day.grid().memoryUse()) / 1e6;
    state.counters["heap_MB"] = (heapInUse() - before) / 1e6;
}
BENCHMARK(loadMovements)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->RangeMultiplier(10)
    ->Range(1000, 1'000'000);

// The touch on a header: the list sorted by the amounts.
void sortByAmount(benchmark::State& state) {
    Day day(state.range(0));
    day.load();
    constexpr std::size_t amount = 3;
    for (auto _ : state) {
        day.touchHeader(amount);
        state.PauseTiming();
        if (day.grid().sortDirection() != ReportGrid::Direction::Ascending)
            state.SkipWithError("not sorted");
        day.load();
        state.ResumeTiming();
    }
}
BENCHMARK(sortByAmount)->Unit(benchmark::kMillisecond)->RangeMultiplier(10)->Range(1000, 1'000'000);

// A header in the group-by area: three activities, each with its sums.
void groupByActivity(benchmark::State& state) {
    Day day(state.range(0));
    day.load();
    constexpr std::size_t activity = 1;
    for (auto _ : state) {
        day.grid().groupBy(activity);
        state.PauseTiming();
        if (day.grid().rows().size() != static_cast<std::size_t>(state.range(0)) + 3)
            state.SkipWithError("not grouped");
        day.grid().ungroup();
        state.ResumeTiming();
    }
}
BENCHMARK(groupByActivity)->Unit(benchmark::kMillisecond)->RangeMultiplier(10)->Range(1000, 1'000'000);

} // namespace
} // namespace kova::bench

BENCHMARK_MAIN();
