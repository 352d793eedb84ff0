#include "adapters/odbc/decimal_text.h"

#include <charconv>
#include <string>

namespace kova {
namespace {

constexpr std::size_t largestScale = 18;

bool allDigits(std::string_view text) {
    return text.find_first_not_of("0123456789") == std::string_view::npos;
}

} // namespace

Value decimalFromText(std::string_view text) {
    const bool negative = text.starts_with('-');
    const std::string_view number = text.substr(negative || text.starts_with('+') ? 1 : 0);
    const auto point = number.find('.');
    const std::string_view whole = number.substr(0, point);
    std::string_view fraction = point == std::string_view::npos ? "" : number.substr(point + 1);
    if (whole.empty() && fraction.empty())
        return text;
    if (!allDigits(whole) || !allDigits(fraction))
        return text;
    while (fraction.size() > largestScale && fraction.ends_with('0'))
        fraction.remove_suffix(1);
    std::string digits = negative ? "-" : "";
    digits.append(whole).append(fraction);

    std::int64_t unscaled = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), unscaled);
    if (read.ec != std::errc() || fraction.size() > largestScale)
        return LongDecimal{negative ? text : number};
    return Decimal{unscaled, static_cast<std::uint8_t>(fraction.size())};
}

} // namespace kova
