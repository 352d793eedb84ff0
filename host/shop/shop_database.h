#pragma once
#include "ports/database.h"
#include "services/movement.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace kova {

class SqliteHandle;
struct HostOptions;

/// One row of the shop's movements: what the component handed over, and what the host knows besides.
struct StoredMovement {
    DateTime time{};
    std::int32_t till = -1;
    std::int32_t user = -1;
    Movement movement;
};

/// The database of a shop without a server: holds its tables and takes the movements. This is the side that
/// writes; the component gets `connection()`. All operations throw DatabaseError.
class ShopDatabase {
  public:
    /// Without tables.
    static ShopDatabase inMemory();
    /// Opens the file, UTF-8 path, and creates it when it does not exist, without tables then.
    static ShopDatabase openFile(const std::string& file);
    /// A shop in memory without movements (`empty`) or with some of its days (`sample`), or an existing file.
    static ShopDatabase open(const std::string& what);
    /// The sample in a file that keeps the movements from one start to the next. The first start makes it,
    /// whole or not at all, and each fills the days of a year up to today that have none. Throws
    /// std::exception.
    static ShopDatabase openSampleFile(const std::string& file);

    /// All of it or nothing.
    void createSchema();
    /// The demonstration shop, into empty tables of the schema; all of it or nothing.
    void loadSample();
    /// Opening tells nothing about rights and locks: only this attempt to write does.
    void requireWritable();

    /// Runs any statements, in SQLite's dialect or the one that the component's queries use. When one fails,
    /// those before it have taken effect.
    void execute(const std::string& sql);
    /// Committed when it returns, unless `execute` began a transaction.
    void storeMovement(const StoredMovement& stored);

    /// The same database for the component; may outlive this object.
    [[nodiscard]] std::shared_ptr<DatabaseConnection> connection() const;

  private:
    explicit ShopDatabase(std::shared_ptr<SqliteHandle> handle) : handle_(std::move(handle)) {}
    void executeTogether(const std::string& sql);
    std::shared_ptr<SqliteHandle> handle_;
};

/// The database that a host works with.
struct HostDatabase {
    std::optional<ShopDatabase> embedded; ///< nothing when the host works on a server
    std::shared_ptr<DatabaseConnection> connection;
};

/// Opens a server by its connection string.
using ServerOpener = std::function<std::shared_ptr<DatabaseConnection>(const std::string&)>;

/// Opens what the options ask for; an embedded one in memory gets its tables. Throws DatabaseError.
HostDatabase openHostDatabase(const HostOptions& options, const ServerOpener& openServer);

} // namespace kova
