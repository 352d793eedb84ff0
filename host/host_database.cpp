#include "host_database.h"

#include "host_options.h"

#include <filesystem>

namespace kova {
namespace {

SqliteHostDatabase openEmbedded(const std::string& what) {
    if (what != "empty" && what != "sample") {
        if (!std::filesystem::exists(std::filesystem::path(std::u8string(what.begin(), what.end()))))
            throw DatabaseError(DatabaseError::Unspecified, "no such file: " + what, "08001");
        return SqliteHostDatabase::openFile(what);
    }
    auto database = SqliteHostDatabase::inMemory();
    database.createSchema();
    if (what == "sample")
        database.loadSample();
    return database;
}

} // namespace

HostDatabase openHostDatabase(const HostOptions& options, DatabaseProvider& servers) {
    if (options.connection)
        return {std::nullopt, servers.open(*options.connection)};
    auto database = openEmbedded(options.database);
    auto connection = database.connection();
    return {std::move(database), std::move(connection)};
}

} // namespace kova
