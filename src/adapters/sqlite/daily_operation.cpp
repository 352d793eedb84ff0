#include "adapters/sqlite/daily_operation.h"

#include "adapters/sqlite/date_time_text.h"

#include <new>
#include <sqlite3.h>

namespace kova {
namespace {

constexpr const char* declaration = "CREATE TABLE GetDailyOperation("
                                    "[Data-Ora Aggiornamento] datetime, [Cassetto] int,"
                                    "[Tipo Operazione] nvarchar(100) COLLATE NOCASE,"
                                    "[Tipo Pagamento] nvarchar(100) COLLATE NOCASE,"
                                    "importo money, valuta nvarchar(10) COLLATE NOCASE,"
                                    "[Note Movimento] nvarchar(500) COLLATE NOCASE,"
                                    "[Operatore] nvarchar(100) COLLATE NOCASE, day HIDDEN)";
constexpr int dayColumn = 8;

/// The date is compared by its characters, so that both stored forms of a date-time are found.
constexpr const char* rowsOfDay = "SELECT [Data-Ora Aggiornamento], [Cassetto], [Tipo Operazione],"
                                  " [Tipo Pagamento], importo, valuta, [Note Movimento], [Operatore]"
                                  " FROM Daily_Operation WHERE substr([Data-Ora Aggiornamento], 1, 10) = ?";

struct Table : sqlite3_vtab {
    sqlite3* database = nullptr;
    bool reading = false; ///< a row is being fetched; doing so again means that the view reads this function
};

struct Cursor : sqlite3_vtab_cursor {
    sqlite3_stmt* statement = nullptr;
    bool atEnd = true;
};

Table& tableOf(sqlite3_vtab_cursor* cursor) {
    return *static_cast<Table*>(cursor->pVtab);
}

Cursor& self(sqlite3_vtab_cursor* cursor) {
    return *static_cast<Cursor*>(cursor);
}

int fail(Table& table, const char* message) {
    sqlite3_free(table.zErrMsg);
    table.zErrMsg = sqlite3_mprintf("%s", message);
    return SQLITE_ERROR;
}

int connect(sqlite3* database, void*, int, const char* const*, sqlite3_vtab** result, char**) {
    if (const int code = sqlite3_declare_vtab(database, declaration))
        return code;
    auto* table = new (std::nothrow) Table;
    if (!table)
        return SQLITE_NOMEM;
    table->database = database;
    *result = table;
    return SQLITE_OK;
}

int disconnect(sqlite3_vtab* table) {
    delete static_cast<Table*>(table);
    return SQLITE_OK;
}

/// The one possible plan: the date is known.
int chooseIndex(sqlite3_vtab*, sqlite3_index_info* index) {
    for (int i = 0; i < index->nConstraint; ++i) {
        const auto& constraint = index->aConstraint[i];
        if (constraint.iColumn != dayColumn || constraint.op != SQLITE_INDEX_CONSTRAINT_EQ ||
            !constraint.usable)
            continue;
        index->aConstraintUsage[i].argvIndex = 1;
        index->aConstraintUsage[i].omit = 1;
        return SQLITE_OK;
    }
    return SQLITE_CONSTRAINT;
}

int open(sqlite3_vtab*, sqlite3_vtab_cursor** result) {
    auto* cursor = new (std::nothrow) Cursor;
    *result = cursor;
    return cursor ? SQLITE_OK : SQLITE_NOMEM;
}

int close(sqlite3_vtab_cursor* cursor) {
    sqlite3_finalize(self(cursor).statement);
    delete &self(cursor);
    return SQLITE_OK;
}

int next(sqlite3_vtab_cursor* cursor) {
    Table& table = tableOf(cursor);
    table.reading = true;
    const int code = sqlite3_step(self(cursor).statement);
    table.reading = false;
    self(cursor).atEnd = code != SQLITE_ROW;
    if (code == SQLITE_ROW || code == SQLITE_DONE)
        return SQLITE_OK;
    fail(table, sqlite3_errmsg(table.database));
    return code;
}

int filter(sqlite3_vtab_cursor* cursor, int, const char*, int, sqlite3_value** arguments) {
    Table& table = tableOf(cursor);
    if (table.reading)
        return fail(table, "Daily_Operation reads GetDailyOperation, which reads it");
    const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(arguments[0]));
    const auto time = parseDateTimeText(text ? text : "");
    if (!time)
        return fail(table, "GetDailyOperation: the argument is no date");
    sqlite3_finalize(self(cursor).statement);
    self(cursor).statement = nullptr;
    if (const int code =
            sqlite3_prepare_v2(table.database, rowsOfDay, -1, &self(cursor).statement, nullptr)) {
        fail(table, sqlite3_errmsg(table.database));
        return code;
    }
    const std::string day = formatDateTimeText(*time).substr(0, 10);
    sqlite3_bind_text(self(cursor).statement, 1, day.data(), static_cast<int>(day.size()), SQLITE_TRANSIENT);
    return next(cursor);
}

int atEnd(sqlite3_vtab_cursor* cursor) {
    return self(cursor).atEnd ? 1 : 0;
}

int column(sqlite3_vtab_cursor* cursor, sqlite3_context* context, int index) {
    if (index < dayColumn)
        sqlite3_result_value(context, sqlite3_column_value(self(cursor).statement, index));
    return SQLITE_OK;
}

int rowId(sqlite3_vtab_cursor*, sqlite3_int64* result) {
    *result = 0;
    return SQLITE_OK;
}

sqlite3_module makeModule() {
    sqlite3_module module{};
    module.xConnect = connect; // without xCreate the module is a table by itself
    module.xBestIndex = chooseIndex;
    module.xDisconnect = disconnect;
    module.xOpen = open;
    module.xClose = close;
    module.xFilter = filter;
    module.xNext = next;
    module.xEof = atEnd;
    module.xColumn = column;
    module.xRowid = rowId;
    return module;
}

const sqlite3_module dailyOperation = makeModule();

} // namespace

int addDailyOperation(sqlite3* database) {
    return sqlite3_create_module(database, "GetDailyOperation", &dailyOperation, nullptr);
}

} // namespace kova
