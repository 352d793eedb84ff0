#pragma once
#include "ports/database.h"

#include <cstdint>
#include <memory>
#include <string>

namespace kova {

class SqliteHandle;

/// Opens an existing database file, UTF-8 path, to read only. Throws DatabaseError.
std::shared_ptr<DatabaseConnection> openSqlite(const std::string& file);

/// Understands `Data Source=FILE`, among other keys, which it ignores; the file is opened to read only.
class SqliteProvider final : public DatabaseProvider {
  public:
    std::shared_ptr<DatabaseConnection> open(const std::string& connectionString) override;
};

/// One row of the host's movement table, as a host stores what the component hands over.
struct StoredMovement {
    DateTime dataOperazione{};
    std::int32_t tipoOperazione = 0; ///< id of the activity
    std::int32_t idpagamento = 0;
    std::int32_t coefficiente = 1; ///< 1 into the drawer, -1 out of it
    double importoIncassato = 0;   ///< without a sign of its own
    std::string valuta;
    std::string note;
    std::int32_t cassetto = 0; ///< [0-4], 0 for none
    std::int32_t idCassa = -1;
    std::int32_t idutente = -1;
};

/// The database of a host that has no server: holds the shop's tables and takes the movements. This is the
/// side that writes; the component gets `connection()`. All operations throw DatabaseError.
class SqliteHostDatabase {
  public:
    static SqliteHostDatabase inMemory();
    /// Opens the file, UTF-8 path, and creates it when it does not exist.
    static SqliteHostDatabase openFile(const std::string& file);
    /// A shop in memory without movements (`empty`) or with some of its days (`sample`), or an existing file.
    static SqliteHostDatabase open(const std::string& what);

    /// No table and no view yet.
    [[nodiscard]] bool isEmpty() const;
    /// All of it or nothing.
    void createSchema();
    /// The demonstration shop, into empty tables of the schema; all of it or nothing.
    void loadSample();

    /// Runs any statements, in SQLite's dialect or the one that the component's queries use. When one fails,
    /// those before it have taken effect.
    void execute(const std::string& sql);
    /// Committed when it returns, unless `execute` began a transaction. Returns the row's id.
    std::int64_t storeMovement(const StoredMovement& movement);

    /// The same database for the component; may outlive this object.
    [[nodiscard]] std::shared_ptr<DatabaseConnection> connection() const;

  private:
    explicit SqliteHostDatabase(std::shared_ptr<SqliteHandle> handle) : handle_(std::move(handle)) {}
    void executeTogether(const std::string& sql);
    std::shared_ptr<SqliteHandle> handle_;
};

} // namespace kova
