#include "shop/shop_database.h"

#include "adapters/sqlite/server_dialect.h"
#include "adapters/sqlite/sqlite_database.h"
#include "adapters/sqlite/sqlite_statement.h"
#include "host_options.h"

#include <array>
#include <filesystem>
#include <sqlite3.h>

namespace kova {

// The files of resources/database, made into sources by the build (cmake/EmbedText.cmake).
extern const char* const kovaSchemaSql;
extern const char* const kovaSampleSql;

namespace {

namespace fs = std::filesystem;

fs::path pathOf(const std::string& utf8) {
    return {std::u8string(utf8.begin(), utf8.end())};
}

/// Each day of the last year and today, unless it has movements: four of the shop's days as one, with takings
/// of its own, today's as it would have gone until now. A day without movements shows little.
constexpr const char* SampleDays = R"(
    INSERT INTO tabPagamentiScontriniBackoffice(DataOperazione, TipoOperazione, idpagamento, Coefficiente,
        ImportoIncassato, Valuta, Note, Cassetto, idCassa, idutente)
    WITH RECURSIVE past(day) AS (
        SELECT date('now', 'localtime', '-1 year')
        UNION ALL
        SELECT date(day, '+1 day') FROM past WHERE day < date('now', 'localtime')
    ), day(day, number, passed) AS (
        SELECT day, CAST(julianday(day) AS INTEGER),
            iif(day < date('now', 'localtime'), 86400, strftime('%s', 'now', 'localtime') % 86400)
        FROM past
        WHERE day NOT IN (SELECT date(DataOperazione) FROM tabPagamentiScontriniBackoffice)
    ), sample AS (
        SELECT *, strftime('%s', DataOperazione) % 86400 - 8 * 3600
            + 780 * (julianday('2026-11-14') - julianday(date(DataOperazione))) AS second
        FROM tabPagamentiScontriniBackoffice
        WHERE date(DataOperazione) BETWEEN '2026-11-11' AND '2026-11-14' AND idTestata IS NOT NULL
            AND TipoOperazione NOT IN (4, 8) AND (TipoOperazione <> 1 OR date(DataOperazione) = '2026-11-14')
    ), movement AS (
        SELECT *, iif(passed > 9 * 3600, 8 * 3600, 0) AS opening FROM sample, day
    )
    SELECT datetime(day, CAST(opening + min(1.0, (passed - opening) / 43200.0) * second AS INTEGER)
            || ' seconds') AS moment,
        TipoOperazione, idpagamento, Coefficiente,
        iif(TipoOperazione < 20, ImportoIncassato, round(ImportoIncassato * (80 + number % 37) / 100, 2)),
        Valuta, Note, Cassetto, idCassa, idutente
    FROM movement
    ORDER BY moment)";

/// Under another name until it is complete: a start that breaks off leaves no half-filled shop behind.
void makeSampleFile(const std::string& file) {
    const fs::path path = pathOf(file);
    fs::create_directories(path.parent_path());
    const std::string unfinished = file + ".new";
    fs::remove(pathOf(unfinished));
    {
        auto database = ShopDatabase::openFile(unfinished);
        database.createSchema();
        database.loadSample();
    }
    fs::rename(pathOf(unfinished), path);
}

} // namespace

ShopDatabase ShopDatabase::inMemory() {
    return ShopDatabase(SqliteHandle::openMemory());
}

ShopDatabase ShopDatabase::openFile(const std::string& file) {
    return ShopDatabase(SqliteHandle::openFile(file, SqliteHandle::Access::ReadWrite));
}

ShopDatabase ShopDatabase::open(const std::string& what) {
    if (what != "empty" && what != "sample") {
        if (!fs::exists(pathOf(what)))
            throw DatabaseError(DatabaseError::Unspecified, "no such file: " + what, "08001");
        return openFile(what);
    }
    auto database = inMemory();
    database.createSchema();
    if (what == "sample")
        database.loadSample();
    return database;
}

ShopDatabase ShopDatabase::openSampleFile(const std::string& file) {
    if (!fs::exists(pathOf(file)))
        makeSampleFile(file);
    auto database = openFile(file);
    database.execute(SampleDays);
    return database;
}

void ShopDatabase::createSchema() {
    executeTogether(kovaSchemaSql);
}

void ShopDatabase::loadSample() {
    executeTogether(kovaSampleSql);
}

void ShopDatabase::requireWritable() {
    execute("BEGIN IMMEDIATE");
    execute("ROLLBACK");
}

void ShopDatabase::execute(const std::string& sql) {
    const std::string text = toSqliteDialect(sql);
    for (std::string_view rest = text; !rest.empty();) {
        SqliteStatement statement(handle_->get(), rest);
        while (!statement.empty() && statement.step()) {
        }
        rest = statement.rest();
    }
}

void ShopDatabase::executeTogether(const std::string& sql) {
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

void ShopDatabase::storeMovement(const StoredMovement& stored) {
    SqliteStatement insert(handle_->get(),
                           "INSERT INTO tabPagamentiScontriniBackoffice(DataOperazione, TipoOperazione,"
                           " idpagamento, Coefficiente, ImportoIncassato, Valuta, Note, Cassetto, idCassa,"
                           " idutente) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
    const auto number = [](std::int32_t value) { return Value(std::int64_t{value}); };
    const Movement& movement = stored.movement;
    const std::array<Value, 10> values{stored.time,
                                       number(movement.tipoIncasso),
                                       number(movement.idpagamento),
                                       number(movement.isIncasso ? 1 : -1),
                                       movement.importo,
                                       std::string_view(movement.Valuta),
                                       std::string_view(movement.note),
                                       number(movement.cassetto),
                                       number(stored.till),
                                       number(stored.user)};
    int position = 0;
    for (const Value& value : values)
        insert.bind(++position, value);
    insert.step();
}

std::shared_ptr<DatabaseConnection> ShopDatabase::connection() const {
    return std::make_shared<SqliteConnection>(handle_);
}

HostDatabase openHostDatabase(const HostOptions& options, const ServerOpener& openServer) {
    if (options.connection)
        return {std::nullopt, openServer(*options.connection)};
    auto database = ShopDatabase::open(options.database);
    auto connection = database.connection();
    return {std::move(database), std::move(connection)};
}

} // namespace kova
