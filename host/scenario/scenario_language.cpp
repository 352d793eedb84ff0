#include "scenario/scenario_language.h"

#include "base/iso_date_time.h"
#include "base/utf8.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace kova {
namespace {

constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

char unescaped(char c) {
    switch (c) {
    case 'n':
        return '\n';
    case 'r':
        return '\r';
    case 't':
        return '\t';
    case '"':
    case '\\':
        return c;
    default:
        throw ScenarioError(std::string("unknown escape \\") + c);
    }
}

/// Reads from behind the opening quote to behind the closing one.
std::string quotedWord(std::string_view line, std::size_t& at) {
    std::string word;
    for (; at < line.size(); ++at) {
        if (line[at] == '"') {
            ++at;
            if (at < line.size() && !isBlank(line[at]) && line[at] != '#')
                throw ScenarioError("a blank is missing behind a closing quote");
            return word;
        }
        if (line[at] == '\\' && ++at < line.size())
            word += unescaped(line[at]);
        else if (at < line.size())
            word += line[at];
    }
    throw ScenarioError("a quote is not closed");
}

std::string plainWord(std::string_view line, std::size_t& at) {
    const std::size_t start = at;
    for (; at < line.size() && !isBlank(line[at]) && line[at] != '#'; ++at)
        if (line[at] == '"')
            throw ScenarioError("a blank is missing before an opening quote");
    return std::string(line.substr(start, at - start));
}

template <class Number>
Number numberFromWord(std::string_view word) {
    Number number{};
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
    if (error != std::errc() || end != word.data() + word.size())
        throw ScenarioError("no number, or out of range: " + std::string(word));
    return number;
}

double realFromWord(std::string_view word) {
    const auto number = numberFromWord<double>(word);
    if (!std::isfinite(number))
        throw ScenarioError("no number: " + std::string(word));
    return number;
}

bool booleanFromWord(const std::string& word) {
    if (word != "True" && word != "False")
        throw ScenarioError("neither True nor False: " + word);
    return word == "True";
}

} // namespace

std::vector<std::string> scenarioLines(std::string_view text) {
    if (text.starts_with(ByteOrderMark))
        text.remove_prefix(ByteOrderMark.size());
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        lines.emplace_back(line);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

std::vector<std::string> scenarioWords(std::string_view line) {
    if (toUtf8(fromUtf8(line)) != line)
        throw ScenarioError("not UTF-8");
    std::vector<std::string> words;
    for (std::size_t at = 0; at < line.size();) {
        if (line[at] == '#')
            break;
        if (isBlank(line[at]))
            ++at;
        else if (line[at] == '"')
            words.push_back(quotedWord(line, ++at));
        else
            words.push_back(plainWord(line, at));
    }
    return words;
}

std::string located(const std::string& file, std::size_t line, const std::string& reason) {
    return file + ":" + std::to_string(line) + ": " + reason;
}

void Arguments::requireCount(std::size_t least, std::size_t most) const {
    if (count() < least)
        throw ScenarioError("too few arguments");
    if (count() > most)
        throw ScenarioError("too many arguments: " + words_[most]);
}

std::int32_t Arguments::int32(std::size_t position) const {
    return numberFromWord<std::int32_t>(text(position));
}

std::int32_t Arguments::natural(std::size_t position) const {
    const std::int32_t number = int32(position);
    if (number < 0)
        throw ScenarioError("negative: " + text(position));
    return number;
}

bool Arguments::choice(std::size_t position, std::string_view yes, std::string_view no) const {
    const std::string& word = text(position);
    if (word != yes && word != no)
        throw ScenarioError("neither " + std::string(yes) + " nor " + std::string(no) + ": " + word);
    return word == yes;
}

DateTime Arguments::dateTime(std::size_t position) const {
    constexpr std::string_view Form = "YYYY-MM-DDTHH:MM:SS";
    const std::string& word = text(position);
    const bool formed = word.size() == Form.size() && word[Form.find('T')] == 'T';
    const auto time = formed ? parseIsoDateTime(word) : std::nullopt;
    if (!time)
        throw ScenarioError("no time " + std::string(Form) + ": " + word);
    return *time;
}

Arguments Arguments::from(std::size_t position) const {
    return Arguments({words_.begin() + static_cast<std::ptrdiff_t>(position), words_.end()});
}

Variant valueFromWord(const std::string& word, type_description::Type type) {
    using type_description::Type;
    switch (type) {
    case Type::Int16:
        return numberFromWord<std::int16_t>(word);
    case Type::Int32:
        return numberFromWord<std::int32_t>(word);
    case Type::Double:
        return realFromWord(word);
    case Type::Boolean:
        return booleanFromWord(word);
    case Type::String:
        return word;
    case Type::Connection:
    case Type::None:
        break;
    }
    throw ScenarioError("a value of this type cannot be written: " + word);
}

} // namespace kova
