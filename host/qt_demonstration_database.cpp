#include "qt_demonstration_database.h"

#include "host_options.h"

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

HostDatabase openUserFile() {
    const fs::path file = userFile();
    if (!fs::exists(file))
        makeSample(file);
    auto database = SqliteHostDatabase::openFile(utf8Text(file));
    auto connection = database.connection();
    return {std::move(database), std::move(connection)};
}

/// Opening tells nothing about rights and locks: only the attempt to write does.
void requireWritable(SqliteHostDatabase& database) {
    database.execute("BEGIN IMMEDIATE");
    database.execute("ROLLBACK");
}

} // namespace

HostDatabase openDemonstrationDatabase(const HostOptions& options, DatabaseProvider& servers) {
    HostDatabase database = wantsUserFile(options) ? openUserFile() : openHostDatabase(options, servers);
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
