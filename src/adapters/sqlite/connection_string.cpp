#include "adapters/sqlite/connection_string.h"

#include <algorithm>

namespace kova {
namespace {

constexpr std::string_view blanks = " \t\r\n";

std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

bool isKey(std::string_view text, std::string_view smallLetters) {
    return std::equal(text.begin(), text.end(), smallLetters.begin(), smallLetters.end(),
                      [](char c, char small) {
                          return (c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c) == small;
                      });
}

/// Takes everything up to the mark off the front, and the mark.
std::string_view takeUntil(std::string_view& rest, char mark) {
    const auto end = rest.find(mark);
    const auto taken = rest.substr(0, end);
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    return taken;
}

std::string takeValue(std::string_view& rest) {
    rest.remove_prefix(std::min(rest.find_first_not_of(blanks), rest.size()));
    if (rest.empty() || (rest.front() != '"' && rest.front() != '\''))
        return std::string(trimmed(takeUntil(rest, ';')));
    const char quote = rest.front();
    rest.remove_prefix(1);
    std::string value(takeUntil(rest, quote));
    while (!rest.empty() && rest.front() == quote) { // doubled: a quote that belongs to the value
        rest.remove_prefix(1);
        value += quote;
        value += takeUntil(rest, quote);
    }
    takeUntil(rest, ';');
    return value;
}

} // namespace

std::optional<std::string> connectionStringValue(std::string_view connectionString, std::string_view key) {
    std::optional<std::string> result;
    while (!connectionString.empty()) {
        const auto mark = connectionString.find_first_of("=;");
        if (mark == std::string_view::npos)
            break;
        const bool hasValue = connectionString[mark] == '=';
        const auto name = trimmed(connectionString.substr(0, mark));
        connectionString.remove_prefix(mark + 1);
        if (!hasValue)
            continue;
        std::string value = takeValue(connectionString);
        if (isKey(name, key))
            result = std::move(value);
    }
    return result;
}

} // namespace kova
