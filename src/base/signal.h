#pragma once
#include "base/connection.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace kova {

/// Calls its slots in the order of connection, on the calling thread. During an emission slots may connect,
/// disconnect themselves or others, emit again, throw (the exception reaches the emitter and later slots are
/// not called), or destroy the signal: a slot disconnected meanwhile is not called, and one connected
/// meanwhile waits for the next emission. Not for use from several threads.
template <class... Args>
class Signal {
  public:
    Signal() = default;
    Signal(const Signal&) = delete;
    Signal& operator=(const Signal&) = delete;
    ~Signal() {
        for (const auto& slot : slots_)
            slot->connected = false;
    }

    Connection connect(std::function<void(Args...)> call) {
        std::erase_if(slots_, [](const auto& slot) { return !slot->connected; });
        slots_.push_back(std::make_shared<Slot>(Slot{true, std::move(call)}));
        const auto& slot = slots_.back();
        return Connection(std::shared_ptr<bool>(slot, &slot->connected));
    }

    /// Nothing of the signal is touched after the copy, so that a slot may destroy it.
    void operator()(Args... args) const {
        const auto present = slots_;
        for (const auto& slot : present)
            if (slot->connected)
                slot->call(args...);
    }

  private:
    struct Slot {
        bool connected;
        std::function<void(Args...)> call;
    };
    std::vector<std::shared_ptr<Slot>> slots_;
};

} // namespace kova
