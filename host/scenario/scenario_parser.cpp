#include "scenario/scenario_parser.h"

#include "base/utf8.h"

#include <algorithm>

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

} // namespace kova
