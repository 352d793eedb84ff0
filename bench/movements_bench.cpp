#include "many_movements.h"
#include "raw_reading.h"

#include <benchmark/benchmark.h>

namespace kova::bench {
namespace {

using Clock = std::chrono::steady_clock;

struct HeadlessDay {
    explicit HeadlessDay(std::int64_t rows) : file(rows), tab(shop, file) {}
    HeadlessEventLoop loop;
    HeadlessUserInterface userInterface{[](Window&) { throw std::logic_error("no window is expected"); }};
    Shop shop{loop, userInterface};
    DayFile file;
    MovementsTab tab;
};

// From the touch on the load button to the rows ready to be drawn. `times_raw` compares with stepping through
// the same query in the same run; `grid_MB` is what the grid says it holds, `heap_MB` what the heap grew by.
void loadMovements(benchmark::State& state) {
    HeadlessDay day(state.range(0));
    RawReading raw(day.file.name(), DayFile::query());
    double rawTime = 0, loadTime = 0;
    const double before = heapInUse();
    for (auto _ : state) {
        const auto start = Clock::now();
        const std::size_t rows = raw.read();
        const auto half = Clock::now();
        day.tab.load();
        const auto end = Clock::now();
        if (day.tab.grid().rows().size() != rows || rows != static_cast<std::size_t>(state.range(0)))
            state.SkipWithError("rows are missing");
        rawTime += seconds(half - start);
        loadTime += seconds(end - half);
        state.SetIterationTime(seconds(end - half));
    }
    state.counters["times_raw"] = loadTime / rawTime;
    state.counters["grid_MB"] = static_cast<double>(day.tab.grid().memoryUse()) / 1e6;
    state.counters["heap_MB"] = (heapInUse() - before) / 1e6;
}
#define EACH_SIZE UseManualTime()->Unit(benchmark::kMillisecond)->RangeMultiplier(10)->Range(1000, 1'000'000)
BENCHMARK(loadMovements)->EACH_SIZE;
// The very first list of a dialog, for which all memory is new.
BENCHMARK(loadMovements)
    ->Name("loadMovementsFirst")
    ->Arg(100'000)
    ->Iterations(1)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

/// Times a gesture on a loaded list, which `undo` takes back; `isDone` tells whether it had its effect.
template <class Gesture, class Check, class Undo>
void timeGesture(benchmark::State& state, Gesture gesture, Check isDone, Undo undo) {
    HeadlessDay day(state.range(0));
    day.tab.load();
    ReportGrid& grid = day.tab.grid();
    for (auto _ : state) {
        const auto start = Clock::now();
        gesture(grid);
        state.SetIterationTime(seconds(Clock::now() - start));
        if (!isDone(grid))
            state.SkipWithError("the gesture had no effect");
        undo(grid);
    }
}

// The touch on a header.
void sortByAmount(benchmark::State& state) {
    timeGesture(
        state, [](ReportGrid& grid) { grid.touchHeader(AmountColumn); },
        [](const ReportGrid& grid) { return grid.sortDirection() == ReportGrid::Direction::Ascending; },
        [](ReportGrid& grid) {
            grid.touchHeader(AmountColumn);
            grid.touchHeader(AmountColumn);
        });
}
BENCHMARK(sortByAmount)->EACH_SIZE;

// A header in the group-by area: three activities, each with its sums.
void groupByActivity(benchmark::State& state) {
    timeGesture(
        state, [](ReportGrid& grid) { grid.groupBy(ActivityColumn); },
        [](const ReportGrid& grid) { return grid.rows().size() == grid.recordCount() + 3; },
        [](ReportGrid& grid) { grid.ungroup(); });
}
BENCHMARK(groupByActivity)->EACH_SIZE;

// The first letter that is typed into the search field, which a third of the records have, and the next one.
void searchFirstLetter(benchmark::State& state) {
    timeGesture(
        state, [](ReportGrid& grid) { grid.search("z"); },
        [](const ReportGrid& grid) { return grid.order().size() == (grid.recordCount() + 1) / 3; },
        [](ReportGrid& grid) {
            grid.search("");
            grid.populate(); // so that nothing is known of the texts
        });
}
BENCHMARK(searchFirstLetter)->EACH_SIZE;

void searchNextLetter(benchmark::State& state) {
    timeGesture(
        state, [](ReportGrid& grid) { grid.search("not"); },
        [](const ReportGrid& grid) { return grid.order().size() == grid.recordCount(); },
        [](ReportGrid& grid) { grid.search("z"); });
}
BENCHMARK(searchNextLetter)->EACH_SIZE;

} // namespace
} // namespace kova::bench

BENCHMARK_MAIN();
