#include "base/signal.h"

#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>

namespace kova {
namespace {

using Calls = std::vector<int>;

TEST(Signal, SlotsMayChangeTheConnectionsEmitAgainAndThrow) {
    Signal<> signal;
    Calls calls;
    bool failing = false;
    Connection self, later, added;
    self = signal.connect([&] {
        calls.push_back(1);
        self.disconnect();
        later.disconnect();
        added = signal.connect([&] { calls.push_back(3); });
        signal();
    });
    later = signal.connect([&] { calls.push_back(2); });
    const auto throwing = signal.connect([&] { failing ? throw std::runtime_error("slot") : void(); });
    auto last = signal.connect([&] { calls.push_back(8); });
    last = signal.connect([&] { calls.push_back(9); }); // replaces that one
    signal();
    EXPECT_EQ(calls, Calls({1, 9, 3, 9})) << "one disconnected is not called, one connected waits";
    failing = true;
    EXPECT_THROW(signal(), std::runtime_error);
    failing = false;
    { const auto gone = std::move(last); }
    signal();
    EXPECT_EQ(calls, Calls({1, 9, 3, 9, 3})) << "the signal is usable after a slot threw";
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

} // namespace
} // namespace kova
