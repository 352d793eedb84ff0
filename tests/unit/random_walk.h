#pragma once
#include "player/cashier.h"
#include "test_world.h"

namespace kova::test {

/// What walks came by.
struct Tally {
    int movements = 0, confirmations = 0;
    int counted = 0; ///< coin counts confirmed
    int listed = 0;  ///< loads of the list, failed ones among them
};

/// Where a walk leads: a world, and the hands that touch it.
struct Ground {
    World& world;
    Cashier& cashier;
    std::function<void(std::function<void()>)> post = {}; ///< leaves an event waiting; may be missing
    std::vector<std::string>* transcript = nullptr;       ///< of what is seen after each step, if wanted
};

/// Does anything that a cashier, a host or the surroundings may do, in an order that the seed decides.
void walkAtRandom(const Ground& ground, unsigned seed, int steps, Tally& tally);

} // namespace kova::test
