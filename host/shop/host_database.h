#pragma once
#include "adapters/sqlite/sqlite_database.h"

#include <optional>

namespace kova {

struct HostOptions;

/// The database that the host works with.
struct HostDatabase {
    std::optional<SqliteHostDatabase> embedded; ///< nothing when the host works on a server
    std::shared_ptr<DatabaseConnection> connection;
};

/// Opens what the options ask for; an embedded one in memory gets its tables. Throws DatabaseError.
HostDatabase openHostDatabase(const HostOptions& options, DatabaseProvider& servers);

} // namespace kova
