#include "adapters/qt/user_interface.h"
#include "adapters/qt/window_frame.h"
#include "shop.h"

#include <benchmark/benchmark.h>

namespace kova::bench {
namespace {

// From the host's call to the first frame of the dialog drawn, on a 1280 × 800 surface.
void showToFirstFrame(benchmark::State& state) {
    QtEventLoop loop;
    const RegionalSettings regional;
    QtUserInterface userInterface(loop, regional, QSize(1280, 800));
    Shop shop(loop, userInterface);
    for (auto _ : state) {
        shop.component().Show(0);
        benchmark::DoNotOptimize(userInterface.frame(*dialogOf(shop.component())->window())->grab().width());
        state.PauseTiming();
        shop.component().DiscardForm();
        loop.settle();
        state.ResumeTiming();
    }
}
BENCHMARK(showToFirstFrame)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace kova::bench

BENCHMARK_MAIN();
