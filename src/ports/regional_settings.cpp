#include "ports/regional_settings.h"

#include "base/ascii_text.h"

#include <algorithm>
#include <array>

namespace kova {
namespace {

using Order = RegionalSettings::DateOrder;

// The conventions of the Unicode CLDR; Switzerland groups with U+2019.
const std::array<RegionalSettings, 8>& regions() {
    static const std::array<RegionalSettings, 8> all{{
        {"it-IT", ",", ".", "€", ";", Order::DayMonthYear, "/", ":", true, false},
        {"de-DE", ",", ".", "€", ";", Order::DayMonthYear, ".", ":", true, false},
        {"de-CH", ".", "’", "CHF", ";", Order::DayMonthYear, ".", ":", true, false},
        {"en-US", ".", ",", "$", ",", Order::MonthDayYear, "/", ":", false, true},
        {"en-GB", ".", ",", "£", ",", Order::DayMonthYear, "/", ":", true, false},
        {"it-CH", ".", "’", "CHF", ";", Order::DayMonthYear, ".", ":", true, false},
        {"de-AT", ",", ".", "€", ";", Order::DayMonthYear, ".", ":", true, false},
        {"fr-CH", ".", "’", "CHF", ";", Order::DayMonthYear, ".", ":", true, false},
    }};
    return all;
}

char canonical(char c) {
    return c == '_' ? '-' : lowered(c);
}

} // namespace

std::optional<RegionalSettings> regionalSettings(std::string_view name) {
    for (const auto& region : regions())
        if (std::equal(region.name.begin(), region.name.end(), name.begin(), name.end(),
                       [](char a, char b) { return canonical(a) == canonical(b); }))
            return region;
    return std::nullopt;
}

} // namespace kova
