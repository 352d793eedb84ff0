#include "adapters/system/machine.h"

#include <array>
#include <condition_variable>
#include <csignal>
#include <cstdint>
#include <dlfcn.h>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

namespace kova {
namespace {

/// Names of freedesktop.org's sound naming, the next one where the theme has not the first.
std::array<const char*, 2> eventsOf(Sounds::Tone tone) {
    switch (tone) {
    case Sounds::Tone::Key:
        return {"button-pressed", "audio-volume-change"};
    case Sounds::Tone::Saved:
        return {"complete", "dialog-information"};
    case Sounds::Tone::Refused:
        break;
    }
    return {"dialog-warning", "dialog-error"};
}

/// libcanberra, or nothing. It is never unloaded: its threads may outlast a context.
class Theme {
  public:
    Theme() {
        void* const library = dlopen("libcanberra.so.0", RTLD_NOW | RTLD_NODELETE);
        if (library == nullptr)
            return;
        const auto create = function<int (*)(void**)>(library, "ca_context_create");
        destroy_ = function<int (*)(void*)>(library, "ca_context_destroy");
        play_ = function<Play>(library, "ca_context_play");
        if (create == nullptr || destroy_ == nullptr || play_ == nullptr || create(&context_) != 0)
            context_ = nullptr;
    }
    ~Theme() {
        if (context_ != nullptr)
            destroy_(context_);
    }
    Theme(const Theme&) = delete;
    Theme& operator=(const Theme&) = delete;

    void play(Sounds::Tone tone) {
        for (const char* const event : eventsOf(tone))
            if (context_ == nullptr ||
                play_(context_, 0, "event.id", event, "media.role", "event", "canberra.cache-control",
                      "permanent", static_cast<const char*>(nullptr)) == 0)
                return;
    }

  private:
    using Play = int (*)(void* context, std::uint32_t id, ...);
    template <class Function>
    static Function function(void* library, const char* name) {
        return reinterpret_cast<Function>(dlsym(library, name));
    }
    void* context_ = nullptr;
    int (*destroy_)(void*) = nullptr;
    Play play_ = nullptr;
};

/// The library waits for the sound server. It is asked on a thread of its own, one tone at a time: what comes
/// meanwhile is heard too late to be of use, but for the last.
class ThemeSounds final : public Sounds {
  public:
    void play(Tone tone) noexcept override {
        try {
            const std::lock_guard lock(mutex_);
            wanted_ = tone;
            if (!player_.joinable())
                player_ = withoutSignals();
            asked_.notify_one();
        } catch (...) { // NOLINT: it is silent then
        }
    }

  private:
    /// The host's signals stay with the host's threads.
    std::jthread withoutSignals() {
        sigset_t all, before;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &before);
        std::jthread started;
        try {
            started = std::jthread([this](const std::stop_token& stop) { work(stop); });
        } catch (...) { // NOLINT: the next tone tries again
        }
        pthread_sigmask(SIG_SETMASK, &before, nullptr);
        return started;
    }

    void work(const std::stop_token& stop) {
        Theme theme;
        std::unique_lock lock(mutex_);
        while (asked_.wait(lock, stop, [this] { return wanted_.has_value(); })) {
            const Tone tone = *std::exchange(wanted_, std::nullopt);
            lock.unlock();
            theme.play(tone);
            lock.lock();
        }
    }

    std::mutex mutex_;
    std::condition_variable_any asked_;
    std::optional<Tone> wanted_;
    std::jthread player_; ///< the last to be made, the first to end
};

} // namespace

std::unique_ptr<Sounds> systemSounds() {
    return std::make_unique<ThemeSounds>();
}

} // namespace kova
