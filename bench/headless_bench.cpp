#include "shop.h"

#include <benchmark/benchmark.h>

namespace kova::bench {
namespace {

struct HeadlessShop {
    HeadlessEventLoop loop;
    HeadlessUserInterface userInterface{[](Window&) { throw std::logic_error("no window is expected"); }};
    Shop shop{loop, userInterface};
};

// A cashier's whole movement, from the touch on the activity to the emptied screen with the row stored. The
// 50 ms that the rules wait pass on virtual time and cost nothing.
void wholeMovement(benchmark::State& state) {
    HeadlessShop till;
    till.shop.component().Show(0);
    for (auto _ : state) {
        till.shop.control<ButtonGrid>("Pulsantiera_Attivita").touch("2");
        till.loop.advance(std::chrono::milliseconds(50));
        till.shop.control<ButtonGrid>("Pulsantiera_Pagamenti").touch("1");
        for (const char* key : {"1", "2", ".", "5"})
            till.shop.control<NumericKeypad>("Virtual_KeyPAD").touchKey(key);
        for (const char32_t key : std::u32string(U"RESTO"))
            till.shop.control<OnScreenKeyboard>("Virtual_Keyboard").touchKey(key);
        till.shop.control<PushButton>("cmdConferma").press();
    }
    if (till.shop.stored != state.iterations())
        state.SkipWithError("a movement was not stored");
}
BENCHMARK(wholeMovement)->Unit(benchmark::kMicrosecond);

// From the host's call to the dialog ready, and closed again.
void showHeadless(benchmark::State& state) {
    HeadlessShop till;
    for (auto _ : state) {
        till.shop.component().Show(0);
        till.shop.component().DiscardForm();
    }
}
BENCHMARK(showHeadless)->Unit(benchmark::kMicrosecond);

// Show with a catalogue of 1,000 payment types: what each further row costs.
void showWith1000Payments(benchmark::State& state) {
    HeadlessShop till;
    till.shop.database().execute("DELETE FROM tabPagamenti; WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL "
                                 "SELECT i + 1 FROM n WHERE i < 1000) "
                                 "INSERT INTO tabPagamenti SELECT i, 'Pagamento ' || i, 2, '€', i FROM n");
    for (auto _ : state) {
        till.shop.component().Show(0);
        state.PauseTiming();
        if (till.shop.control<ButtonGrid>("Pulsantiera_Pagamenti").buttons().size() != 1000)
            state.SkipWithError("not all payments were loaded");
        till.shop.component().DiscardForm();
        state.ResumeTiming();
    }
}
BENCHMARK(showWith1000Payments)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace kova::bench

BENCHMARK_MAIN();
