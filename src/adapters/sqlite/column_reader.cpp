#include "adapters/sqlite/column_reader.h"

#include "adapters/sqlite/date_time_text.h"

#include <cmath>
#include <limits>
#include <sqlite3.h>

namespace kova {
namespace {

constexpr int moneyFactor = 10000;
constexpr std::uint8_t moneyScale = 4;
constexpr std::int64_t largestMoney = std::numeric_limits<std::int64_t>::max() / moneyFactor;

} // namespace

ColumnReader::ColumnReader(sqlite3_stmt* statement, int column)
    : statement_(statement), column_(column),
      declared_(declaredType(sqlite3_column_decltype(statement, column))) {}

ColumnReader::Declared ColumnReader::declaredType(const char* declaration) {
    std::string name; // up to a length or a second word: "decimal" of "DECIMAL(18, 2)"
    for (const char* c = declaration; c && *c != '\0' && *c != '(' && *c != ' '; ++c)
        name += *c >= 'A' && *c <= 'Z' ? static_cast<char>(*c - 'A' + 'a') : *c;
    if (name == "bit" || name == "boolean")
        return Declared::Boolean;
    if (name == "float" || name == "real" || name == "double")
        return Declared::Real;
    if (name == "money" || name == "smallmoney" || name == "decimal" || name == "numeric")
        return Declared::Money;
    if (name == "datetime" || name == "datetime2" || name == "smalldatetime" || name == "date")
        return Declared::Time;
    return Declared::Anything;
}

Value ColumnReader::read() const {
    switch (sqlite3_column_type(statement_, column_)) {
    case SQLITE_NULL:
        return Null{};
    case SQLITE_INTEGER:
        return readInteger();
    case SQLITE_FLOAT:
        return readReal();
    default:
        return readBytes();
    }
}

Value ColumnReader::readInteger() const {
    const std::int64_t value = sqlite3_column_int64(statement_, column_);
    if (declared_ == Declared::Boolean)
        return value != 0;
    if (declared_ == Declared::Real)
        return static_cast<double>(value);
    if (declared_ == Declared::Money && value >= -largestMoney && value <= largestMoney)
        return Decimal{value * moneyFactor, moneyScale};
    return value;
}

Value ColumnReader::readReal() const {
    const double value = sqlite3_column_double(statement_, column_);
    if (declared_ == Declared::Money && std::fabs(value) <= static_cast<double>(largestMoney))
        return Decimal{std::llround(value * moneyFactor), moneyScale};
    return value;
}

Value ColumnReader::readBytes() const {
    const void* bytes = sqlite3_column_text(statement_, column_);
    const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement_, column_));
    const std::string_view text = bytes ? std::string_view(static_cast<const char*>(bytes), size) : "";
    if (declared_ == Declared::Time)
        if (const auto time = parseDateTimeText(text))
            return *time;
    return text;
}

} // namespace kova
