#include "headless_cashier.h"
#include "random_walk.h"

#include <gtest/gtest.h>

namespace kova::test {
namespace {

TEST(RandomWalk, NeverBreaksWhatMustAlwaysHold) {
    Tally tally;
    for (const unsigned seed : {1U, 2U, 3U, 4U}) {
        World world;
        HeadlessCashier cashier(world.loop);
        walkAtRandom({world, cashier, [&](auto event) { world.loop.post(std::move(event)); }}, seed, 40'000,
                     tally);
    }
    EXPECT_GT(tally.movements, 500) << "a walk that saves nothing shows nothing";
    EXPECT_GT(tally.confirmations, tally.movements);
    EXPECT_GT(tally.counted, 100);
    EXPECT_GT(tally.listed, 1000);
}

} // namespace
} // namespace kova::test
