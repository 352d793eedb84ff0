// The random walk with real events on real windows: they show what the models alone show.
#include "till.h"

#include "host/headless_cashier.h"
#include "host/qt_cashier.h"
#include "unit/random_walk.h"

#include <gtest/gtest.h>

namespace kova::test {
namespace {

/// KOVA_WALK_STEPS asks for a longer one.
TEST(RandomWalkOnWindows, ShowsWhatTheModelsShow) {
    const int asked = qEnvironmentVariableIntValue("KOVA_WALK_STEPS");
    const int steps = asked > 0 ? asked : 1500;
    Tally onModels, onWindows;
    std::vector<std::string> expected, seen;
    for (const unsigned seed : {7U, 8U}) {
        World world;
        HeadlessCashier hands(world.loop);
        walkAtRandom({world, hands, {}, &expected}, seed, steps, onModels);
        Till till;
        QtCashier fingers(till.userInterface);
        walkAtRandom({till, fingers, {}, &seen}, seed, steps, onWindows);
    }
    const auto [first, other] = std::ranges::mismatch(expected, seen);
    EXPECT_TRUE(first == expected.end() && other == seen.end())
        << "step " << first - expected.begin() << "\nmodels:  " << (first == expected.end() ? "" : *first)
        << "\nwindows: " << (other == seen.end() ? "" : *other);
    EXPECT_GT(onModels.movements, steps / 200);
    EXPECT_GT(onModels.counted, 0);
    EXPECT_GT(onModels.listed, 10);
}

} // namespace
} // namespace kova::test
