#include "services/conversions.h"

#include "platform/overloaded.h"

#include <cmath>

namespace kova {
namespace {

std::string exactText(Decimal decimal, const RegionalSettings& regional) {
    std::string digits = std::to_string(decimal.unscaled);
    const bool negative = digits.front() == '-';
    digits.erase(0, negative ? 1 : 0);
    if (digits.size() <= decimal.scale)
        digits.insert(0, decimal.scale + 1 - digits.size(), '0');
    std::string fraction = digits.substr(digits.size() - decimal.scale);
    digits.resize(digits.size() - decimal.scale);
    fraction.erase(fraction.find_last_not_of('0') + 1);
    return (negative ? "-" : "") + digits + (fraction.empty() ? "" : regional.decimalSeparator + fraction);
}

double numberOf(Decimal decimal) {
    return static_cast<double>(decimal.unscaled) / std::pow(10.0, decimal.scale);
}

} // namespace

std::string asText(const Value& value, const RegionalSettings& regional) {
    return std::visit(Overloaded{[](Null) { return std::string(); },
                                 [](bool v) { return std::string(v ? "True" : "False"); },
                                 [](std::int64_t v) { return std::to_string(v); },
                                 [&](double v) { return toText(v, regional); },
                                 [&](Decimal v) { return exactText(v, regional); },
                                 [](std::string_view v) { return std::string(v); },
                                 [&](DateTime v) { return generalDate(v, regional); }},
                      value);
}

Value NullToDefault(const Value& value, const Value& fallback) {
    return std::holds_alternative<Null>(value) ? fallback : value;
}

double asDouble(const Value& value, const RegionalSettings& regional) {
    return std::visit(Overloaded{[](Null) -> double { throw typeMismatch(); },
                                 [](bool v) { return v ? -1.0 : 0.0; },
                                 [](std::int64_t v) { return static_cast<double>(v); },
                                 [](double v) { return v; }, [](Decimal v) { return numberOf(v); },
                                 [&](std::string_view v) { return toDouble(v, regional); },
                                 [](DateTime) -> double { throw typeMismatch(); }},
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
        return isNumeric(*text, regional) && toDouble(*text, regional) == number;
    return asDouble(value, regional) == number;
}

} // namespace kova
