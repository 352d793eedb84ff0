#pragma once
#include <algorithm>
#include <string_view>

namespace kova {

// Names, keys and numbers of machines, which are ASCII: the C library's own functions follow the locale that
// the host has set.

constexpr char lowered(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

constexpr bool equalIgnoringCase(std::string_view a, std::string_view b) {
    return std::ranges::equal(a, b, {}, lowered, lowered);
}

/// Without the blanks and line ends around it.
constexpr std::string_view trimmed(std::string_view text) {
    constexpr std::string_view Blanks = " \t\r\n";
    const auto first = std::min(text.find_first_not_of(Blanks), text.size());
    return text.substr(first, text.find_last_not_of(Blanks) + 1 - first);
}

} // namespace kova
