#pragma once
#include "ports/database.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace kova {

/// Throws what SQLite has to say about the last failure on this handle.
[[noreturn]] void throwSqliteError(sqlite3* database, int code);

/// One compiled statement. All operations throw DatabaseError.
class SqliteStatement {
  public:
    /// Compiles the first statement of `sql`, a text in SQLite's own dialect that must outlive `rest()`.
    SqliteStatement(sqlite3* database, std::string_view sql);

    /// Nothing but blanks and comments.
    [[nodiscard]] bool empty() const { return !statement_; }
    /// What follows the first statement.
    [[nodiscard]] std::string_view rest() const { return rest_; }
    [[nodiscard]] bool readOnly() const;
    [[nodiscard]] int parameterCount() const;

    /// Positions count from 1. A text must stay alive until the last step.
    void bind(int position, const Value& value);
    /// True while there is a row.
    bool step();
    /// Steps to the end, and takes all rows on the way.
    std::shared_ptr<const Snapshot> readAll();

  private:
    struct Finalizer {
        void operator()(sqlite3_stmt* statement) const;
    };
    [[nodiscard]] std::vector<std::string> columnNames() const;
    sqlite3* database_;
    std::unique_ptr<sqlite3_stmt, Finalizer> statement_;
    std::string_view rest_;
};

} // namespace kova
