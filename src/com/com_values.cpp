#include "com/com_values.h"

#include <cmath>
#include <new>
#include <utility>

namespace kova::com {
namespace {

constexpr std::chrono::local_days DayZero{std::chrono::year(1899) / 12 / 30};

} // namespace

std::wstring wide(std::string_view text) {
    const auto length = static_cast<int>(text.size());
    std::wstring result(
        static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, text.data(), length, nullptr, 0)), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), length, result.data(), static_cast<int>(result.size()));
    return result;
}

std::string narrow(std::wstring_view text) {
    const auto length = static_cast<int>(text.size());
    std::string result(static_cast<std::size_t>(WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr,
                                                                    0, nullptr, nullptr)),
                       '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), length, result.data(), static_cast<int>(result.size()),
                        nullptr, nullptr);
    return result;
}

std::string narrow(BSTR text) {
    return text == nullptr ? std::string() : narrow(std::wstring_view(text, SysStringLen(text)));
}

BSTR makeBstr(std::string_view text) {
    const std::wstring characters = wide(text);
    BSTR result = SysAllocStringLen(characters.data(), static_cast<UINT>(characters.size()));
    if (result == nullptr)
        throw std::bad_alloc();
    return result;
}

// Before day zero the days are negative while the time of day still counts forward.
std::optional<DateTime> dateTimeOf(DATE date) {
    using namespace std::chrono;
    constexpr double FirstDay = -657434, EndOfDays = 2958466; // of the years 100 to 9999
    using Days = duration<double, days::period>;
    constexpr microseconds Inexact{5}; // of a moment in a double
    if (!(date > FirstDay - 1 && date < EndOfDays))
        return std::nullopt;
    const double day = std::trunc(date);
    const auto time = floor<milliseconds>(round<microseconds>(Days(std::abs(date - day))) + Inexact);
    return DayZero + days(static_cast<int>(day)) + time;
}

Value::Value(DateTime time) : Value() {
    using namespace std::chrono;
    const auto day = floor<days>(time);
    const double fraction = duration<double, days::period>(time - day).count();
    const auto number = static_cast<double>((day - DayZero).count());
    variant_.vt = VT_DATE;
    variant_.date = number < 0 ? number - fraction : number + fraction;
}

ReferredText::~ReferredText() {
    if (text == before_)
        return;
    const std::wstring characters = wide(text);
    if (BSTR changed = SysAllocStringLen(characters.data(), static_cast<UINT>(characters.size())))
        SysFreeString(std::exchange(variable_, changed));
}

} // namespace kova::com
