#include "services/conversions.h"

#include "base/iso_date_time.h"
#include "base/numbered_errors.h"

#include <array>
#include <charconv>

namespace kova {
namespace {

using namespace std::chrono;
using Order = RegionalSettings::DateOrder;

constexpr int FirstYearOfWindow = 1930; ///< two-digit years mean 1930 to 2029

/// Reads pieces off the front of a text.
class Reader {
  public:
    explicit Reader(std::string_view text) : rest_(text) {}

    /// One to `most` digits; nothing when there is none or more.
    std::optional<int> number(std::size_t most) {
        const auto count = std::min(rest_.find_first_not_of("0123456789"), rest_.size());
        if (count == 0 || count > most)
            return std::nullopt;
        int value = 0;
        std::from_chars(rest_.data(), rest_.data() + count, value);
        rest_.remove_prefix(count);
        lastLength_ = count;
        return value;
    }
    bool take(std::string_view piece) {
        if (piece.empty() || !rest_.starts_with(piece))
            return false;
        rest_.remove_prefix(piece.size());
        return true;
    }
    bool blanks() {
        const auto count = std::min(rest_.find_first_not_of(' '), rest_.size());
        rest_.remove_prefix(count);
        return count > 0;
    }
    [[nodiscard]] bool atEnd() const { return rest_.empty(); }
    [[nodiscard]] std::size_t lastLength() const { return lastLength_; }

