#pragma once
#include "player/cashier.h"
#include "ports/event_loop.h"

#include <algorithm>

namespace kova {

/// The time of a script: it passes in the cashier's waits alone, and inside a timer's tick it is the instant
/// at which the tick fell due. The timers are those of another event loop, which keeps their order.
class ScriptTime final : public EventLoop {
  public:
    /// Both outlive this; time on the loop must pass in the cashier's waits alone too.
    ScriptTime(EventLoop& loop, Cashier& cashier) : loop_(loop), cashier_(cashier) {}

    TimerId startTimer(std::chrono::milliseconds interval, std::function<void()> tick) override;
    void stopTimer(TimerId id) override { loop_.stopTimer(id); }
    void processPendingEvents() override { loop_.processPendingEvents(); }

    /// The cashier's wait. Those that a tick makes inside another count once.
    void wait(std::chrono::milliseconds time);
    [[nodiscard]] std::chrono::milliseconds elapsed() const { return elapsed_; }

  private:
    void reach(std::chrono::milliseconds instant) { elapsed_ = std::max(elapsed_, instant); }
    EventLoop& loop_;
    Cashier& cashier_;
    std::chrono::milliseconds elapsed_{0};
};

} // namespace kova
