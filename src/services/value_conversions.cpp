#include "services/conversions.h"

#include "base/numbered_errors.h"
#include "base/overloaded.h"

#include <charconv>
#include <cmath>

namespace kova {
namespace {

double numberOf(Decimal decimal) {
    return static_cast<double>(decimal.unscaled) / std::pow(10.0, decimal.scale);
}

double numberOf(LongDecimal decimal) {
    double number{}; // of 38 digits at most: never out of range
    std::from_chars(decimal.digits.data(), decimal.digits.data() + decimal.digits.size(), number);
    return number;
}

} // namespace

std::string asText(const Value& value, const RegionalSettings& regional) {
    std::string text;
    appendText(text, value, regional);
    return text;
}

void appendText(std::string& text, const Value& value, const RegionalSettings& regional) {
    std::visit(Overloaded{[](Null) {}, [&](bool v) { text += v ? "True" : "False"; },
                          [&](std::int64_t v) { text += std::to_string(v); },
                          [&](double v) { text += toText(v, regional); },
                          [&](Decimal v) { text += toText(v, regional); },
                          [&](std::string_view v) { text += v; },
                          [&](DateTime v) { appendGeneralDate(text, v, regional); },
                          [&](LongDecimal v) { text += toText(v, regional); }},
               value);
}

Value NullToDefault(const Value& value, const Value& fallback) {
    return std::holds_alternative<Null>(value) ? fallback : value;
}

double asDouble(const Value& value, const RegionalSettings& regional) {
    return std::visit(
        Overloaded{
            [](Null) -> double { throw typeMismatch(); }, [](bool v) { return v ? -1.0 : 0.0; },
            [](std::int64_t v) { return static_cast<double>(v); }, [](double v) { return v; },
            [](Decimal v) { return numberOf(v); }, [&](std::string_view v) { return toDouble(v, regional); },
            [](DateTime) -> double { throw typeMismatch(); }, [](LongDecimal v) { return numberOf(v); }},
        value);
}

bool asBoolean(const Value& value, const RegionalSettings& regional) {
    if (const auto* text = std::get_if<std::string_view>(&value)) {
        if (*text == "True" || *text == "False")
            return *text == "True";
    }
    return asDouble(value, regional) != 0;
}

std::int32_t asInt32(const Value& value, const RegionalSettings& regional) {
    return toInt32(asDouble(value, regional));
}

bool equalsNumber(const Value& value, double number, const RegionalSettings& regional) {
    if (std::holds_alternative<Null>(value) || std::holds_alternative<DateTime>(value))
        return false;
    if (const auto* text = std::get_if<std::string_view>(&value))
        return parseNumber(*text, regional) == number;
    return asDouble(value, regional) == number;
}

} // namespace kova
