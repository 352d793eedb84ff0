#include "scenario/arguments.h"

#include "scenario/scenario_parser.h"

#include <charconv>
#include <cmath>

namespace kova {
namespace {

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

/// Digits of a fixed-width field.
int field(std::string_view word, std::size_t start, std::size_t length) {
    int number = 0;
    for (const char c : word.substr(start, length)) {
        if (c < '0' || c > '9')
            throw ScenarioError("no time YYYY-MM-DDTHH:MM:SS: " + std::string(word));
        number = number * 10 + (c - '0');
    }
    return number;
}

} // namespace

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
    using namespace std::chrono;
    constexpr std::string_view Form = "0000-00-00T00:00:00";
    const std::string& word = text(position);
    bool formed = word.size() == Form.size();
    for (std::size_t i = 0; formed && i < Form.size(); ++i)
        formed = Form[i] == '0' || word[i] == Form[i];
    if (!formed)
        throw ScenarioError("no time YYYY-MM-DDTHH:MM:SS: " + word);
    const year_month_day date{year(field(word, 0, 4)), month(static_cast<unsigned>(field(word, 5, 2))),
                              day(static_cast<unsigned>(field(word, 8, 2)))};
    const int hour = field(word, 11, 2);
    const int minute = field(word, 14, 2);
    const int second = field(word, 17, 2);
    if (!date.ok() || hour > 23 || minute > 59 || second > 59)
        throw ScenarioError("no such time: " + word);
    return local_days(date) + hours(hour) + minutes(minute) + seconds(second);
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
