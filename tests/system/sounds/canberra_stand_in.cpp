// Stands in for the system's sound library: slow, and with a theme that has no sound of buttons.
#include <chrono>
#include <cstdarg>
#include <cstdint>
#include <string>
#include <thread>

extern "C" {

std::string stand_in_asked;

int ca_context_create(void** context) {
    *context = &stand_in_asked;
    return 0;
}

int ca_context_destroy(void*) {
    return 0;
}

int ca_context_play(void*, std::uint32_t id, ...) {
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    std::va_list properties;
    va_start(properties, id);
    const std::string name = va_arg(properties, const char*);
    const std::string event = va_arg(properties, const char*);
    va_end(properties);
    stand_in_asked += name + '=' + event + ' ';
    return event == "button-pressed" ? -9 : 0;
}
}
