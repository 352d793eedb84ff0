#pragma once
#include "ports/event_loop.h"

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

} // namespace kova
