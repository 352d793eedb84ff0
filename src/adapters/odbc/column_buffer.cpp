#include "adapters/odbc/column_buffer.h"

#include "base/iso_date_time.h"
#include "base/single_precision.h"
#include "base/utf16.h"

#include <charconv>
#include <cstdio>
#include <sqlext.h>
#include <sqlucode.h>
#include <string>

namespace kova {
namespace {

constexpr SQLULEN LongestBoundText = 4000; ///< characters; longer columns are nvarchar(max) and the like
constexpr std::size_t PieceSize = 8192;    ///< characters fetched at a time of a text of any length

// Types of SQL Server alone.
constexpr SQLSMALLINT TimeOfServer = -154, TimeWithOffset = -155;

/// Fractions are cut off, as the seconds that the component shows are: nothing moves into the next day.
DateTime dateTimeOf(const SQL_TIMESTAMP_STRUCT& time) {
    using namespace std::chrono;
    const year_month_day date(year(time.year), month(time.month), day(time.day));
    return DateTime(local_days(date)) + hours(time.hour) + minutes(time.minute) + seconds(time.second) +
           floor<milliseconds>(nanoseconds(time.fraction));
}

DateTime timeOfDayOf(const SQL_TIME_STRUCT& time) {
    using namespace std::chrono;
    return TimeOfDayDate + hours(time.hour) + minutes(time.minute) + seconds(time.second);
}

/// The time on the clock of the place that the offset is of.
Value localTimeOf(const char* text) {
    constexpr std::size_t UpToSeconds = 19;
    const auto time = parseIsoDateTime(std::string_view(text).substr(0, UpToSeconds));
    return time ? Value(*time) : std::string_view(text);
}

constexpr std::size_t LargestScale = 18;

bool allDigits(std::string_view text) {
    return text.find_first_not_of("0123456789") == std::string_view::npos;
}

} // namespace

ColumnBuffer::ColumnBuffer(const OdbcStatementHandle& statement, SQLUSMALLINT position)
    : position_(position) {
    SQLWCHAR name[256] = {};
    SQLSMALLINT nameLength = 0, sqlType = 0, digits = 0, nullable = 0;
    SQLULEN size = 0;
    statement.require(SQLDescribeColW(statement.get(), position, name, 256, &nameLength, &sqlType, &size,
                                      &digits, &nullable));
    appendUtf16(name_, std::u16string_view(reinterpret_cast<const char16_t*>(name)));
    kind_ = kindOf(sqlType);
    if (kind_ == Kind::Exact || kind_ == Kind::OffsetTime) {
        capacity_ = sizeof characters_;
    } else if (kind_ != Kind::Text) {
        capacity_ = sizeof fixed_;
    } else if (size > 0 && size <= LongestBoundText) {
        // Bytes that are no text arrive as two characters each.
        wide_.resize(2 * size + 1);
        capacity_ = static_cast<SQLLEN>(wide_.size() * sizeof(char16_t));
    } else {
        wide_.resize(PieceSize);
    }
}

ColumnBuffer::Kind ColumnBuffer::kindOf(SQLSMALLINT sqlType) {
    switch (sqlType) {
    case SQL_BIT:
        return Kind::Boolean;
    case SQL_TINYINT:
    case SQL_SMALLINT:
    case SQL_INTEGER:
    case SQL_BIGINT:
        return Kind::Integer;
    case SQL_REAL:
        return Kind::Single;
    case SQL_FLOAT:
    case SQL_DOUBLE:
        return Kind::Real;
    case SQL_DECIMAL:
    case SQL_NUMERIC:
        return Kind::Exact;
    case SQL_TYPE_TIMESTAMP:
    case SQL_TYPE_DATE:
    case SQL_TIMESTAMP: // the codes of ODBC 2, on a host's connection
    case SQL_DATE:
        return Kind::Time;
    case SQL_TYPE_TIME:
    case SQL_TIME:
    case TimeOfServer:
        return Kind::TimeOfDay;
    case TimeWithOffset:
        return Kind::OffsetTime;
    default:
        return Kind::Text;
    }
}

SQLSMALLINT ColumnBuffer::targetType() const {
    switch (kind_) {
    case Kind::Boolean:
        return SQL_C_BIT;
    case Kind::Integer:
        return SQL_C_SBIGINT;
    case Kind::Single:
        return SQL_C_FLOAT;
    case Kind::Real:
        return SQL_C_DOUBLE;
    case Kind::Exact:
    case Kind::OffsetTime:
        return SQL_C_CHAR;
    case Kind::Time:
        return SQL_C_TYPE_TIMESTAMP;
    case Kind::TimeOfDay:
        return SQL_C_TYPE_TIME;
    case Kind::Text:
        break;
    }
    return SQL_C_WCHAR;
}

SQLPOINTER ColumnBuffer::target() {
    switch (kind_) {
    case Kind::Exact:
    case Kind::OffsetTime:
        return characters_;
    case Kind::Text:
        return wide_.data();
    default:
        return &fixed_;
    }
}

void ColumnBuffer::bind(const OdbcStatementHandle& statement) {
    statement.require(SQLBindCol(statement.get(), position_, targetType(), target(), capacity_, &indicator_));
    bound_ = true;
}

void ColumnBuffer::readInto(Snapshot& snapshot, const OdbcStatementHandle& statement) {
    if (!bound_)
        fetchCell(statement);
    if (indicator_ == SQL_NULL_DATA)
        snapshot.add(Null{});
    else
        snapshot.add(cell());
}

void ColumnBuffer::fetchCell(const OdbcStatementHandle& statement) {
    if (unlimited())
        fetchText(statement);
    else
        statement.require(
            SQLGetData(statement.get(), position_, targetType(), target(), capacity_, &indicator_));
}

void ColumnBuffer::fetchText(const OdbcStatementHandle& statement) {
    std::u16string whole;
    for (;;) {
        SQLLEN left = 0; // bytes from here on, or SQL_NO_TOTAL
        const auto bytes = static_cast<SQLLEN>(wide_.size() * sizeof(char16_t));
        const auto result = SQLGetData(statement.get(), position_, SQL_C_WCHAR, wide_.data(), bytes, &left);
        if (result == SQL_NO_DATA)
            break;
        statement.require(result);
        if (left == SQL_NULL_DATA) {
            indicator_ = SQL_NULL_DATA;
            return;
        }
        const bool more = left == SQL_NO_TOTAL || left >= bytes;
        whole.append(wide_, 0, more ? wide_.size() - 1 : static_cast<std::size_t>(left) / sizeof(char16_t));
        if (!more)
            break;
    }
    text_.clear();
    appendUtf16(text_, whole); // at once: a pair may lie across two pieces
    indicator_ = static_cast<SQLLEN>(whole.size() * sizeof(char16_t));
}

Value ColumnBuffer::cell() {
    switch (kind_) {
    case Kind::Boolean:
        return fixed_.boolean != 0;
    case Kind::Integer:
        return std::int64_t{fixed_.integer};
    case Kind::Single:
        return withoutNoise(fixed_.single);
    case Kind::Real:
        return fixed_.real;
    case Kind::Time:
        return dateTimeOf(fixed_.time);
    case Kind::TimeOfDay:
        return timeOfDayOf(fixed_.timeOfDay);
    case Kind::Exact:
        return decimalFromText(characters_);
    case Kind::OffsetTime:
        return localTimeOf(characters_);
    case Kind::Text:
        break;
    }
    if (unlimited())
        return std::string_view(text_);
    const auto room = capacity_ - static_cast<SQLLEN>(sizeof(char16_t));
    if (indicator_ < 0 || indicator_ > room)
        throw DatabaseError(DatabaseError::Unspecified,
                            "a text in column " + name_ + " is longer than the column (SQLSTATE 01004)",
                            "01004");
    text_.clear();
    appendUtf16(text_, std::u16string_view(wide_).substr(0, static_cast<std::size_t>(indicator_) / 2));
    return std::string_view(text_);
}

Value decimalFromText(std::string_view text) {
    const bool negative = text.starts_with('-');
    const std::string_view number = text.substr(negative || text.starts_with('+') ? 1 : 0);
    const auto point = number.find('.');
    const std::string_view whole = number.substr(0, point);
    std::string_view fraction = point == std::string_view::npos ? "" : number.substr(point + 1);
    if (whole.empty() && fraction.empty())
        return text;
    if (!allDigits(whole) || !allDigits(fraction))
        return text;
    while (fraction.size() > LargestScale && fraction.ends_with('0'))
        fraction.remove_suffix(1);
    std::string digits = negative ? "-" : "";
    digits.append(whole).append(fraction);

    std::int64_t unscaled = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), unscaled);
    if (read.ec != std::errc() || fraction.size() > LargestScale)
        return LongDecimal{negative ? text : number};
    return Decimal{unscaled, static_cast<std::uint8_t>(fraction.size())};
}

} // namespace kova
