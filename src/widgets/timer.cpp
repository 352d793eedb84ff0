#include "widgets/timer.h"

namespace kova {

void Timer::start() {
    if (!id_ && !retired_)
        id_ = loop_.startTimer(interval_, [this] { tick(); });
}

void Timer::stop() {
    if (id_)
        loop_.stopTimer(*id_);
    id_.reset();
}

void Timer::retire() {
    stop();
    retired_ = true;
}

} // namespace kova
