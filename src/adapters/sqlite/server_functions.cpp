#include "adapters/sqlite/server_functions.h"

#include "adapters/sqlite/server_dialect.h"
#include "base/iso_date_time.h"

#include <algorithm>
#include <new>
#include <sqlite3.h>

namespace kova {
namespace {

std::string_view textOf(const void* bytes, int size) {
    return size > 0 ? std::string_view(static_cast<const char*>(bytes), static_cast<std::size_t>(size))
                    : std::string_view();
}

/// Byte of a lower-case letter. In UTF-8 the capitals À to Þ are C3 80 to C3 9E, their small letters 20 more,
/// except for the multiplication sign among them.
int folded(unsigned char byte, unsigned char previous) {
    const bool ascii = byte >= 'A' && byte <= 'Z';
    const bool latin = previous == 0xC3 && byte >= 0x80 && byte <= 0x9E && byte != 0x97;
    return ascii || latin ? byte + 0x20 : byte;
}

int compareIgnoringCase(void*, int sizeA, const void* a, int sizeB, const void* b) {
    const std::string_view textA = textOf(a, sizeA), textB = textOf(b, sizeB);
    const auto common = std::min(textA.size(), textB.size());
    unsigned char previous = 0; // of both texts: a lead byte is its own folded form
    for (std::size_t i = 0; i < common; ++i) {
        const auto byteA = static_cast<unsigned char>(textA[i]), byteB = static_cast<unsigned char>(textB[i]);
        if (const int difference = folded(byteA, previous) - folded(byteB, previous))
            return difference;
        previous = byteA;
    }
    return sizeA - sizeB;
}

int sign(bool less, bool greater) {
    return greater ? 1 : less ? -1 : 0;
}

/// Both forms with a blank and with a T, with milliseconds and without, compare as times.
int compareDateTimes(void*, int sizeA, const void* a, int sizeB, const void* b) {
    constexpr int PlainSize = 19; // of texts YYYY-MM-DD HH:MM:SS, which sort as they are
    const std::string_view textA = textOf(a, sizeA), textB = textOf(b, sizeB);
    const bool plain = sizeA == PlainSize && sizeB == PlainSize && textA[10] == textB[10];
    const auto timeA = plain ? std::nullopt : parseIsoDateTime(textA);
    const auto timeB = plain ? std::nullopt : parseIsoDateTime(textB);
    if (timeA && timeB)
        return sign(*timeA<*timeB, *timeA> * timeB);
    return sign(textA<textB, textA> textB);
}

/// The first argument's text in the stored form; a style in the second argument needs no regard, since only
/// one form is read.
void convertToDateTime(sqlite3_context* context, int, sqlite3_value** arguments) {
    if (sqlite3_value_type(arguments[0]) == SQLITE_NULL)
        return;
    const void* text = sqlite3_value_text(arguments[0]);
    const auto time = parseIsoDateTime(textOf(text, sqlite3_value_bytes(arguments[0])));
    if (!time) {
        sqlite3_result_error(context,
                             "Conversion failed when converting date and/or time from character string.", -1);
        return;
    }
    const std::string result = formatIsoDateTime(*time);
    sqlite3_result_text64(context, result.data(), result.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}

constexpr const char* Declaration = "CREATE TABLE GetDailyOperation("
                                    "[Data-Ora Aggiornamento] datetime, [Cassetto] int,"
                                    "[Tipo Operazione] nvarchar(100) COLLATE NOCASE,"
                                    "[Tipo Pagamento] nvarchar(100) COLLATE NOCASE,"
                                    "importo money, valuta nvarchar(10) COLLATE NOCASE,"
                                    "[Note Movimento] nvarchar(500) COLLATE NOCASE,"
                                    "[Operatore] nvarchar(100) COLLATE NOCASE, day HIDDEN)";
constexpr int DayColumn = 8;

/// The date is compared by its characters, so that both stored forms of a date-time are found.
constexpr const char* RowsOfDay = "SELECT [Data-Ora Aggiornamento], [Cassetto], [Tipo Operazione],"
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
    if (const int code = sqlite3_declare_vtab(database, Declaration))
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
        if (constraint.iColumn != DayColumn || constraint.op != SQLITE_INDEX_CONSTRAINT_EQ ||
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
    const auto time = parseIsoDateTime(text ? text : "");
    if (!time)
        return fail(table, "GetDailyOperation: the argument is no date");
    sqlite3_finalize(self(cursor).statement);
    self(cursor).statement = nullptr;
    if (const int code =
            sqlite3_prepare_v2(table.database, RowsOfDay, -1, &self(cursor).statement, nullptr)) {
        fail(table, sqlite3_errmsg(table.database));
        return code;
    }
    const std::string day = formatIsoDateTime(*time).substr(0, 10);
    sqlite3_bind_text(self(cursor).statement, 1, day.data(), static_cast<int>(day.size()), SQLITE_TRANSIENT);
    return next(cursor);
}

int atEnd(sqlite3_vtab_cursor* cursor) {
    return self(cursor).atEnd ? 1 : 0;
}

int column(sqlite3_vtab_cursor* cursor, sqlite3_context* context, int index) {
    if (index < DayColumn)
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

int addServerFunctions(sqlite3* database) {
    int code = sqlite3_create_collation(database, "NOCASE", SQLITE_UTF8, nullptr, compareIgnoringCase);
    if (code == SQLITE_OK)
        code = sqlite3_create_collation(database, ServerDateTimeName, SQLITE_UTF8, nullptr, compareDateTimes);
    for (int arguments = 1; arguments <= 2 && code == SQLITE_OK; ++arguments)
        code = sqlite3_create_function(database, ServerDateTimeName, arguments,
                                       SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr, convertToDateTime,
                                       nullptr, nullptr);
    return code;
}

int addDailyOperation(sqlite3* database) {
    return sqlite3_create_module(database, "GetDailyOperation", &dailyOperation, nullptr);
}

} // namespace kova
