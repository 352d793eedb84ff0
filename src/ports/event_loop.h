#pragma once
#include <chrono>
#include <cstdint>
#include <functional>

namespace kova {

using TimerId = std::uint64_t;

/// The user-interface thread's event loop. Everything is called, and calls back, on that thread.
class EventLoop {
  public:
    virtual ~EventLoop() = default;
    /// Calls `tick` every `interval` (> 0) until stopped. Ticks due at the same time come in order of
    /// starting.
    virtual TimerId startTimer(std::chrono::milliseconds interval, std::function<void()> tick) = 0;
    /// An id that is not running is no error. No tick comes after this returns.
    virtual void stopTimer(TimerId id) = 0;
    /// Handles the events that wait at this moment (touches and due timers included), then returns.
    virtual void processPendingEvents() = 0;
};

} // namespace kova
