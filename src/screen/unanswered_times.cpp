#include "screen/unanswered_times.h"

#include <algorithm>
#include <utility>

namespace kova {

using namespace std::chrono_literals;

int UnansweredTimes::suspend(Time now) {
    if (running_ > 0)
        close(now);
    return std::exchange(running_, 0);
}

void UnansweredTimes::resume(int running, Time now) {
    running_ = running;
    since_ = now;
}

void UnansweredTimes::close(Time now) {
    if (now - since_ >= Noticed)
        spans_[next_++ % spans_.size()] = {since_, now};
}

bool UnansweredTimes::contain(Time touched, Time now) const {
    constexpr Time Kept = 60s; // what was touched is heard of as soon as somebody listens again
    return std::ranges::any_of(spans_, [&](const Span& span) {
        return touched >= span.begin && touched < span.end && span.end + Kept > now;
    });
}

} // namespace kova
