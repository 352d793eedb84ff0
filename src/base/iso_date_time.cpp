#include "base/iso_date_time.h"

#include "base/ascii_text.h"

#include <array>
#include <cstdio>

namespace kova {
namespace {

/// Takes pieces off the front of a text; once a piece did not fit, the text has failed.
class Scanner {
  public:
    explicit Scanner(std::string_view text) : text_(text) {}

    int number(std::size_t digits) {
        int value = 0;
        for (std::size_t i = 0; i < digits; ++i) {
            if (text_.empty() || !isDigit(text_.front())) {
                failed_ = true;
                return 0;
            }
            value = value * 10 + (text_.front() - '0');
            text_.remove_prefix(1);
        }
        return value;
    }
    bool skip(std::string_view anyOf) {
        if (text_.empty() || anyOf.find(text_.front()) == std::string_view::npos)
            return false;
        text_.remove_prefix(1);
        return true;
    }
    void expect(std::string_view anyOf) { failed_ = !skip(anyOf) || failed_; }
    int milliseconds() {
        int value = number(1) * 100;
        for (int unit = 10; !text_.empty() && isDigit(text_.front()); unit /= 10)
            value += number(1) * unit;
        return value;
    }
    [[nodiscard]] bool atEnd() const { return text_.empty(); }
    [[nodiscard]] bool matched() const { return !failed_ && text_.empty(); }

  private:
    std::string_view text_;
    bool failed_ = false;
};

struct Parts {
    int year = 0, month = 0, day = 0, hours = 0, minutes = 0, seconds = 0, milliseconds = 0;
};

std::optional<DateTime> momentOf(const Parts& parts) {
    const std::chrono::year_month_day date{std::chrono::year(parts.year),
                                           std::chrono::month(static_cast<unsigned>(parts.month)),
                                           std::chrono::day(static_cast<unsigned>(parts.day))};
    if (parts.year < 1 || !date.ok() || parts.hours > 23 || parts.minutes > 59 || parts.seconds > 59)
        return std::nullopt;
    return std::chrono::local_days(date) + std::chrono::hours(parts.hours) +
           std::chrono::minutes(parts.minutes) + std::chrono::seconds(parts.seconds) +
           std::chrono::milliseconds(parts.milliseconds);
}

/// The form in which nearly all are stored, YYYY-MM-DD HH:MM:SS; nothing for any other.
std::optional<Parts> readUsualForm(std::string_view text) {
    constexpr std::string_view Form = "0000-00-00 00:00:00";
    if (text.size() != Form.size())
        return std::nullopt;
    for (std::size_t i = 0; i < Form.size(); ++i)
        if (Form[i] == '0' ? !isDigit(text[i]) : text[i] != Form[i])
            return std::nullopt;
    const auto pair = [&](std::size_t at) { return (text[at] - '0') * 10 + (text[at + 1] - '0'); };
    return Parts{pair(0) * 100 + pair(2), pair(5), pair(8), pair(11), pair(14), pair(17), 0};
}

} // namespace

std::optional<DateTime> parseIsoDateTime(std::string_view text) {
    if (const auto usual = readUsualForm(text))
        return momentOf(*usual);
    Parts parts;
    Scanner scanner(text);
    parts.year = scanner.number(4);
    scanner.expect("-");
    parts.month = scanner.number(2);
    scanner.expect("-");
    parts.day = scanner.number(2);
    if (!scanner.atEnd()) {
        scanner.expect(" T");
        parts.hours = scanner.number(2);
        scanner.expect(":");
        parts.minutes = scanner.number(2);
        if (scanner.skip(":")) {
            parts.seconds = scanner.number(2);
            if (scanner.skip("."))
                parts.milliseconds = scanner.milliseconds();
        }
    }
    return scanner.matched() ? momentOf(parts) : std::nullopt;
}

std::string formatIsoDateTime(DateTime time, char betweenDayAndTime) {
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss<std::chrono::milliseconds> clock(time - day);
    const auto count = [](auto duration) { return static_cast<int>(duration.count()); };
    std::array<char, 48> text{};
    int length = std::snprintf(text.data(), text.size(), "%04d-%02u-%02u%c%02d:%02d:%02d",
                               static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                               static_cast<unsigned>(date.day()), betweenDayAndTime, count(clock.hours()),
                               count(clock.minutes()), count(clock.seconds()));
    std::string result(text.data(), static_cast<std::size_t>(length));
    if (clock.subseconds().count() != 0) {
        length = std::snprintf(text.data(), text.size(), ".%03d", count(clock.subseconds()));
        result.append(text.data(), static_cast<std::size_t>(length));
    }
    return result;
}

} // namespace kova
