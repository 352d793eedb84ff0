#include "player/trace.h"

#include <array>
#include <charconv>
#include <cmath>

namespace kova {

std::string traced(std::string_view text) {
    std::string result = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\')
            (result += '\\') += c;
        else if (c == '\n')
            result += "\\n";
        else if (c == '\r')
            result += "\\r";
        else if (c == '\t')
            result += "\\t";
        else
            result += c;
    }
    return result + '"';
}

std::string traced(double number) {
    // An exponent only where writing the digits out would hide more than it shows.
    const double size = std::fabs(number);
    const bool writtenOut = size == 0 || (size >= 1e-6 && size < 1e21);
    const auto format = writtenOut ? std::chars_format::fixed : std::chars_format::scientific;
    std::array<char, 64> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, format).ptr;
    return {buffer.data(), end};
}

std::string traced(const Rect& rect) {
    return traced(rect.left.count) + "," + traced(rect.top.count) + "," + traced(rect.width.count) + "," +
           traced(rect.height.count);
}

std::string traced(Color color) {
    return traced(color.toInteger());
}

std::string tracedVariant(const Variant& value) {
    return std::visit(
        [](const auto& held) -> std::string {
            using Held = std::decay_t<decltype(held)>;
            if constexpr (std::is_arithmetic_v<Held> || std::same_as<Held, std::string>)
                return traced(held);
            else
                return {};
        },
        value);
}

} // namespace kova
