#include "adapters/system/system_regional_settings.h"

#include <algorithm>

namespace kova {
namespace {

std::string plainFormat(std::string_view format) {
    if (format == "%D")
        return "%m/%d/%y";
    if (format == "%F")
        return "%Y-%m-%d";
    return std::string(format);
}

} // namespace

void applyDateFormat(RegionalSettings& settings, std::string_view format) {
    const std::string pattern = plainFormat(format);
    const auto position = [&](const char* letters) {
        const auto at = pattern.find_first_of(letters);
        return at == std::string::npos ? pattern.size() : at;
    };
    const auto day = position("de");
    const auto month = position("m");
    const auto year = position("yY");
    // Behind the first field: before it a "-" may be a flag, as in "%-d".
    const auto separator = pattern.find_first_of("/.-", std::min({day, month, year}));
    if (std::max({day, month, year}) == pattern.size() || separator == std::string::npos)
        return;
    using Order = RegionalSettings::DateOrder;
    settings.dateOrder = year < day    ? Order::YearMonthDay
                         : day < month ? Order::DayMonthYear
                                       : Order::MonthDayYear;
    settings.dateSeparator = std::string(1, pattern[separator]);
    settings.twoDigitDayAndMonth = day > 0 && pattern.substr(day - 1, 2) == "%d";
}

} // namespace kova
