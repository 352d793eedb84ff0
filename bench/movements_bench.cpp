#include "many_movements.h"
#include "raw_reading.h"

#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace kova::bench {
namespace {

using Clock = std::chrono::steady_clock;

struct HeadlessShop {
    HeadlessEventLoop loop;
    HeadlessUserInterface userInterface{[](Window&) { throw std::logic_error("no window is expected"); }};
    Shop shop{loop, userInterface};
};

struct HeadlessDay : HeadlessShop {
    explicit HeadlessDay(std::int64_t rows) : file(rows), tab(shop, file.database.connection()) {}
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

/// What the first reading of a process takes.
struct FirstReading {
    double wall = 0, processor = 0; ///< seconds
    double newPages = 0;            ///< of memory, that the system has to clear
    std::size_t rows = 0;
};

template <class Read>
FirstReading timed(Read read) {
    rusage before{}, after{};
    const auto start = Clock::now();
    getrusage(RUSAGE_SELF, &before);
    const std::size_t rows = read();
    getrusage(RUSAGE_SELF, &after);
    const auto used = [](const rusage& usage) {
        return static_cast<double>(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
               static_cast<double>(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
    };
    return {seconds(Clock::now() - start), used(after) - used(before),
            static_cast<double>(after.ru_minflt - before.ru_minflt), rows};
}

constexpr const char *RawKind = "raw", *ListKind = "list";

/// Reads such a file for the first time, and prints what that took.
void printFirstReading(const std::string& kind, const std::string& file) {
    FirstReading taken;
    if (kind == RawKind) {
        RawReading raw(file, DayFile::query());
        taken = timed([&] { return raw.read(); });
    } else {
        HeadlessShop till;
        MovementsTab tab(till.shop, openSqlite(file));
        taken = timed([&] {
            tab.load();
            return tab.grid().rows().size();
        });
    }
    std::printf("%.9f %.9f %.0f %zu", taken.wall, taken.processor, taken.newPages, taken.rows);
}

/// The same in a new process of this program.
FirstReading firstReading(const std::string& kind, const std::string& file) {
    const std::string program = std::filesystem::read_symlink("/proc/self/exe").string();
    FirstReading taken;
    std::FILE* const said = popen(('"' + program + "\" " + kind + ' ' + file).c_str(), "r");
    const bool complete = said != nullptr && std::fscanf(said, "%lf %lf %lf %zu", &taken.wall,
                                                         &taken.processor, &taken.newPages, &taken.rows) == 4;
    if (said == nullptr || pclose(said) != 0 || !complete)
        throw std::runtime_error("a process that was to read failed");
    return taken;
}

double median(std::vector<FirstReading>& readings, double FirstReading::*what) {
    const auto middle = readings.begin() + std::ssize(readings) / 2;
    std::ranges::nth_element(readings, middle, {}, what);
    return (*middle).*what;
}

// The very first list of a process, for which all memory is new, beside the very first raw reading of
// another: medians over the iterations.
void firstList(benchmark::State& state) {
    const DayFile day(state.range(0));
    std::vector<FirstReading> raws, lists;
    for (auto _ : state) {
        raws.push_back(firstReading(RawKind, day.name()));
        lists.push_back(firstReading(ListKind, day.name()));
        if (raws.back().rows != lists.back().rows ||
            raws.back().rows != static_cast<std::size_t>(state.range(0)))
            state.SkipWithError("rows are missing");
        state.SetIterationTime(lists.back().wall);
    }
    const auto report = [&](const std::string& name, double FirstReading::*what, double unit) {
        const double raw = median(raws, what), list = median(lists, what);
        state.counters["raw_" + name] = raw * unit;
        state.counters["list_" + name] = list * unit;
        if (what != &FirstReading::newPages)
            state.counters["times_raw_" + name] = list / raw;
    };
    report("ms", &FirstReading::wall, 1e3);
    report("cpu_ms", &FirstReading::processor, 1e3);
    report("new_pages", &FirstReading::newPages, 1);
}
BENCHMARK(firstList)->Arg(100'000)->Iterations(15)->UseManualTime()->Unit(benchmark::kMillisecond);

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

int main(int count, char** arguments) {
    using namespace kova::bench;
    if (count == 3 && arguments[1][0] != '-') {
        printFirstReading(arguments[1], arguments[2]);
        return 0;
    }
    benchmark::Initialize(&count, arguments);
    benchmark::RunSpecifiedBenchmarks();
}
