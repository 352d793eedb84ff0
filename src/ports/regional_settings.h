#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace kova {

/// How one region writes numbers, dates and times. Texts are UTF-8.
struct RegionalSettings {
    enum class DateOrder { DayMonthYear, MonthDayYear, YearMonthDay };

    std::string name = "it-IT"; ///< BCP 47 language tag
    std::string decimalSeparator = ",";
    std::string groupSeparator = ".";
    std::string currencySymbol = "€";
    std::string listSeparator = ";"; ///< between the fields of a list, as in a CSV file
    DateOrder dateOrder = DateOrder::DayMonthYear;
    std::string dateSeparator = "/";
    std::string timeSeparator = ":";
    bool twoDigitDayAndMonth = true; ///< 05/02/2026 rather than 5/2/2026
    bool twelveHours = false;        ///< 2:05:00 PM rather than 14:05:00
    std::string beforeNoon = "AM";
    std::string afterNoon = "PM";
    std::size_t groupSize = 3; ///< digits before the decimal separator that make a group; 0 for no groups
    std::size_t furtherGroupSize = 3; ///< and of each group left of it; 0 for no more groups

    /// Whether a group separator stands left of the last `digits` digits of a longer whole number.
    [[nodiscard]] bool separatesAt(std::size_t digits) const {
        if (groupSize == 0 || digits <= groupSize)
            return groupSize > 0 && digits == groupSize;
        return furtherGroupSize > 0 && (digits - groupSize) % furtherGroupSize == 0;
    }

    friend bool operator==(const RegionalSettings&, const RegionalSettings&) = default;
};

/// Settings of a region by its tag, letter case and "_" for "-" aside: it-IT, it-CH, de-DE, de-CH, de-AT,
/// en-US, en-GB, fr-CH. Nothing for any other.
std::optional<RegionalSettings> regionalSettings(std::string_view name);

} // namespace kova
