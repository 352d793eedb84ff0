#include "player/qt/stepped_event_loop.h"

#include <QEventLoop>

#include <algorithm>
#include <utility>

namespace kova {

using namespace std::chrono_literals;

TimerId SteppedEventLoop::startTimer(Milliseconds interval, std::function<void()> tick) {
    return timers_.start(interval, [this, tick = std::move(tick)] {
        const Handler handler(*this);
        tick();
    });
}

void SteppedEventLoop::advance(Milliseconds time) {
    const auto wait = [this](Milliseconds piece) {
        QEventLoop loop;
        Caller caller(*this, [&loop] { loop.quit(); });
        QTimer::singleShot(piece, Qt::PreciseTimer, &loop, &QEventLoop::quit);
        loop.exec();
        caller.rethrow();
    };
    const auto target = timers_.now() + time;
    do {
        const auto left = std::max(target - timers_.now(), 0ms);
        const auto piece = std::min(timers_.untilNext().value_or(left), left);
        if (piece > 0ms)
            wait(piece);
        timers_.advance(std::clamp(target - timers_.now(), 0ms, piece));
    } while (timers_.now() < target);
}

} // namespace kova
