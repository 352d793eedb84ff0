#pragma once
#include "base/signal.h"
#include "ports/event_loop.h"

#include <chrono>
#include <optional>
#include <vector>

namespace kova {

/// Timers on a time line of their own, which only `advance` moves: the same order and the same milliseconds
/// whatever drives it (virtual time, or a toolkit's real time). Ticks may start and stop timers and advance
/// the queue again.
class TimerQueue {
  public:
    using Milliseconds = std::chrono::milliseconds;

    TimerId start(Milliseconds interval, std::function<void()> tick);
    void stop(TimerId id);
    /// Lets `step` pass; ticks that fall due (the last instant included) run in order.
    void advance(Milliseconds step);
    [[nodiscard]] Milliseconds now() const { return now_; }
    /// Time until the next tick, never negative; nothing when no timer runs.
    [[nodiscard]] std::optional<Milliseconds> untilNext() const;
    [[nodiscard]] std::size_t running() const { return entries_.size(); }

  private:
    struct Entry {
        TimerId id;
        Milliseconds interval;
        Milliseconds due;
        std::uint64_t order;
        std::function<void()> tick;
    };
    std::vector<Entry>::iterator next();
    std::vector<Entry> entries_;
    Milliseconds now_{0};
    TimerId lastId_ = 0;
    std::uint64_t lastOrder_ = 0;
};

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
