#include "adapters/odbc/odbc_connection_text.h"

#include "platform/database.h"
#include "platform/letter_case.h"

#include <algorithm>
#include <charconv>
#include <vector>

namespace kova {
namespace {

/// `key=value` with its separator; something without an equals sign has neither key nor value.
struct Pair {
    std::string_view key, value, whole;
};

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// Where a value ends: at the next semicolon, or behind a value in braces, in which a closing brace is
/// doubled.
std::size_t endOfValue(std::string_view text, std::size_t start) {
    auto position = text.find_first_not_of(" \t", start);
    if (position != std::string_view::npos && text[position] == '{') {
        while ((position = text.find('}', position + 1)) != std::string_view::npos &&
               text.substr(position + 1).starts_with('}'))
            ++position;
    } else {
        position = start;
    }
    return position == std::string_view::npos ? text.size() : std::min(text.find(';', position), text.size());
}

std::vector<Pair> pairsOf(std::string_view text) {
    std::vector<Pair> pairs;
    for (std::size_t start = 0; start < text.size();) {
        const auto mark = text.find_first_of("=;", start);
        const bool hasValue = mark != std::string_view::npos && text[mark] == '=';
        const auto end = hasValue ? endOfValue(text, mark + 1) : std::min(mark, text.size());
        const auto next = std::min(end + 1, text.size());
        Pair pair{{}, {}, text.substr(start, next - start)};
        if (hasValue) {
            pair.key = trimmed(text.substr(start, mark - start));
            pair.value = trimmed(text.substr(mark + 1, end - mark - 1));
        }
        pairs.push_back(pair);
        start = next;
    }
    return pairs;
}

std::string_view withoutBraces(std::string_view value) {
    if (value.size() < 2 || !value.starts_with('{') || !value.ends_with('}'))
        return value;
    return value.substr(1, value.size() - 2);
}

std::chrono::seconds secondsOf(const Pair& pair) {
    const auto value = withoutBraces(pair.value);
    std::int32_t seconds = 0;
    const auto read = std::from_chars(value.data(), value.data() + value.size(), seconds);
    if (read.ec != std::errc() || read.ptr != value.data() + value.size() || seconds < 0)
        throw DatabaseError(DatabaseError::Unspecified,
                            std::string(pair.key) + " is no number of seconds: " + std::string(value),
                            "HY024");
    return std::chrono::seconds(seconds);
}

} // namespace

bool namesOdbc(std::string_view connectionString) {
    for (const Pair& pair : pairsOf(connectionString))
        for (const char* const key : {"driver", "dsn", "filedsn"})
            if (equalIgnoringCase(pair.key, key))
                return true;
    return false;
}

OdbcConnectionText parseOdbcConnectionText(std::string_view connectionString) {
    OdbcConnectionText result;
    for (const Pair& pair : pairsOf(connectionString)) {
        const auto isKey = [&](std::string_view key) { return equalIgnoringCase(pair.key, key); };
        if (isKey("connection timeout") || isKey("connect timeout")) {
            result.logInTimeout = secondsOf(pair);
        } else if (isKey("query timeout") || isKey("command timeout")) {
            result.queryTimeout = secondsOf(pair);
        } else {
            if (isKey("driver"))
                result.driver = withoutBraces(pair.value);
            result.driverText += pair.whole;
        }
    }
    return result;
}

} // namespace kova
