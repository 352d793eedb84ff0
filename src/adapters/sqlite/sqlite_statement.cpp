#include "adapters/sqlite/sqlite_statement.h"

#include "base/ascii_text.h"
#include "base/iso_date_time.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <sqlite3.h>

namespace kova {
namespace {

struct Binder {
    sqlite3_stmt* statement;
    int position;

    int operator()(Null) const { return sqlite3_bind_null(statement, position); }
    int operator()(bool value) const { return sqlite3_bind_int(statement, position, value ? 1 : 0); }
    int operator()(std::int64_t value) const { return sqlite3_bind_int64(statement, position, value); }
    int operator()(double value) const { return sqlite3_bind_double(statement, position, value); }
    int operator()(Decimal value) const {
        return (*this)(static_cast<double>(value.unscaled) / std::pow(10.0, value.scale));
    }
    int operator()(LongDecimal value) const { return (*this)(value.digits); }
    int operator()(std::string_view value) const {
        const char* bytes = value.empty() ? "" : value.data(); // a null pointer would bind Null
        return sqlite3_bind_text64(statement, position, bytes, value.size(), SQLITE_STATIC, SQLITE_UTF8);
    }
    int operator()(DateTime value) const {
        const std::string text = formatIsoDateTime(value);
        return sqlite3_bind_text64(statement, position, text.data(), text.size(), SQLITE_TRANSIENT,
                                   SQLITE_UTF8);
    }
};

constexpr int MoneyFactor = 10000;
constexpr std::uint8_t MoneyScale = 4;
constexpr std::int64_t LargestMoney = std::numeric_limits<std::int64_t>::max() / MoneyFactor;

/// Turns one column's cells into values of the type that the column was declared with. SQLite stores in any
/// column whatever it is given: a cell that does not fit the declaration arrives as it is stored, and so do
/// the cells of columns without a declaration and of expressions. Money is exact up to 15 digits, as many as
/// SQLite stores.
class ColumnReader {
  public:
    ColumnReader(sqlite3_stmt* statement, int column);
    /// Appends the current row's cell.
    void readInto(Snapshot& snapshot) const;

  private:
    enum class Declared { Anything, Boolean, Real, Money, Time };
    static Declared declaredType(const char* declaration);
    void readInteger(Snapshot& snapshot) const;
    void readReal(Snapshot& snapshot) const;
    void readBytes(Snapshot& snapshot) const;

