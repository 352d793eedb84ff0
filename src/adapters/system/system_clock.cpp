#include "adapters/system/system_clock.h"

#include <ctime>

namespace kova {

DateTime SystemClock::now() const {
    using namespace std::chrono;
    const auto utc = floor<milliseconds>(system_clock::now());
    const std::time_t seconds = system_clock::to_time_t(utc);
    std::tm local{};
    if (localtime_r(&seconds, &local) == nullptr)
        return DateTime(utc.time_since_epoch());
    return DateTime(utc.time_since_epoch() + std::chrono::seconds(local.tm_gmtoff));
}

} // namespace kova
