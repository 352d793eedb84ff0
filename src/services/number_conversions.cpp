#include "services/conversions.h"

#include "base/numbered_errors.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <vector>

namespace kova {
namespace {

enum class Reading { Number, NoNumber, OutOfRange };
struct Parsed {
    Reading reading = Reading::NoNumber;
    double number{};
};

/// Reads a number off a text from left to right, collecting its plain form for the standard parser.
class NumberParser {
  public:
    NumberParser(std::string_view text, const RegionalSettings& regional)
        : rest_(text), regional_(regional) {}

    Parsed parse() {
        bool signTaken = false;
        bool symbolTaken = false;
        do
            takeBlanks();
        while ((!signTaken && (signTaken = takeSign())) ||
               (!symbolTaken && (symbolTaken = take(regional_.currencySymbol))));
        if (!takeWhole())
            return {};
        if (take(regional_.decimalSeparator)) {
            plain_ += '.';
            takeDigits();
        }
        if (digits_ == 0 || !takeExponent())
            return {};
        do
            takeBlanks();
        while (!symbolTaken && (symbolTaken = take(regional_.currencySymbol)));
        return rest_.empty() ? evaluate() : Parsed{};
    }

  private:
    bool take(std::string_view piece) {
        if (piece.empty() || !rest_.starts_with(piece))
            return false;
        rest_.remove_prefix(piece.size());
        return true;
    }

    void takeBlanks() { rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t"), rest_.size())); }

    bool takeSign() {
        if (take("-"))
            plain_ += '-';
        else if (!take("+"))
            return false;
        return true;
    }

    std::size_t takeDigits() {
        const auto count = std::min(rest_.find_first_not_of("0123456789"), rest_.size());
        plain_ += rest_.substr(0, count);
        rest_.remove_prefix(count);
        digits_ += count;
        return count;
    }

    /// Digits in one run, or in the region's groups, of which the first begins with no zero. False for other
    /// groups: a group separator typed for a decimal one must not make an amount a hundred or, as in 0.500,
    /// a thousand times as large.
    bool takeWhole() {
        const bool beginsWithZero = rest_.starts_with('0');
        std::vector<std::size_t> marks; ///< digits before each separator
        while (takeDigits() > 0 && takeGroupSeparator())
            marks.push_back(digits_);
        if (marks.empty())
            return true;
        for (std::size_t i = 1; i <= digits_; ++i)
            if (std::ranges::binary_search(marks, i) != (i < digits_ && regional_.separatesAt(digits_ - i)))
                return false;
        return !beginsWithZero;
    }

    bool takeGroupSeparator() {
        return take(regional_.groupSeparator) || (regional_.groupSeparator == "’" && take("'"));
    }

    bool takeExponent() {
        if (!take("e") && !take("E"))
            return true;
        plain_ += 'e';
        if (take("-")) {
            plain_ += '-';
            negativeExponent_ = true;
        } else {
            (void)take("+");
        }
        return takeDigits() > 0;
    }

    [[nodiscard]] Parsed evaluate() const {
        double number{};
        const auto result = std::from_chars(plain_.data(), plain_.data() + plain_.size(), number);
        if (result.ec == std::errc::result_out_of_range)
            return {wholeIsZero() || negativeExponent_ ? Reading::Number : Reading::OutOfRange, 0};
        return {Reading::Number, number};
    }

    /// As in 0,001: what is out of range then is too small, not too large.
    [[nodiscard]] bool wholeIsZero() const {
        return plain_.find_first_of("123456789") >= plain_.find_first_of(".e");
    }

    std::string_view rest_;
    const RegionalSettings& regional_;
    std::string plain_;
    std::size_t digits_ = 0;
    bool negativeExponent_ = false;
};

/// The plain numbers that most texts are, as -12,5: exact, since a double holds 15 digits and powers of ten
/// up to 10^22. Nothing for any other text.
std::optional<double> parsePlain(std::string_view text, const RegionalSettings& regional) {
    constexpr std::size_t MostDigits = std::numeric_limits<double>::digits10;
    static constexpr std::array<double, MostDigits + 1> Powers{1,   1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                               1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    const bool negative = text.starts_with('-');
    text.remove_prefix(negative ? 1 : 0);
    std::int64_t digits = 0;
    std::size_t count = 0, decimals = 0;
    bool inFraction = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] >= '0' && text[i] <= '9' && count < MostDigits) {
            digits = digits * 10 + (text[i] - '0');
            ++count;
            decimals += inFraction ? 1 : 0;
        } else if (!inFraction && regional.decimalSeparator == text.substr(i, 1)) {
            inFraction = true;
        } else {
            return std::nullopt;
        }
    }
    if (count == 0)
        return std::nullopt;
    const double number = static_cast<double>(digits) / Powers[decimals];
    return negative ? -number : number;
}

Parsed parse(std::string_view text, const RegionalSettings& regional) {
    if (const auto plain = parsePlain(text, regional))
        return {Reading::Number, *plain};
    return NumberParser(text, regional).parse();
}

template <class Integer>
Integer rounded(double number) {
    // The processor's default rounding is half to even, as the shops' earlier programs rounded.
    const double whole = std::nearbyint(number);
    if (!(whole >= std::numeric_limits<Integer>::min() && whole <= std::numeric_limits<Integer>::max()))
        throw overflow();
    return static_cast<Integer>(whole);
}

} // namespace