  private:
    std::string_view rest_;
    std::size_t lastLength_ = 0;
};

/// The separator taken, empty for none.
std::string_view takeDateSeparator(Reader& reader, const RegionalSettings& regional) {
    for (const std::string_view separator : {std::string_view(regional.dateSeparator), std::string_view("/"),
                                             std::string_view("-"), std::string_view(".")})
        if (reader.take(separator))
            return separator;
    return {};
}

std::optional<local_days> readDay(Reader& reader, const RegionalSettings& regional) {
    const auto first = reader.number(4);
    if (!first)
        return std::nullopt;
    const bool yearFirst = reader.lastLength() == 4;
    const std::string_view separator = takeDateSeparator(reader, regional);
    if (separator.empty() || (!yearFirst && reader.lastLength() > 2))
        return std::nullopt;
    const auto second = reader.number(2);
    if (!second || !reader.take(separator))
        return std::nullopt;
    const auto third = reader.number(yearFirst ? 2 : 4);
    if (!third)
        return std::nullopt;
    int yearNumber = yearFirst ? *first : *third;
    if (!yearFirst && reader.lastLength() <= 2)
        yearNumber += yearNumber + 1900 < FirstYearOfWindow ? 2000 : 1900;
    const bool monthFirst = regional.dateOrder == Order::MonthDayYear;
    const int monthNumber = yearFirst ? *second : monthFirst ? *first : *second;
    const int dayNumber = yearFirst ? *third : monthFirst ? *second : *first;
    const year_month_day day{year(yearNumber), month(static_cast<unsigned>(monthNumber)),
                             std::chrono::day(static_cast<unsigned>(dayNumber))};
    if (!day.ok() || yearNumber < 100)
        return std::nullopt;
    return local_days(day);
}

std::optional<milliseconds> readTime(Reader& reader, const RegionalSettings& regional) {
    const auto hourNumber = reader.number(2);
    if (!hourNumber || !(reader.take(regional.timeSeparator) || reader.take(":")))
        return std::nullopt;
    const auto minuteNumber = reader.number(2);
    if (!minuteNumber)
        return std::nullopt;
    int secondNumber = 0;
    if (reader.take(regional.timeSeparator) || reader.take(":") || reader.take(".")) {
        const auto read = reader.number(2);
        if (!read)
            return std::nullopt;
        secondNumber = *read;
    }
    int hour24 = *hourNumber;
    reader.blanks();
    const bool afternoon = reader.take(regional.afterNoon) || reader.take("PM") || reader.take("pm");
    if (afternoon || reader.take(regional.beforeNoon) || reader.take("AM") || reader.take("am")) {
        if (hour24 < 1 || hour24 > 12)
            return std::nullopt;
        hour24 = hour24 % 12 + (afternoon ? 12 : 0);
    }
    if (hour24 > 23 || *minuteNumber > 59 || secondNumber > 59)
        return std::nullopt;
    return hours(hour24) + minutes(*minuteNumber) + seconds(secondNumber);
}

/// With a leading zero, where wanted, if it has one digit.
void appendNumber(std::string& text, std::int64_t number, bool twoDigits) {
    if (number >= 0 && number < 100) {
        if (number >= 10 || twoDigits)
            text += static_cast<char>('0' + number / 10);
        text += static_cast<char>('0' + number % 10);
    } else {
        text += std::to_string(number);
    }
}

void appendShortDate(std::string& text, local_days day, const RegionalSettings& regional) {
    const year_month_day date(day);
    const std::size_t start = text.size();
    const auto add = [&](std::int64_t value) {
        if (text.size() > start)
            text += regional.dateSeparator;
        appendNumber(text, value, regional.twoDigitDayAndMonth);
    };
    const auto dayNumber = static_cast<unsigned>(date.day());
    const auto monthNumber = static_cast<unsigned>(date.month());
    const auto yearNumber = static_cast<int>(date.year());
    switch (regional.dateOrder) {
    case Order::MonthDayYear:
        add(monthNumber), add(dayNumber), add(yearNumber);
        break;
    case Order::YearMonthDay:
        add(yearNumber), add(monthNumber), add(dayNumber);
        break;
    case Order::DayMonthYear:
        add(dayNumber), add(monthNumber), add(yearNumber);
        break;
    }
}

} // namespace

std::string twoDigits(std::int64_t number) {
    std::string text;
    appendNumber(text, number, true);
    return text;
}

std::optional<DateTime> parseDate(std::string_view text, const RegionalSettings& regional) {
    Reader reader(text);
    reader.blanks();
    const auto day = readDay(reader, regional);
    if (!day)
        return std::nullopt;
    DateTime result = *day;
    if (reader.blanks() && !reader.atEnd()) {
        const auto time = readTime(reader, regional);
        if (!time)
            return std::nullopt;
        result += *time;
        reader.blanks();
    }
    return reader.atEnd() ? std::optional(result) : std::nullopt;
}

std::string shortDate(DateTime time, const RegionalSettings& regional) {
    std::string text;
    appendShortDate(text, floor<days>(time), regional);
    return text;
}

std::string generalDate(DateTime time, const RegionalSettings& regional) {
    std::string text;
    appendGeneralDate(text, time, regional);
    return text;
}

void appendGeneralDate(std::string& text, DateTime time, const RegionalSettings& regional) {
    const auto day = floor<days>(time);
    if (day != TimeOfDayDate) {
        appendShortDate(text, day, regional);
        if (time == day)
            return;
        text += ' ';
    }
    const hh_mm_ss clock(floor<seconds>(time - day));
    const auto hour = clock.hours().count();
    const bool twelve = regional.twelveHours;
    appendNumber(text, !twelve ? hour : hour % 12 == 0 ? 12 : hour % 12, !twelve);
    for (const std::int64_t part : {clock.minutes().count(), clock.seconds().count()}) {
        text += regional.timeSeparator;
        appendNumber(text, part, true);
    }
    if (twelve)
        text += ' ' + (hour < 12 ? regional.beforeNoon : regional.afterNoon);
}

std::string SqlDateFormatter::FormatSqlDate(const std::string& text) const {
    using namespace std::chrono;
    constexpr std::string_view EndOfDay = " 23:59.59";
    std::string_view dateText = text;
    const bool lastSecond = dateText.ends_with(EndOfDay);
    if (lastSecond)
        dateText.remove_suffix(EndOfDay.size());
    const auto parsed = parseDate(dateText, regional_);
    if (!parsed)
        throw typeMismatch();
    const DateTime time = lastSecond ? floor<days>(*parsed) + 24h - 1s : *parsed;
    return "CONVERT(datetime,'" + formatIsoDateTime(floor<seconds>(time), 'T') + "',126)";
}

} // namespace kova
