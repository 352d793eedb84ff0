#include "ports/timers.h"

#include <algorithm>
#include <tuple>

namespace kova {

TimerId TimerQueue::start(Milliseconds interval, std::function<void()> tick) {
    entries_.push_back({++lastId_, interval, now_ + interval, ++lastOrder_, std::move(tick)});
    return lastId_;
}

void TimerQueue::stop(TimerId id) {
    std::erase_if(entries_, [id](const Entry& entry) { return entry.id == id; });
}

std::vector<TimerQueue::Entry>::iterator TimerQueue::next() {
    return std::min_element(entries_.begin(), entries_.end(), [](const Entry& a, const Entry& b) {
        return std::tie(a.due, a.order) < std::tie(b.due, b.order);
    });
}

std::optional<TimerQueue::Milliseconds> TimerQueue::untilNext() const {
    const auto first = const_cast<TimerQueue*>(this)->next(); // NOLINT: next() changes nothing
    if (first == entries_.end())
        return std::nullopt;
    return std::max(first->due - now_, Milliseconds(0));
}

void TimerQueue::advance(Milliseconds step) {
    const auto target = now_ + step;
    for (auto entry = next(); entry != entries_.end() && entry->due <= target; entry = next()) {
        now_ = std::max(now_, entry->due);
        entry->due += entry->interval;
        entry->order = ++lastOrder_;
        const auto tick = entry->tick; // a copy: the tick may stop its own timer
        tick();
    }
    now_ = std::max(now_, target);
}

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
