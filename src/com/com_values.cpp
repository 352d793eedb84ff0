#include "com/com_values.h"

#include <array>
#include <cmath>
#include <new>
#include <type_traits>
#include <utility>

namespace kova::com {
namespace {

constexpr std::chrono::local_days DayZero{std::chrono::year(1899) / 12 / 30};

/// Asks for the length first, unless the longest result has room anyway. ASCII is the same in both.
template <class Character, class Text, class Convert>
std::basic_string<Character> converted(const Text& text, std::size_t longest, const Convert& convert) {
    std::array<Character, 256> room;
    if (longest <= room.size()) {
        std::size_t plain = 0;
        for (; plain < text.size() &&
               static_cast<std::make_unsigned_t<typename Text::value_type>>(text[plain]) < 0x80;
             ++plain)
            room[plain] = static_cast<Character>(text[plain]);
        return {room.data(), plain == text.size() ? plain : convert(room.data(), room.size())};
    }
    std::basic_string<Character> result(convert(nullptr, 0), Character());
    convert(result.data(), result.size());
    return result;
}

} // namespace

std::wstring wide(std::string_view text) {
    const auto convert = [&](wchar_t* room, std::size_t size) {
        return static_cast<std::size_t>(MultiByteToWideChar(
            CP_UTF8, 0, text.data(), static_cast<int>(text.size()), room, static_cast<int>(size)));
    };
    return converted<wchar_t>(text, text.size(), convert);
}

std::string narrow(std::wstring_view text) {
    constexpr std::size_t MostBytes = 3; // of one of UTF-16's units
    const auto convert = [&](char* room, std::size_t size) {
        return static_cast<std::size_t>(WideCharToMultiByte(CP_UTF8, 0, text.data(),
                                                            static_cast<int>(text.size()), room,
                                                            static_cast<int>(size), nullptr, nullptr));
    };
    return converted<char>(text, text.size() * MostBytes, convert);
}

std::string narrow(BSTR text) {
    return text == nullptr ? std::string() : narrow(std::wstring_view(text, SysStringLen(text)));
}

BSTR makeBstr(std::string_view text) {
    return makeBstr(wide(text));
}

BSTR makeBstr(std::wstring_view text) {
    BSTR result = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
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