    sqlite3_stmt* statement_;
    int column_;
    Declared declared_;
};

} // namespace

void throwSqliteError(sqlite3* database, int code) {
    const std::string message = database ? sqlite3_errmsg(database) : sqlite3_errstr(code);
    if ((code & 0xff) != SQLITE_ERROR)
        throw DatabaseError(DatabaseError::Unspecified, message, "HY000");
    const bool missing = message.starts_with("no such table");
    throw DatabaseError(DatabaseError::CommandFailed, message, missing ? "42S02" : "42000");
}

void SqliteStatement::Finalizer::operator()(sqlite3_stmt* statement) const {
    sqlite3_finalize(statement);
}

SqliteStatement::SqliteStatement(sqlite3* database, std::string_view sql) : database_(database) {
    sqlite3_stmt* statement = nullptr;
    const char* rest = nullptr;
    const int code =
        sqlite3_prepare_v2(database, sql.data(), static_cast<int>(sql.size()), &statement, &rest);
    if (code != SQLITE_OK)
        throwSqliteError(database, code);
    statement_.reset(statement);
    rest_ = rest ? sql.substr(static_cast<std::size_t>(rest - sql.data())) : std::string_view();
}

bool SqliteStatement::readOnly() const {
    return sqlite3_stmt_readonly(statement_.get()) != 0;
}

int SqliteStatement::parameterCount() const {
    return sqlite3_bind_parameter_count(statement_.get());
}

void SqliteStatement::bind(int position, const Value& value) {
    const int code = std::visit(Binder{statement_.get(), position}, value);
    if (code != SQLITE_OK)
        throwSqliteError(database_, code);
}

bool SqliteStatement::step() {
    const int code = sqlite3_step(statement_.get());
    if (code != SQLITE_ROW && code != SQLITE_DONE)
        throwSqliteError(database_, code);
    return code == SQLITE_ROW;
}

/// In the letters in which the outermost select writes them, as servers name columns. SQLite takes those of
/// the column's source, but of a select that is a source itself the written ones.
std::vector<std::string> SqliteStatement::columnNames() const {
    const auto namesOf = [](sqlite3_stmt* statement) {
        std::vector<std::string> names;
        for (int i = 0; i < sqlite3_column_count(statement); ++i) {
            const char* name = sqlite3_column_name(statement, i);
            names.emplace_back(name ? name : "");
        }
        return names;
    };
    std::vector<std::string> names = namesOf(statement_.get());
    std::string text = sqlite3_sql(statement_.get());
    text.erase(text.find_last_not_of("; \t\r\n") + 1);
    text = "SELECT * FROM (" + text + "\n)";
    sqlite3_stmt* outer = nullptr;
    sqlite3_prepare_v2(database_, text.c_str(), -1, &outer, nullptr); // no select: null, which has no columns
    const std::vector<std::string> written = namesOf(outer);
    sqlite3_finalize(outer);
    for (std::size_t i = 0; i < std::min(names.size(), written.size()); ++i)
        if (equalIgnoringCase(names[i], written[i])) // among equal names all but one get a number behind
            names[i] = written[i];
    return names;
}

std::shared_ptr<const Snapshot> SqliteStatement::readAll() {
    auto snapshot = std::make_shared<Snapshot>();
    std::vector<ColumnReader> columns;
    for (std::string& name : columnNames()) {
        columns.emplace_back(statement_.get(), static_cast<int>(columns.size()));
        snapshot->addColumn(std::move(name));
    }
    while (step()) {
        for (const ColumnReader& column : columns)
            column.readInto(*snapshot);
        snapshot->endRow();
    }
    return snapshot;
}

ColumnReader::ColumnReader(sqlite3_stmt* statement, int column)
    : statement_(statement), column_(column),
      declared_(declaredType(sqlite3_column_decltype(statement, column))) {}

ColumnReader::Declared ColumnReader::declaredType(const char* declaration) {
    const std::string_view text = declaration ? declaration : "";
    const std::string_view type = text.substr(0, text.find_first_of("( ")); // "decimal" of "DECIMAL(18, 2)"
    const auto isOneOf = [type](std::initializer_list<std::string_view> names) {
        return std::ranges::any_of(names, [type](auto name) { return equalIgnoringCase(type, name); });
    };
    if (isOneOf({"bit", "boolean"}))
        return Declared::Boolean;
    if (isOneOf({"float", "real", "double"}))
        return Declared::Real;
    if (isOneOf({"money", "smallmoney", "decimal", "numeric"}))
        return Declared::Money;
    if (isOneOf({"datetime", "datetime2", "smalldatetime", "date"}))
        return Declared::Time;
    return Declared::Anything;
}

void ColumnReader::readInto(Snapshot& snapshot) const {
    switch (sqlite3_column_type(statement_, column_)) {
    case SQLITE_NULL:
        return snapshot.addNull();
    case SQLITE_INTEGER:
        return readInteger(snapshot);
    case SQLITE_FLOAT:
        return readReal(snapshot);
    default:
        return readBytes(snapshot);
    }
}

void ColumnReader::readInteger(Snapshot& snapshot) const {
    const std::int64_t value = sqlite3_column_int64(statement_, column_);
    if (declared_ == Declared::Boolean)
        return snapshot.addBoolean(value != 0);
    if (declared_ == Declared::Real)
        return snapshot.addReal(static_cast<double>(value));
    if (declared_ == Declared::Money && value >= -LargestMoney && value <= LargestMoney)
        return snapshot.addExact({value * MoneyFactor, MoneyScale});
    snapshot.addInteger(value);
}

void ColumnReader::readReal(Snapshot& snapshot) const {
    const double value = sqlite3_column_double(statement_, column_);
    if (declared_ == Declared::Money && std::fabs(value) <= static_cast<double>(LargestMoney))
        return snapshot.addExact({std::llround(value * MoneyFactor), MoneyScale});
    snapshot.addReal(value);
}

void ColumnReader::readBytes(Snapshot& snapshot) const {
    const void* bytes = sqlite3_column_text(statement_, column_);
    const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement_, column_));
    const std::string_view text = bytes ? std::string_view(static_cast<const char*>(bytes), size) : "";
    if (declared_ == Declared::Time)
        if (const auto time = parseIsoDateTime(text))
            return snapshot.addTime(*time);
    snapshot.addText(text);
}

} // namespace kova
