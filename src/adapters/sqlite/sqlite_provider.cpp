#include "adapters/sqlite/connection_string.h"
#include "adapters/sqlite/sqlite_database.h"
#include "adapters/sqlite/sqlite_handle.h"

namespace kova {

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
