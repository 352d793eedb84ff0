#include "documents/day_report_texts.h"

#include "services/conversions.h"

#include <algorithm>

namespace kova {

std::string moneyText(Decimal amount, const RegionalSettings& regional, Sign sign) {
    constexpr std::size_t LeastDecimals = 2;
    std::string digits = std::to_string(amount.unscaled);
    const bool negative = digits.front() == '-';
    digits.erase(0, negative ? 1 : 0);
    if (digits.size() <= amount.scale)
        digits.insert(0, amount.scale + 1 - digits.size(), '0');
    std::string decimals = digits.substr(digits.size() - amount.scale);
    digits.resize(digits.size() - amount.scale);
    while (decimals.size() > LeastDecimals && decimals.back() == '0')
        decimals.pop_back();
    decimals.resize(std::max(decimals.size(), LeastDecimals), '0');

    std::string text;
    if (amount.unscaled != 0 && (negative || sign == Sign::Always))
        text = negative ? "\u2212" : "+";
    for (std::size_t i = 0; i < digits.size(); ++i) {
        if (i > 0 && (digits.size() - i) % 3 == 0)
            text += regional.groupSeparator;
        text += digits[i];
    }
    return text + regional.decimalSeparator + decimals;
}

std::string timeOfDayText(DateTime time, const RegionalSettings& regional) {
    using namespace std::chrono;
    const hh_mm_ss clock(floor<minutes>(time - floor<days>(time)));
    const auto hour = clock.hours().count();
    const std::string rest = regional.timeSeparator + twoDigits(clock.minutes().count());
    if (!regional.twelveHours)
        return twoDigits(hour) + rest;
    return std::to_string(hour % 12 == 0 ? 12 : hour % 12) + rest + (hour < 12 ? " AM" : " PM");
}

} // namespace kova
