#include "services/sql_date_formatter.h"

#include "services/conversions.h"

#include <array>
#include <cstdio>

namespace kova {

std::string SqlDateFormatter::FormatSqlDate(const std::string& text) const {
    using namespace std::chrono;
    constexpr std::string_view endOfDay = " 23:59.59";
    std::string_view dateText = text;
    const bool lastSecond = dateText.ends_with(endOfDay);
    if (lastSecond)
        dateText.remove_suffix(endOfDay.size());
    const auto parsed = parseDate(dateText, regional_);
    if (!parsed)
        throw typeMismatch();
    const DateTime time = lastSecond ? floor<days>(*parsed) + 24h - 1s : *parsed;
    const year_month_day day(floor<days>(time));
    const hh_mm_ss clock(floor<seconds>(time - floor<days>(time)));
    std::array<char, 64> literal{};
    std::snprintf(literal.data(), literal.size(), "CONVERT(datetime,'%04d-%02u-%02uT%02d:%02d:%02d',126)",
                  static_cast<int>(day.year()), static_cast<unsigned>(day.month()),
                  static_cast<unsigned>(day.day()), static_cast<int>(clock.hours().count()),
                  static_cast<int>(clock.minutes().count()), static_cast<int>(clock.seconds().count()));
    return literal.data();
}

} // namespace kova
