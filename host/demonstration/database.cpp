#include "demonstration/database.h"

#include "host_options.h"
#include "library/kova_drawer_man.h"

#include <QStandardPaths>

#include <filesystem>

namespace kova {
namespace {

namespace fs = std::filesystem;

fs::path utf8Path(const std::string& text) {
    return {std::u8string(text.begin(), text.end())};
}

std::string utf8Text(const fs::path& path) {
    const auto text = path.u8string();
    return {text.begin(), text.end()};
}

bool wantsUserFile(const HostOptions& options) {
    return !options.connection && options.database == "sample";
}

fs::path userFile() {
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    return utf8Path(folder.toStdString()) / "sample.sqlite";
}

/// Another name until it is complete: a start that breaks off leaves no half-filled shop behind.
void makeSample(const fs::path& file) {
    fs::create_directories(file.parent_path());
    fs::path unfinished = file;
    unfinished += ".new";
    fs::remove(unfinished);
    {
        auto database = SqliteHostDatabase::openFile(utf8Text(unfinished));
        database.createSchema();
        database.loadSample();
    }
    fs::rename(unfinished, file);
}

/// Four of the shop's days as one, as it would have gone until now: a day without movements shows little.
constexpr const char* SampleDay = R"(
    INSERT INTO tabPagamentiScontriniBackoffice(DataOperazione, TipoOperazione, idpagamento, Coefficiente,
        ImportoIncassato, Valuta, Note, Cassetto, idCassa, idutente)
    WITH clock(opening, now) AS (
        SELECT iif(passed > 9 * 3600, 8 * 3600, 0), passed
        FROM (SELECT strftime('%s', 'now', 'localtime') % 86400 AS passed)
    ), sample AS (
        SELECT *, strftime('%s', DataOperazione) % 86400 - 8 * 3600
            + 780 * (julianday('2026-11-14') - julianday(date(DataOperazione))) AS second
        FROM tabPagamentiScontriniBackoffice
        WHERE date(DataOperazione) BETWEEN '2026-11-11' AND '2026-11-14' AND TipoOperazione NOT IN (4, 8)
            AND (TipoOperazione <> 1 OR date(DataOperazione) = '2026-11-14')
    )
    SELECT datetime(date('now', 'localtime'),
            CAST(opening + min(1.0, (now - opening) / 43200.0) * second AS INTEGER) || ' seconds') AS moment,
        TipoOperazione, idpagamento, Coefficiente, ImportoIncassato, Valuta, Note, Cassetto, idCassa, idutente
    FROM sample, clock
    WHERE NOT EXISTS(
        SELECT 1 FROM tabPagamentiScontriniBackoffice WHERE date(DataOperazione) = date('now', 'localtime'))
    ORDER BY moment)";

HostDatabase openUserFile() {
    const fs::path file = userFile();
    if (!fs::exists(file))
        makeSample(file);
    auto database = SqliteHostDatabase::openFile(utf8Text(file));
    database.execute(SampleDay);
    auto connection = database.connection();
    return {std::move(database), std::move(connection)};
}

/// Opening tells nothing about rights and locks: only the attempt to write does.
void requireWritable(SqliteHostDatabase& database) {
    database.execute("BEGIN IMMEDIATE");
    database.execute("ROLLBACK");
}

} // namespace

HostDatabase openDemonstrationDatabase(const HostOptions& options) {
    HostDatabase database = wantsUserFile(options) ? openUserFile() : openHostDatabase(options, openDatabase);
    if (database.embedded)
        requireWritable(*database.embedded);
    return database;
}

std::string demonstrationDatabaseName(const HostOptions& options) {
    if (options.connection)
        return "--connection";
    return wantsUserFile(options) ? utf8Text(userFile()) : options.database;
}

} // namespace kova
