#pragma once
#include "adapters/qt/event_loop.h"

namespace kova {

/// Qt's event loop with a time line of a script's own: time passes inside `advance` alone, which really takes
/// that long. Ticks come in the same order and at the same milliseconds as on virtual time, however slow the
/// machine.
class SteppedEventLoop final : public QtEventLoop {
  public:
    TimerId startTimer(std::chrono::milliseconds interval, std::function<void()> tick) override;
    void stopTimer(TimerId id) override { timers_.stop(id); }

    /// Waits while handling events; timers that fall due tick in order. Throws what a handler threw.
    void advance(std::chrono::milliseconds time);

  private:
    TimerQueue timers_;
};

} // namespace kova
