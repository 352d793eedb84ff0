#include "services/number_format.h"

#include "services/currency_decimals.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace kova {
namespace {

constexpr int SignificantDigits = 15;
constexpr int MostDecimals = 15;

/// A number's decimal digits without sign, and how many of them stand before the point.
struct Digits {
    std::string digits;
    int beforePoint;
};

/// Of a text in scientific notation, as 1.25e+02.
Digits digitsOf(const std::string& text) {
    const auto e = text.find('e');
    int exponent{};
    const char* sign = text.data() + e + 1;
    std::from_chars(*sign == '+' ? sign + 1 : sign, text.data() + text.size(), exponent);
    return {text[0] + (e > 1 ? text.substr(2, e - 2) : ""), exponent + 1};
}

template <class... Precision>
std::string scientific(double value, Precision... precision) {
    std::array<char, 64> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::fabs(value),
                                   std::chars_format::scientific, precision...)
                         .ptr;
    return {buffer.data(), end};
}

// 15 significant digits: 1.005 is meant to be exactly that, though the double is a little less.
Digits decimalDigits(double value) {
    return digitsOf(scientific(value, SignificantDigits - 1));
}

/// Cuts to `places` digits after the point, rounding half away from zero, and pads with zeros.
void roundTo(Digits& number, int places) {
    const int leadingZeros = std::max(1 - number.beforePoint, 0);
    number.digits.insert(0, static_cast<std::size_t>(leadingZeros), '0');
    number.beforePoint += leadingZeros;
    const auto wanted = static_cast<std::size_t>(number.beforePoint) + static_cast<std::size_t>(places);
    const bool up = number.digits.size() > wanted && number.digits[wanted] >= '5';
    number.digits.resize(wanted, '0');
    if (!up)
        return;
    auto digit = number.digits.rbegin();
    for (; digit != number.digits.rend() && *digit == '9'; ++digit)
        *digit = '0';
    if (digit != number.digits.rend()) {
        ++*digit;
    } else {
        number.digits.insert(0, 1, '1');
        ++number.beforePoint;
    }
}

std::string grouped(Digits number, int places, bool negative, const RegionalSettings& regional) {
    roundTo(number, places);
    const bool zero = number.digits.find_first_not_of('0') == std::string::npos;

    const auto whole = static_cast<std::size_t>(number.beforePoint);
    std::string result = groupedDigits(std::string_view(number.digits).substr(0, whole), regional);
    if (places > 0)
        result += regional.decimalSeparator + number.digits.substr(whole);
    return (negative && !zero ? "-" : "") + result;
}

} // namespace

std::string groupedDigits(std::string_view digits, const RegionalSettings& regional) {
    std::string result;
    for (std::size_t i = 0; i < digits.size(); ++i) {
        if (i > 0 && regional.separatesAt(digits.size() - i))
            result += regional.groupSeparator;
        result += digits[i];
    }
    return result;
}

std::string NumberFormat::FormatAmount(const double& value, const std::int16_t& decimals) const {
    const int places = std::clamp<int>(decimals, 0, MostDecimals);
    return grouped(decimalDigits(value), places, value < 0, regional_);
}

std::string NumberFormat::FormatExactly(const double& value) const {
    return formatExactly(value, std::clamp<int>(amountDecimals_, 0, MostDecimals));
}

std::string NumberFormat::formatExactly(double value, int leastDecimals) const {
    constexpr int MostPlaces = 20;
    std::string text = scientific(value);
    const Digits number = digitsOf(text);
    const int needed = static_cast<int>(number.digits.size()) - number.beforePoint;
    if (number.beforePoint <= SignificantDigits && needed <= MostPlaces)
        return grouped(number, std::max(needed, leastDecimals), value < 0, regional_);
    if (const auto point = text.find('.'); point != std::string::npos)
        text.replace(point, 1, regional_.decimalSeparator);
    return (value < 0 ? "-" : "") + text;
}

std::string NumberFormat::formatAsNeeded(double value, int mostDecimals) const {
    std::int16_t decimals = amountDecimals_;
    Digits number = decimalDigits(value);
    roundTo(number, mostDecimals);
    const auto lastDigit = number.digits.find_last_not_of('0');
    if (lastDigit != std::string::npos)
        decimals = static_cast<std::int16_t>(
            std::max(int{decimals}, static_cast<int>(lastDigit) + 1 - number.beforePoint));
    return FormatAmount(value, decimals);
}

std::string NumberFormat::FormatValue(const double& value) const {
    constexpr int SmallestCoinDecimals = 2;
    return formatAsNeeded(value, SmallestCoinDecimals);
}

std::string NumberFormat::FormatSum(const double& value) const {
    constexpr int MoneyDecimals = 4;
    return formatAsNeeded(value, MoneyDecimals);
}

// Lists have many amounts, and most are whole ten-thousandths of a few digits.
std::string NumberFormat::FormatMoney(double value, std::string_view currency) const {
    constexpr double Units = 10'000;
    constexpr double Most = 1e15;
    constexpr std::size_t UnitDigits = 4;
    const auto decimals = static_cast<std::size_t>(decimalsOf(currency));
    const double units = std::round(std::fabs(value) * Units);
    if (!(units < Most) || units / Units != std::fabs(value))
        return formatExactly(value, static_cast<int>(decimals));
    std::string digits = std::to_string(static_cast<std::int64_t>(units));
    digits.insert(0, UnitDigits + 1 - std::min(UnitDigits + 1, digits.size()), '0');
    const std::size_t whole = digits.size() - UnitDigits;
    const std::size_t needed = std::max(digits.find_last_not_of('0') + 1, whole + decimals);
    std::string text = value < 0 && units > 0 ? "-" : "";
    text += groupedDigits(std::string_view(digits).substr(0, whole), regional_);
    if (needed > whole)
        text.append(regional_.decimalSeparator).append(digits, whole, needed - whole);
    return text;
}

} // namespace kova