std::optional<double> parseNumber(std::string_view text, const RegionalSettings& regional) {
    const Parsed parsed = parse(text, regional);
    return parsed.reading == Reading::Number ? std::optional(parsed.number) : std::nullopt;
}

bool isNumeric(std::string_view text, const RegionalSettings& regional) {
    return parse(text, regional).reading == Reading::Number;
}

double toDouble(std::string_view text, const RegionalSettings& regional) {
    const Parsed parsed = parse(text, regional);
    switch (parsed.reading) {
    case Reading::Number:
        return parsed.number;
    case Reading::OutOfRange:
        throw overflow();
    case Reading::NoNumber:
        break;
    }
    throw typeMismatch();
}

std::int32_t toInt32(double number) {
    return rounded<std::int32_t>(number);
}

std::int16_t toInt16(double number) {
    return rounded<std::int16_t>(number);
}

std::int32_t toInt32(std::string_view text, const RegionalSettings& regional) {
    return toInt32(toDouble(text, regional));
}

std::int16_t toInt16(std::string_view text, const RegionalSettings& regional) {
    return toInt16(toDouble(text, regional));
}

std::int32_t keyToId(std::string_view key, const RegionalSettings& regional) {
    const double number = toDouble(key, regional);
    if (number != std::floor(number))
        throw typeMismatch();
    return toInt32(number);
}

std::string toText(double number, const RegionalSettings& regional) {
    // Most amounts have up to four decimals, and are written much faster as what they are.
    constexpr double MoneyUnits = 1e4;
    constexpr std::uint8_t MoneyScale = 4;
    constexpr double Largest = 1e11; // 15 digits
    const double units = std::round(number * MoneyUnits);
    if (std::fabs(number) < Largest && units / MoneyUnits == number)
        return toText(Decimal{static_cast<std::int64_t>(units), MoneyScale}, regional);

    constexpr int SignificantDigits = 15;
    std::array<char, 64> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number,
                                   std::chars_format::general, SignificantDigits)
                         .ptr;
    std::string text(buffer.data(), end);
    std::ranges::replace(text, 'e', 'E');
    if (const auto point = text.find('.'); point != std::string::npos)
        text.replace(point, 1, regional.decimalSeparator);
    return text;
}

std::string toText(Decimal number, const RegionalSettings& regional) {
    std::array<char, 24> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number.unscaled).ptr;
    std::string text(buffer.data(), end);
    const std::size_t scale = number.scale;
    const std::size_t sign = text.front() == '-' ? 1 : 0;
    if (text.size() - sign <= scale)
        text.insert(sign, scale + 1 - (text.size() - sign), '0');
    const std::size_t whole = text.size() - scale;
    text.erase(std::max(text.find_last_not_of('0') + 1, whole));
    if (text.size() > whole)
        text.insert(whole, regional.decimalSeparator);
    return text;
}

std::string toText(LongDecimal number, const RegionalSettings& regional) {
    std::string text(number.digits);
    if (const auto point = text.find('.'); point != std::string::npos) {
        const auto last = text.find_last_not_of('0');
        text.erase(last == point ? point : last + 1);
        if (text.size() > point)
            text.replace(point, 1, regional.decimalSeparator);
        if (point == (text.starts_with('-') ? 1U : 0U))
            text.insert(point, 1, '0');
    }
    return text;
}

char32_t NumericKeyFilter(char32_t character, const NumericKeys& allowed) {
    const auto keepIf = [character](bool keep) { return keep ? character : U'\0'; };
    switch (character) {
    case U'.':
    case U',':
        return allowed.decimals ? U',' : U'\0';
    case U'-':
    case U'+':
        return keepIf(allowed.sign);
    case U'\'':
        return keepIf(allowed.grouping);
    case U'e':
    case U'E':
        return keepIf(allowed.exponent);
    case U'%':
        return keepIf(allowed.percent);
    case U' ':
        return keepIf(allowed.blanks);
    default:
        return keepIf(character < U' ' || (character >= U'0' && character <= U'9'));
    }
}

} // namespace kova
