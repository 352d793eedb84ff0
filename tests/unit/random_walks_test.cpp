#include "player/headless_cashier.h"
#include "random_walk.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace kova::test {
namespace {

/// KOVA_WALK_STEPS and KOVA_WALK_SEED ask for longer and other ones.
TEST(RandomWalk, NeverBreaksWhatMustAlwaysHold) {
    const auto asked = [](const char* variable, int otherwise) {
        const char* const text = std::getenv(variable);
        return text != nullptr ? std::stoi(text) : otherwise;
    };
    const int steps = asked("KOVA_WALK_STEPS", 50'000);
    const auto first = static_cast<unsigned>(asked("KOVA_WALK_SEED", 1));
    Tally tally;
    for (unsigned seed = first; seed < first + 4; ++seed) {
        World world;
        HeadlessCashier cashier(world.loop);
        walkAtRandom({world, cashier, [&](auto event) { world.loop.post(std::move(event)); }}, seed, steps,
                     tally);
    }
    EXPECT_GT(tally.movements, 500) << "a walk that saves nothing shows nothing";
    EXPECT_GT(tally.confirmations, tally.movements);
    EXPECT_GT(tally.counted, 100);
    EXPECT_GT(tally.listed, 1000);
}

} // namespace
} // namespace kova::test
