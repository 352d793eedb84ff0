// Stands in for the system's sound library: slow, and with a theme that has no sound of buttons.
#include <chrono>
#include <cstdarg>
#include <cstdint>
#include <mutex>
#include <string>
#include <thread>

namespace {
std::mutex mutex;
std::string asked;
} // namespace

extern "C" {

int ca_context_create(void** context) {
    *context = &asked;
    return 0;
}

int ca_context_destroy(void*) {
    return 0;
}

int ca_context_play(void*, std::uint32_t id, ...) {
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    const std::lock_guard lock(mutex);
    std::va_list properties;
    va_start(properties, id);
    std::string name, event;
    while (const char* const key = va_arg(properties, const char*)) {
        name = key;
        const std::string value = va_arg(properties, const char*);
        if (name == "event.id")
            event = value;
    }
    va_end(properties);
    asked += event + ' ';
    return event == "button-pressed" ? -9 : 0;
}

/// What it was asked for so far.
void stand_in_asked(std::string& events) {
    const std::lock_guard lock(mutex);
    events = asked;
}
}
