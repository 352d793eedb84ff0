#include "adapters/sqlite/sqlite_database.h"

#include "adapters/sqlite/server_dialect.h"
#include "adapters/sqlite/server_functions.h"
#include "adapters/sqlite/sqlite_statement.h"
#include "base/ascii_text.h"

#include <algorithm>
#include <filesystem>
#include <sqlite3.h>

namespace kova {
namespace {

constexpr int BusyTimeoutMilliseconds = 1000; ///< the cashier's window stands still for as long

[[noreturn]] void refuse(const std::string& reason) {
    throw DatabaseError(DatabaseError::CommandFailed, reason, "42000");
}

} // namespace

void SqliteHandle::Closer::operator()(sqlite3* database) const {
    sqlite3_close_v2(database);
}

SqliteHandle::SqliteHandle(const std::string& name, int flags) {
    sqlite3* database = nullptr;
    // One thread uses a connection: locking for each cell would be a tenth of the time of a long list.
    const int opened = sqlite3_open_v2(name.c_str(), &database, flags | SQLITE_OPEN_NOMUTEX, nullptr);
    database_.reset(database); // a handle that failed to open still has to be closed
    const auto require = [database](int code) {
        if (code != SQLITE_OK)
            throwSqliteError(database, code);
    };
    require(opened);
    require(sqlite3_busy_timeout(database, BusyTimeoutMilliseconds));
    require(sqlite3_db_config(database, SQLITE_DBCONFIG_MAINDBNAME, "dbo"));
    require(addServerFunctions(database));
    require(addDailyOperation(database));
    SqliteStatement(database, "SELECT count(*) FROM sqlite_master").step(); // opening alone reads nothing
}

std::shared_ptr<SqliteHandle> SqliteHandle::openFile(const std::string& file, Access access) {
    // Names such as ":memory:" and the empty one mean something else to SQLite than to a person.
    std::error_code error;
    const std::filesystem::path path(std::u8string(file.begin(), file.end()));
    const bool exists = std::filesystem::exists(path, error);
    const bool suitable = exists ? std::filesystem::is_regular_file(path, error)
                                 : access == Access::ReadWrite && path.has_filename();
    const auto absolute = std::filesystem::absolute(path, error).u8string();
    if (!suitable || error)
        throw DatabaseError(DatabaseError::Unspecified, "unable to open database file: " + file, "HY000");
    const int flags =
        access == Access::ReadOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
    try {
        return std::shared_ptr<SqliteHandle>(
            new SqliteHandle(std::string(absolute.begin(), absolute.end()), flags));
    } catch (const DatabaseError& reason) {
        throw DatabaseError(reason.number(), std::string(reason.what()) + ": " + file, reason.sqlState());
    }
}

std::shared_ptr<SqliteHandle> SqliteHandle::openMemory() {
    return std::shared_ptr<SqliteHandle>(
        new SqliteHandle(":memory:", SQLITE_OPEN_READWRITE | SQLITE_OPEN_MEMORY));
}

// Which cursor and lock were asked for makes no difference: a snapshot is static and read-only.
Recordset SqliteConnection::query(const Query& query) {
    const std::string sql = toSqliteDialect(query.text);
    SqliteStatement statement(handle_->get(), sql);
    if (statement.empty())
        refuse("Command text was not set for the command object.");
    if (!statement.rest().empty() && !SqliteStatement(handle_->get(), statement.rest()).empty())
        refuse("only one statement is allowed");
    if (!statement.readOnly())
        refuse("attempt to write through a connection that only reads");
    if (static_cast<std::size_t>(statement.parameterCount()) != query.parameters.size())
        throw DatabaseError(DatabaseError::Unspecified,
                            "the number of parameters does not match the command text", "HY000");
    int position = 0;
    for (const DateParameter& parameter : query.parameters)
        statement.bind(++position, parameter.value);
    return Recordset(statement.readAll());
}

namespace {

/// Takes everything up to the mark off the front, and the mark.
std::string_view takeUntil(std::string_view& rest, char mark) {
    const auto end = rest.find(mark);
    const auto taken = rest.substr(0, end);
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    return taken;
}

std::string takeValue(std::string_view& rest) {
    rest.remove_prefix(std::min(rest.find_first_not_of(" \t\r\n"), rest.size()));
    if (rest.empty() || (rest.front() != '"' && rest.front() != '\''))
        return std::string(trimmed(takeUntil(rest, ';')));
    const char quote = rest.front();
    rest.remove_prefix(1);
    std::string value(takeUntil(rest, quote));
    while (!rest.empty() && rest.front() == quote) { // doubled: a quote that belongs to the value
        rest.remove_prefix(1);
        value += quote;
        value += takeUntil(rest, quote);
    }
    takeUntil(rest, ';');
    return value;
}

/// Value of a key in `key=value;key="value";…`, blanks around both trimmed; of several equal keys the last
/// one. Inside quotes of either kind a semicolon is a character, and a doubled quote one quote.
std::optional<std::string> connectionStringValue(std::string_view connectionString, std::string_view key) {
    std::optional<std::string> result;
    while (!connectionString.empty()) {
        const auto mark = connectionString.find_first_of("=;");
        if (mark == std::string_view::npos)
            break;
        const bool hasValue = connectionString[mark] == '=';
        const auto name = trimmed(connectionString.substr(0, mark));
        connectionString.remove_prefix(mark + 1);
        if (!hasValue)
            continue;
        std::string value = takeValue(connectionString);
        if (equalIgnoringCase(name, key))
            result = std::move(value);
    }
    return result;
}

} // namespace

std::shared_ptr<DatabaseConnection> openSqlite(const std::string& file) {
    return std::make_shared<SqliteConnection>(SqliteHandle::openFile(file, SqliteHandle::Access::ReadOnly));
}

std::shared_ptr<DatabaseConnection> SqliteProvider::open(const std::string& connectionString) {
    if (const auto file = connectionStringValue(connectionString, "data source"))
        return openSqlite(*file);
    throw DatabaseError(DatabaseError::Unspecified,
                        "Data source name not found and no default driver specified", "HY000");
}

} // namespace kova
