#pragma once
#include "ports/database.h"
#include "ports/regional_settings.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kova {

// Numbers. One parser decides what a number is, so that the test and the conversions cannot disagree. It
// takes blanks around, a sign, the region's currency symbol before or after, groups of exactly three digits,
// the region's decimal separator with digits on at least one side, and an exponent.

/// The number; nothing for a text that does not convert to a double.
std::optional<double> parseNumber(std::string_view text, const RegionalSettings& regional);
/// Whether the text converts to a double.
bool isNumeric(std::string_view text, const RegionalSettings& regional);
/// Throws Error: 13 for no number, 6 for one that a double cannot hold.
double toDouble(std::string_view text, const RegionalSettings& regional);
/// Rounds half to even. Throws Error 6 out of range.
std::int32_t toInt32(double number);
std::int16_t toInt16(double number);
/// The same of a text; throws Error 13 for no number too.
std::int32_t toInt32(std::string_view text, const RegionalSettings& regional);
std::int16_t toInt16(std::string_view text, const RegionalSettings& regional);
/// The id in a button's key. Throws Error 13 unless it is a whole number.
std::int32_t keyToId(std::string_view key, const RegionalSettings& regional);

/// Shortest decimal form of up to 15 digits, so that no binary noise shows; no grouping.
std::string toText(double number, const RegionalSettings& regional);
std::string toText(Decimal number, const RegionalSettings& regional);
std::string toText(LongDecimal number, const RegionalSettings& regional);

/// What a numeric field takes besides digits and control characters.
struct NumericKeys {
    bool decimals = false; ///< the decimal comma; a point is taken as one, since number pads have either
    bool sign = false;     ///< - and +
    bool grouping = false; ///< an apostrophe between groups of digits
    bool exponent = false; ///< e and E
    bool percent = false;
    bool blanks = false;
};

/// The character to keep for a typed one, 0 to discard the key.
char32_t NumericKeyFilter(char32_t character, const NumericKeys& allowed);

// Dates.

/// Day and, if given, time of day; day and month in the region's order, the year with two or four digits,
/// also year first with hyphens (ISO 8601). Seconds may follow a dot. Nothing for any other text.
std::optional<DateTime> parseDate(std::string_view text, const RegionalSettings& regional);
/// At least two digits, as in 05.
std::string twoDigits(std::int64_t number);
/// The day in the region's short-date form.
std::string shortDate(DateTime time, const RegionalSettings& regional);
/// The region's general form: short date and time, the time left out at midnight; of TimeOfDayDate the time
/// alone.
std::string generalDate(DateTime time, const RegionalSettings& regional);
/// The same behind `text`; for many in a row.
void appendGeneralDate(std::string& text, DateTime time, const RegionalSettings& regional);

/// Writes dates as literals of SQL Server that mean the same whatever the language of the login.
class SqlDateFormatter {
  public:
    explicit SqlDateFormatter(const RegionalSettings& regional) : regional_(regional) {}
    /// 1 is the one mode there is: date and time by ISO 8601.
    void SetMode(std::int32_t mode) { mode_ = mode; }
    [[nodiscard]] std::int32_t mode() const { return mode_; }
    /// The literal for a date text in the user's form, with or without a time. A text ending in " 23:59.59"
    /// means the last second of its day. Throws Error 13 for a text that is no date. The literal always has
    /// date and time.
    [[nodiscard]] std::string FormatSqlDate(const std::string& text) const;

  private:
    const RegionalSettings& regional_;
    std::int32_t mode_ = 0;
};

// Cells of the database.

/// The ordinary conversion; Null gives an empty text.
std::string asText(const Value& value, const RegionalSettings& regional);
/// The same behind `text`; for many cells in a row.
void appendText(std::string& text, const Value& value, const RegionalSettings& regional);
/// The value, or `fallback` when it is Null.
Value NullToDefault(const Value& value, const Value& fallback);
/// Any number but 0 is true. Throws Error 13 for Null and for a text that is neither a number nor "True" or
/// "False".
bool asBoolean(const Value& value, const RegionalSettings& regional);
/// Throws Error 13 for Null, dates and texts that are no number; a true Boolean counts as -1.
double asDouble(const Value& value, const RegionalSettings& regional);
/// Rounds half to even; throws as asDouble does, and Error 6 out of range.
std::int32_t asInt32(const Value& value, const RegionalSettings& regional);
/// Compared as values: a text counts as the number that it reads as. Null equals nothing.
bool equalsNumber(const Value& value, double number, const RegionalSettings& regional);

} // namespace kova
