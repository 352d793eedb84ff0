#pragma once
#include "ports/database.h"

#include <memory>
#include <string>

struct sqlite3;

namespace kova {

/// Opens an existing database file, UTF-8 path, to read only. Throws DatabaseError.
std::shared_ptr<DatabaseConnection> openSqlite(const std::string& file);

/// Understands `Data Source=FILE`, among other keys, which it ignores; the file is opened to read only.
class SqliteProvider final : public DatabaseProvider {
  public:
    std::shared_ptr<DatabaseConnection> open(const std::string& connectionString) override;
};

/// An open SQLite database with the names, functions and collations that the shops' SQL Server texts expect.
/// The component's connection and the host share one handle; the last owner closes it.
class SqliteHandle {
  public:
    enum class Access { ReadOnly, ReadWrite };

    /// A file in UTF-8, read-write ones created when missing. Throws DatabaseError when it cannot be opened
    /// or is no database.
    static std::shared_ptr<SqliteHandle> openFile(const std::string& file, Access access);
    static std::shared_ptr<SqliteHandle> openMemory();

    [[nodiscard]] sqlite3* get() const { return database_.get(); }

  private:
    struct Closer {
        void operator()(sqlite3* database) const;
    };
    SqliteHandle(const std::string& name, int flags);
    std::unique_ptr<sqlite3, Closer> database_;
};

/// Reads from a shared handle; refuses every statement that could write.
class SqliteConnection final : public DatabaseConnection {
  public:
    explicit SqliteConnection(std::shared_ptr<SqliteHandle> handle) : handle_(std::move(handle)) {}
    Recordset query(const Query& query) override;
    [[nodiscard]] bool onAnyThread() const override { return true; }

  private:
    std::shared_ptr<SqliteHandle> handle_;
};

} // namespace kova
