#pragma once
#include "adapters/sqlite/sqlite_database.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace kova {

struct HostOptions;

/// The database that the host works with.
struct HostDatabase {
    std::optional<SqliteHostDatabase> embedded; ///< nothing when the host works on a server
    std::shared_ptr<DatabaseConnection> connection;
};

/// Opens a server by its connection string.
using ServerOpener = std::function<std::shared_ptr<DatabaseConnection>(const std::string&)>;

/// Opens what the options ask for; an embedded one in memory gets its tables. Throws DatabaseError.
HostDatabase openHostDatabase(const HostOptions& options, const ServerOpener& openServer);

} // namespace kova
