#include "adapters/odbc/column_buffer.h"

#include "base/ascii_text.h"
#include "base/iso_date_time.h"
#include "base/single_precision.h"
#include "base/utf16.h"

#include <algorithm>
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

/// Most numbers have so few digits that nothing can overflow; nothing for any other text.
std::optional<Decimal> shortDecimal(std::string_view number) {
    if (number.size() < 2 || number.size() > LargestScale)
        return std::nullopt;
    std::int64_t unscaled = 0;
    std::size_t point = number.size() - 1; // behind the last digit when there is none
    for (std::size_t i = 0; i < number.size(); ++i) {
        if (isDigit(number[i]))
            unscaled = unscaled * 10 + (number[i] - '0');
        else if (number[i] == '.' && point == number.size() - 1)
            point = i;
        else
            return std::nullopt;
    }
    return Decimal{unscaled, static_cast<std::uint8_t>(number.size() - 1 - point)};
}

bool allDigits(std::string_view text) {
    return std::ranges::all_of(text, isDigit);
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
    target_ = targetOf(kind_, size);
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

ColumnBuffer::Target ColumnBuffer::targetOf(Kind kind, SQLULEN characters) {
    constexpr std::size_t PlainText = 64; // exact numbers and times with an offset lose nothing as text
    switch (kind) {
    case Kind::Boolean:
        return {SQL_C_BIT, sizeof(unsigned char)};
    case Kind::Integer:
        return {SQL_C_SBIGINT, sizeof(SQLBIGINT)};
    case Kind::Single:
        return {SQL_C_FLOAT, sizeof(float)};
    case Kind::Real:
        return {SQL_C_DOUBLE, sizeof(double)};
    case Kind::Exact:
    case Kind::OffsetTime:
        return {SQL_C_CHAR, PlainText};
    case Kind::Time:
        return {SQL_C_TYPE_TIMESTAMP, sizeof(SQL_TIMESTAMP_STRUCT)};
    case Kind::TimeOfDay:
        return {SQL_C_TYPE_TIME, sizeof(SQL_TIME_STRUCT)};
    case Kind::Text:
        break;
    }
    // Bytes that are no text arrive as two characters each.
    const bool limited = characters > 0 && characters <= LongestBoundText;
    return {SQL_C_WCHAR, limited ? (2 * characters + 1) * sizeof(char16_t) : 0};
}

void ColumnBuffer::makeRoom(std::size_t rows) {
    cells_ = std::make_unique_for_overwrite<std::byte[]>(rows * target_.capacity);
    sizes_.resize(rows);
}

void ColumnBuffer::bind(const OdbcStatementHandle& statement, std::size_t rows) {
    makeRoom(rows);
    statement.require(SQLBindCol(statement.get(), position_, target_.type, cells_.get(),
                                 static_cast<SQLLEN>(target_.capacity), sizes_.data()));
    bound_ = true;
}

void ColumnBuffer::readInto(Snapshot& snapshot, const OdbcStatementHandle& statement, std::size_t row) {
    if (!bound_)
        fetchCell(statement);
    if (sizes_[row] == SQL_NULL_DATA)
        snapshot.addNull();
    else
        addCell(snapshot, row);
}

void ColumnBuffer::fetchCell(const OdbcStatementHandle& statement) {
    if (sizes_.empty())
        makeRoom(1);
    if (unlimited())
        fetchText(statement);
    else
        statement.require(SQLGetData(statement.get(), position_, target_.type, cells_.get(),
                                     static_cast<SQLLEN>(target_.capacity), sizes_.data()));
}

void ColumnBuffer::fetchText(const OdbcStatementHandle& statement) {
    std::u16string whole, piece(PieceSize, u'\0');
    for (;;) {
        SQLLEN left = 0; // bytes from here on, or SQL_NO_TOTAL
        const auto bytes = static_cast<SQLLEN>(piece.size() * sizeof(char16_t));
        const auto result = SQLGetData(statement.get(), position_, SQL_C_WCHAR, piece.data(), bytes, &left);
        if (result == SQL_NO_DATA)
            break;
        statement.require(result);
        if (left == SQL_NULL_DATA) {
            sizes_[0] = SQL_NULL_DATA;
            return;
        }
        const bool more = left == SQL_NO_TOTAL || left >= bytes;
        whole.append(piece, 0, more ? piece.size() - 1 : static_cast<std::size_t>(left) / sizeof(char16_t));
        if (!more)
            break;
    }
    text_.clear();
    appendUtf16(text_, whole); // at once: a pair may lie across two pieces
    sizes_[0] = static_cast<SQLLEN>(whole.size() * sizeof(char16_t));
}

void ColumnBuffer::addCell(Snapshot& snapshot, std::size_t row) {
    switch (kind_) {
    case Kind::Boolean:
        return snapshot.addBoolean(*cellAt<unsigned char>(row) != 0);
    case Kind::Integer:
        return snapshot.addInteger(*cellAt<SQLBIGINT>(row));
    case Kind::Single:
        return snapshot.addReal(withoutNoise(*cellAt<float>(row)));
    case Kind::Real:
        return snapshot.addReal(*cellAt<double>(row));
    case Kind::Time:
        return snapshot.addTime(dateTimeOf(*cellAt<SQL_TIMESTAMP_STRUCT>(row)));
    case Kind::TimeOfDay:
        return snapshot.addTime(timeOfDayOf(*cellAt<SQL_TIME_STRUCT>(row)));
    case Kind::Exact:
        return snapshot.add(decimalFromText(cellAt<char>(row)));
    case Kind::OffsetTime:
        return snapshot.add(localTimeOf(cellAt<char>(row)));
    case Kind::Text:
        return snapshot.addText(text(row));
    }
}

std::string_view ColumnBuffer::text(std::size_t row) {
    if (unlimited())
        return text_;
    const SQLLEN size = sizes_[row];
    if (size < 0 || static_cast<std::size_t>(size) > target_.capacity - sizeof(char16_t))
        throw DatabaseError(DatabaseError::Unspecified,
                            "a text in column " + name_ + " is longer than the column (SQLSTATE 01004)",
                            "01004");
    text_.clear();
    appendUtf16(text_, {cellAt<char16_t>(row), static_cast<std::size_t>(size) / sizeof(char16_t)});
    return text_;
}

Value decimalFromText(std::string_view text) {
    const bool negative = text.starts_with('-');
    const std::string_view number = text.substr(negative || text.starts_with('+') ? 1 : 0);
    if (const auto usual = shortDecimal(number))
        return Decimal{negative ? -usual->unscaled : usual->unscaled, usual->scale};
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
