#include "adapters/sqlite/date_time_text.h"

#include <array>
#include <cstdio>

namespace kova {
namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

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

} // namespace

std::optional<DateTime> parseDateTimeText(std::string_view text) {
    Scanner scanner(text);
    const int year = scanner.number(4);
    scanner.expect("-");
    const int month = scanner.number(2);
    scanner.expect("-");
    const int day = scanner.number(2);
    int hours = 0, minutes = 0, seconds = 0, milliseconds = 0;
    if (!scanner.atEnd()) {
        scanner.expect(" T");
        hours = scanner.number(2);
        scanner.expect(":");
        minutes = scanner.number(2);
        if (scanner.skip(":")) {
            seconds = scanner.number(2);
            if (scanner.skip("."))
                milliseconds = scanner.milliseconds();
        }
    }
    const std::chrono::year_month_day date{std::chrono::year(year),
                                           std::chrono::month(static_cast<unsigned>(month)),
                                           std::chrono::day(static_cast<unsigned>(day))};
    if (!scanner.matched() || year < 1 || !date.ok() || hours > 23 || minutes > 59 || seconds > 59)
        return std::nullopt;
    return std::chrono::local_days(date) + std::chrono::hours(hours) + std::chrono::minutes(minutes) +
           std::chrono::seconds(seconds) + std::chrono::milliseconds(milliseconds);
}

std::string formatDateTimeText(DateTime time) {
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss<std::chrono::milliseconds> clock(time - day);
    const auto count = [](auto duration) { return static_cast<int>(duration.count()); };
    std::array<char, 48> text{};
    int length = std::snprintf(text.data(), text.size(), "%04d-%02u-%02u %02d:%02d:%02d",
                               static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                               static_cast<unsigned>(date.day()), count(clock.hours()),
                               count(clock.minutes()), count(clock.seconds()));
    std::string result(text.data(), static_cast<std::size_t>(length));
    if (clock.subseconds().count() != 0) {
        length = std::snprintf(text.data(), text.size(), ".%03d", count(clock.subseconds()));
        result.append(text.data(), static_cast<std::size_t>(length));
    }
    return result;
}

} // namespace kova
