#include "base/signal.h"

#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>

namespace kova {
namespace {

using Calls = std::vector<int>;

TEST(Signal, SlotsMayChangeTheConnectionsDuringAnEmission) {
    Signal<> signal;
    Calls calls;
    Connection self, later, added;
    self = signal.connect([&] {
        calls.push_back(1);
        self.disconnect();
        later.disconnect();
        added = signal.connect([&] { calls.push_back(3); });
    });
    later = signal.connect([&] { calls.push_back(2); });
    signal();
    EXPECT_EQ(calls, Calls({1})) << "one disconnected is not called, one connected waits";
    signal();
    EXPECT_EQ(calls, Calls({1, 3}));
}

TEST(Signal, SlotsMayEmitAgainAndThrow) {
    Signal<> signal;
    Calls calls;
    const auto nesting = signal.connect([&] {
        calls.push_back(1);
        if (calls.size() == 1)
            signal();
    });
    const auto throwing = signal.connect([&] {
        calls.push_back(2);
        if (calls.size() > 3)
            throw std::runtime_error("slot");
    });
    const auto last = signal.connect([&] { calls.push_back(3); });
    EXPECT_THROW(signal(), std::runtime_error);
    EXPECT_EQ(calls, Calls({1, 1, 2, 3, 2}));
    EXPECT_THROW(signal(), std::runtime_error) << "the signal is usable after a slot threw";
    EXPECT_EQ(calls, Calls({1, 1, 2, 3, 2, 1, 2}));
}

TEST(Signal, ASlotMayDestroyTheSignal) {
    auto signal = std::make_optional<Signal<>>();
    Calls calls;
    const auto destroying = signal->connect([&] {
        calls.push_back(1);
        signal.reset();
    });
    auto after = signal->connect([&] { calls.push_back(2); });
    (*signal)();
    EXPECT_EQ(calls, Calls({1})) << "slots of a destroyed signal are not called";
    after.disconnect(); // outliving the signal is no error
}

TEST(Signal, AConnectionDisconnectsWhenItGoesOrIsReplaced) {
    Signal<> signal;
    Calls calls;
    auto connection = signal.connect([&] { calls.push_back(1); });
    connection = signal.connect([&] { calls.push_back(2); });
    signal();
    { const auto gone = std::move(connection); }
    signal();
    EXPECT_EQ(calls, Calls({2}));
}

} // namespace
} // namespace kova
