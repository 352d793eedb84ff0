#include "adapters/qt/event_descriptor.h"

#include "base/error.h"

#include <QAbstractEventDispatcher>

#include <glib.h>
#include <sys/epoll.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <cerrno>
#include <map>
#include <vector>

namespace kova {
namespace {

constexpr int Unknown = 10; // milliseconds, where Qt does not tell what it waits for

/// What the thread's main context waits for. Qt waits there wherever it was built with GLib.
struct Wanted {
    std::map<int, std::uint32_t> events;
    int milliseconds = -1; ///< until a timer is due; -1 for none
};

Wanted wanted() {
    const auto* const dispatcher = QAbstractEventDispatcher::instance();
    if (dispatcher == nullptr)
        return {};
    if (!dispatcher->inherits("QEventDispatcherGlib"))
        return {{}, Unknown};
    GMainContext* const own = g_main_context_get_thread_default();
    GMainContext* const context = own != nullptr ? own : g_main_context_default();
    if (g_main_context_acquire(context) == FALSE)
        return {{}, Unknown};
    Wanted result;
    gint priority = 0;
    g_main_context_prepare(context, &priority);
    std::vector<GPollFD> polled(16);
    for (;;) {
        const auto size = static_cast<std::size_t>(g_main_context_query(
            context, G_MAXINT, &result.milliseconds, polled.data(), static_cast<gint>(polled.size())));
        const bool all = size <= polled.size();
        polled.resize(size);
        if (all)
            break;
    }
    g_main_context_release(context);
    for (const auto& one : polled) // whose bits are those of poll(), and these those of epoll
        result.events[one.fd] |= one.events;
    return result;
}

} // namespace

struct EventDescriptor::Waits {
    class Descriptor {
      public:
        explicit Descriptor(int opened) : number(opened) {
            if (opened < 0)
                throw Error(5, "No file descriptor is left");
        }
        Descriptor(const Descriptor&) = delete;
        Descriptor& operator=(const Descriptor&) = delete;
        ~Descriptor() { close(number); }
        const int number;
    };

    Descriptor all{epoll_create1(EPOLL_CLOEXEC)};
    Descriptor timer{timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK)};
    std::map<int, std::uint32_t> known;

    void watch(int watched, std::uint32_t events) const {
        epoll_event event{};
        event.events = events;
        event.data.fd = watched;
        if (epoll_ctl(all.number, EPOLL_CTL_MOD, watched, &event) != 0 && errno == ENOENT)
            epoll_ctl(all.number, EPOLL_CTL_ADD, watched, &event);
    }
};

EventDescriptor::EventDescriptor() : waits_(std::make_unique<Waits>()) {
    waits_->watch(waits_->timer.number, EPOLLIN);
}

EventDescriptor::~EventDescriptor() = default;

int EventDescriptor::number() const {
    return waits_->all.number;
}

void EventDescriptor::refresh() {
    const auto [events, milliseconds] = wanted();
    for (const auto& [number, before] : waits_->known)
        if (!events.contains(number))
            epoll_ctl(waits_->all.number, EPOLL_CTL_DEL, number, nullptr);
    for (const auto& [number, waitedFor] : events)
        waits_->watch(number, waitedFor);
    waits_->known = events;
    itimerspec due{};
    if (milliseconds >= 0) {
        due.it_value.tv_sec = milliseconds / 1000;
        due.it_value.tv_nsec = milliseconds == 0 ? 1 : milliseconds % 1000 * 1'000'000L;
    }
    timerfd_settime(waits_->timer.number, 0, &due, nullptr);
}

} // namespace kova
