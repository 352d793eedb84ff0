#include "adapters/odbc/odbc_statement.h"

#include "adapters/odbc/column_buffer.h"
#include "base/utf16.h"

#include <algorithm>
#include <array>
#include <sqlext.h>
#include <sqlucode.h>

namespace kova {
namespace {

SQL_DATE_STRUCT dateOf(DateTime time) {
    const std::chrono::year_month_day date(std::chrono::floor<std::chrono::days>(time));
    return {static_cast<SQLSMALLINT>(static_cast<int>(date.year())),
            static_cast<SQLUSMALLINT>(static_cast<unsigned>(date.month())),
            static_cast<SQLUSMALLINT>(static_cast<unsigned>(date.day()))};
}

constexpr std::size_t MostRowsAtATime = 64;

/// As many as fit into the processor's caches; one where a column's cells have to be asked for.
std::size_t rowsAtATime(const std::list<ColumnBuffer>& columns) {
    constexpr std::size_t BufferSize = 131072; // bytes
    std::size_t bytesPerRow = 1;
    for (const ColumnBuffer& column : columns) {
        if (column.unlimited())
            return 1;
        bytesPerRow += column.bytesPerRow();
    }
    return std::clamp<std::size_t>(BufferSize / bytesPerRow, 1, MostRowsAtATime);
}

/// Drivers give each column once, from the left; behind the first column that cannot be bound none may be.
void bindFromTheLeft(std::list<ColumnBuffer>& columns, const OdbcStatementHandle& statement,
                     std::size_t rows) {
    for (ColumnBuffer& column : columns) {
        if (column.unlimited())
            return;
        column.bind(statement, rows);
    }
}

/// Fetches so many rows at a time into what is bound; a driver that can not fetches one.
class RowFetcher {
  public:
    RowFetcher(const OdbcStatementHandle& statement, std::size_t rows) : statement_(statement) {
        const auto set = [&](SQLINTEGER attribute, SQLPOINTER value) {
            return succeeded(SQLSetStmtAttrW(statement_.get(), attribute, value, 0));
        };
        if (rows > 1 && set(SQL_ATTR_ROWS_FETCHED_PTR, &fetched_) &&
            set(SQL_ATTR_ROW_STATUS_PTR, states_.data()))
            set(SQL_ATTR_ROW_ARRAY_SIZE, attributeNumber(rows));
    }
    /// Returns how many rows came, none behind the last one. Throws DatabaseError.
    std::size_t fetch() {
        fetched_ = 1;
        const auto result = SQLFetch(statement_.get());
        if (result == SQL_NO_DATA)
            return 0;
        statement_.require(result);
        if (result == SQL_SUCCESS_WITH_INFO && brokeOff())
            statement_.require(SQL_ERROR);
        return fetched_;
    }

  private:
    /// What goes wrong in or behind some of the rows comes with them, as information.
    [[nodiscard]] bool brokeOff() const {
        const auto end = states_.begin() + static_cast<std::ptrdiff_t>(fetched_);
        return std::find(states_.begin(), end, SQL_ROW_ERROR) != end ||
               !odbcError(SQL_HANDLE_STMT, statement_.get()).sqlState().starts_with("01");
    }
    const OdbcStatementHandle& statement_;
    SQLULEN fetched_ = 1;
    std::array<SQLUSMALLINT, MostRowsAtATime> states_{};
};

} // namespace

// The cursor stays what it is by default, forward-only and read-only: the rows go into a snapshot, and with
// FreeTDS a static cursor costs a journey to the server for each row.
OdbcStatement::OdbcStatement(SQLHDBC connection, std::optional<std::chrono::seconds> timeout)
    : handle_(connection) {
    // Otherwise the driver looks for escapes in braces and rewrites them.
    SQLSetStmtAttrW(handle_.get(), SQL_ATTR_NOSCAN, attributeNumber(SQL_NOSCAN_ON), 0);
    if (timeout) {
        const auto seconds = static_cast<std::uintptr_t>(timeout->count());
        SQLSetStmtAttrW(handle_.get(), SQL_ATTR_QUERY_TIMEOUT, attributeNumber(seconds), 0);
    }
}

/// A date as a date, not as text that the server would read by its own order of day and month.
void OdbcStatement::bindParameter(const DateParameter& parameter) {
    constexpr SQLULEN DateCharacters = 10;
    dates_.push_back(dateOf(parameter.value));
    const auto position = static_cast<SQLUSMALLINT>(dates_.size());
    handle_.require(SQLBindParameter(handle_.get(), position, SQL_PARAM_INPUT, SQL_C_TYPE_DATE, SQL_TYPE_DATE,
                                     DateCharacters, 0, &dates_.back(), sizeof(SQL_DATE_STRUCT), &dateSize_));
}

void OdbcStatement::execute(const Query& query) {
    rowsRead_ = query.rowsRead;
    for (const DateParameter& parameter : query.parameters)
        bindParameter(parameter);
    std::u16string text = toUtf16(query.text);
    const auto result = SQLExecDirectW(handle_.get(), reinterpret_cast<SQLWCHAR*>(text.data()),
                                       static_cast<SQLINTEGER>(text.size()));
    if (result != SQL_NO_DATA)
        handle_.require(result);
    skipToRows();
}

/// A server may count rows before it sends some.
void OdbcStatement::skipToRows() {
    SQLSMALLINT columns = 0;
    for (;;) {
        handle_.require(SQLNumResultCols(handle_.get(), &columns));
        if (columns > 0)
            return;
        const auto result = SQLMoreResults(handle_.get());
        if (result == SQL_NO_DATA)
            throw DatabaseError(DatabaseError::CommandFailed, "the command gives no rows", "24000");
        handle_.require(result);
    }
}

std::shared_ptr<const Snapshot> OdbcStatement::readAll() {
    SQLSMALLINT count = 0;
    handle_.require(SQLNumResultCols(handle_.get(), &count));
    auto snapshot = std::make_shared<Snapshot>();
    std::list<ColumnBuffer> columns; // never moves what the driver fills
    for (SQLSMALLINT i = 1; i <= count; ++i)
        snapshot->addColumn(columns.emplace_back(handle_, static_cast<SQLUSMALLINT>(i)).name());
    const std::size_t rows = rowsAtATime(columns);
    bindFromTheLeft(columns, handle_, rows);
    RowFetcher fetcher(handle_, rows);
    while (const std::size_t fetched = fetcher.fetch()) {
        for (std::size_t row = 0; row < fetched; ++row) {
            for (ColumnBuffer& column : columns)
                column.readInto(*snapshot, handle_, row);
            snapshot->endRow();
        }
        if (rowsRead_ != nullptr)
            rowsRead_->store(snapshot->rowCount(), std::memory_order_relaxed);
    }
    // What went wrong behind the last row shows when the driver looks for another result.
    const auto another = SQLMoreResults(handle_.get());
    if (another != SQL_NO_DATA)
        handle_.require(another);
    return snapshot;
}

} // namespace kova
