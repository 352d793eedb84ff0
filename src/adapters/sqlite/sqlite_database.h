#pragma once
#include "ports/database.h"

#include <memory>
#include <string>

namespace kova {

/// Opens an existing database file, UTF-8 path, to read only. Throws DatabaseError.
std::shared_ptr<DatabaseConnection> openSqlite(const std::string& file);

/// Understands `Data Source=FILE`, among other keys, which it ignores; the file is opened to read only.
class SqliteProvider final : public DatabaseProvider {
  public:
    std::shared_ptr<DatabaseConnection> open(const std::string& connectionString) override;
};

} // namespace kova
