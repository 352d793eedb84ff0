#pragma once
#include "base/signal.h"
#include "ports/event_loop.h"

#include <chrono>
#include <optional>

namespace kova {

/// A timer of a window: off until started, then ticking until stopped. One whose window was closed is
/// retired.
class Timer {
  public:
    Timer(EventLoop& loop, std::chrono::milliseconds interval) : loop_(loop), interval_(interval) {}
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;
    ~Timer() { stop(); }

    /// Starting a running timer changes nothing: its tick stays due when it was.
    void start();
    void stop();
    /// Stops it for good: starting has no effect any more.
    void retire();
    [[nodiscard]] bool retired() const { return retired_; }
    [[nodiscard]] bool running() const { return id_.has_value(); }
    Signal<> tick;

  private:
    EventLoop& loop_;
    std::chrono::milliseconds interval_;
    std::optional<TimerId> id_;
    bool retired_ = false;
};

} // namespace kova
