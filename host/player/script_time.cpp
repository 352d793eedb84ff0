#include "player/script_time.h"

#include <memory>

namespace kova {

TimerId ScriptTime::startTimer(std::chrono::milliseconds interval, std::function<void()> tick) {
    // Shared, because an event loop may call a copy of what it was given.
    const auto due = std::make_shared<std::chrono::milliseconds>(elapsed_ + interval);
    return loop_.startTimer(interval, [this, due, interval, tick = std::move(tick)] {
        reach(*due);
        *due += interval;
        tick();
    });
}

void ScriptTime::wait(std::chrono::milliseconds time) {
    const auto end = elapsed_ + time;
    cashier_.wait(time);
    reach(end);
}

} // namespace kova
