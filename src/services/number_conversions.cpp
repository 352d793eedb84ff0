#include "services/conversions.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace kova {
namespace {

enum class Reading { Number, NoNumber, OutOfRange };
struct Parsed {
    Reading reading = Reading::NoNumber;
    double number = 0;
};

/// Reads a number off a text from left to right, collecting its plain form for the standard parser.
class NumberParser {
  public:
    NumberParser(std::string_view text, const RegionalSettings& regional)
        : rest_(text), regional_(regional) {}

    Parsed parse() {
        bool signTaken = false;
        bool symbolTaken = false;
        while (takeBlanks() || (!signTaken && (signTaken = takeSign())) ||
               (!symbolTaken && (symbolTaken = take(regional_.currencySymbol)))) {
        }
        if (!takeWhole())
            return {};
        if (take(regional_.decimalSeparator)) {
            plain_ += '.';
            takeDigits();
        }
        if (digits_ == 0 || !takeExponent())
            return {};
        while (takeBlanks() || (!symbolTaken && (symbolTaken = take(regional_.currencySymbol)))) {
        }
        return rest_.empty() ? evaluate() : Parsed{};
    }

  private:
    bool take(std::string_view piece) {
        if (piece.empty() || !rest_.starts_with(piece))
            return false;
        rest_.remove_prefix(piece.size());
        return true;
    }

    bool takeBlanks() {
        const auto blanks = std::min(rest_.find_first_not_of(" \t"), rest_.size());
        rest_.remove_prefix(blanks);
        return blanks > 0;
    }

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

    /// Digits in one run, or in groups of three behind a first one of one to three. False for other groups:
    /// a group separator typed for a decimal one must not make an amount a hundred times as large.
    bool takeWhole() {
        std::size_t group = takeDigits();
        wholeIsZero_ = plain_.find_first_of("123456789") == std::string::npos;
        if (group > 3)
            return !takeGroupSeparator();
        while (group > 0 && takeGroupSeparator()) {
            group = takeDigits();
            if (group != 3)
                return false;
            wholeIsZero_ = plain_.find_first_of("123456789") == std::string::npos;
        }
        return true;
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
        double number = 0;
        const auto result = std::from_chars(plain_.data(), plain_.data() + plain_.size(), number);
        if (result.ec == std::errc::result_out_of_range)
            return negativeExponent_ || wholeIsZero_ ? Parsed{Reading::Number, 0}
                                                     : Parsed{Reading::OutOfRange, 0};
        return {Reading::Number, number};
    }

    std::string_view rest_;
    const RegionalSettings& regional_;
    std::string plain_;
    std::size_t digits_ = 0;
    bool wholeIsZero_ = true;
    bool negativeExponent_ = false;
};

template <class Integer>
Integer rounded(double number) {
    // The processor's default rounding is half to even, as the shops' earlier programs rounded.
    const double whole = std::nearbyint(number);
    if (!(whole >= std::numeric_limits<Integer>::min() && whole <= std::numeric_limits<Integer>::max()))
        throw overflow();
    return static_cast<Integer>(whole);
}

} // namespace

bool isNumeric(std::string_view text, const RegionalSettings& regional) {
    return NumberParser(text, regional).parse().reading == Reading::Number;
}

double toDouble(std::string_view text, const RegionalSettings& regional) {
    const Parsed parsed = NumberParser(text, regional).parse();
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
    constexpr int significantDigits = 15;
    std::array<char, 64> buffer{};
    const double shown = number == 0 ? 0 : number; // no "-0"
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), shown,
                                   std::chars_format::general, significantDigits)
                         .ptr;
    std::string text(buffer.data(), end);
    std::ranges::replace(text, 'e', 'E');
    if (const auto point = text.find('.'); point != std::string::npos)
        text.replace(point, 1, regional.decimalSeparator);
    return text;
}

} // namespace kova
