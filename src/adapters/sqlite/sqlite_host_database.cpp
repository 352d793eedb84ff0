#include "adapters/sqlite/embedded_sql.h"
#include "adapters/sqlite/server_dialect.h"
#include "adapters/sqlite/sqlite_database.h"
#include "adapters/sqlite/sqlite_handle.h"
#include "adapters/sqlite/sqlite_statement.h"

#include <array>
#include <filesystem>
#include <sqlite3.h>

namespace kova {

SqliteHostDatabase SqliteHostDatabase::inMemory() {
    return SqliteHostDatabase(SqliteHandle::openMemory());
}

SqliteHostDatabase SqliteHostDatabase::openFile(const std::string& file) {
    return SqliteHostDatabase(SqliteHandle::openFile(file, SqliteHandle::Access::ReadWrite));
}

SqliteHostDatabase SqliteHostDatabase::open(const std::string& what) {
    if (what != "empty" && what != "sample") {
        if (!std::filesystem::exists(std::filesystem::path(std::u8string(what.begin(), what.end()))))
            throw DatabaseError(DatabaseError::Unspecified, "no such file: " + what, "08001");
        return openFile(what);
    }
    auto database = inMemory();
    database.createSchema();
    if (what == "sample")
        database.loadSample();
    return database;
}

bool SqliteHostDatabase::isEmpty() const {
    return !SqliteStatement(handle_->get(), "SELECT 1 FROM sqlite_master").step();
}

void SqliteHostDatabase::createSchema() {
    executeTogether(kovaSchemaSql);
}

void SqliteHostDatabase::loadSample() {
    executeTogether(kovaSampleSql);
}

void SqliteHostDatabase::execute(const std::string& sql) {
    const std::string text = toSqliteDialect(sql);
    for (std::string_view rest = text; !rest.empty();) {
        SqliteStatement statement(handle_->get(), rest);
        while (!statement.empty() && statement.step()) {
        }
        rest = statement.rest();
    }
}

void SqliteHostDatabase::executeTogether(const std::string& sql) {
    execute("BEGIN IMMEDIATE");
    try {
        execute(sql);
        execute("COMMIT");
    } catch (...) {
        if (sqlite3_get_autocommit(handle_->get()) == 0)
            execute("ROLLBACK");
        throw;
    }
}

std::int64_t SqliteHostDatabase::storeMovement(const StoredMovement& movement) {
    SqliteStatement insert(handle_->get(),
                           "INSERT INTO tabPagamentiScontriniBackoffice(DataOperazione, TipoOperazione,"
                           " idpagamento, Coefficiente, ImportoIncassato, Valuta, Note, Cassetto, idCassa,"
                           " idutente) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
    const auto number = [](std::int32_t value) { return Value(std::int64_t{value}); };
    const std::array<Value, 10> values{movement.dataOperazione,         number(movement.tipoOperazione),
                                       number(movement.idpagamento),    number(movement.coefficiente),
                                       movement.importoIncassato,       std::string_view(movement.valuta),
                                       std::string_view(movement.note), number(movement.cassetto),
                                       number(movement.idCassa),        number(movement.idutente)};
    int position = 0;
    for (const Value& value : values)
        insert.bind(++position, value);
    insert.step();
    return sqlite3_last_insert_rowid(handle_->get());
}

std::shared_ptr<DatabaseConnection> SqliteHostDatabase::connection() const {
    return std::make_shared<SqliteConnection>(handle_);
}

} // namespace kova
