#pragma once
#include "ports/database.h"

#include <cstddef>
#include <exception>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace kova {

/// A result whose connection dies under the cursor: the record count is known, but no cell can be read from
/// some row on.
class BreakingSnapshot final : public Snapshot {
  public:
    BreakingSnapshot(std::size_t readableRows, const DatabaseError& error)
        : readableRows_(readableRows), error_(std::make_exception_ptr(error)) {}
    [[nodiscard]] Value at(std::size_t row, std::size_t column) const override {
        if (row >= readableRows_)
            std::rethrow_exception(error_);
        return Snapshot::at(row, column);
    }
    /// Takes over the rest of what another result has.
    void copy(Recordset records) {
        for (std::size_t column = 0; column < records.fieldCount(); ++column)
            addColumn(records.fieldName(column));
        for (; !records.endOfFile(); records.moveNext()) {
            for (std::size_t column = 0; column < records.fieldCount(); ++column)
                add(records.field(column));
            endRow();
        }
    }

  private:
    std::size_t readableRows_;
    std::exception_ptr error_;
};

/// Watches every query of the component: keeps its text, and lets it fail where a script says so.
class QueryWatch {
  public:
    struct FailRule {
        std::string piece; ///< of the query's text
        std::string message;
        std::optional<std::size_t> afterRows; ///< nothing: fails when opened
    };
    void add(FailRule rule) { rules_.push_back(std::move(rule)); }
    void clearRules() { rules_.clear(); }
    /// The queries since the last call, in order.
    std::vector<Query> takeQueries() { return std::exchange(queries_, {}); }

    Recordset run(DatabaseConnection& connection, const Query& query);

  private:
    std::vector<FailRule> rules_;
    std::vector<Query> queries_;
};

class WatchedConnection final : public DatabaseConnection {
  public:
    /// The watch outlives the connection.
    WatchedConnection(std::shared_ptr<DatabaseConnection> connection, QueryWatch& watch)
        : connection_(std::move(connection)), watch_(watch) {}
    Recordset query(const Query& query) override { return watch_.run(*connection_, query); }
    [[nodiscard]] bool onAnyThread() const override { return connection_->onAnyThread(); }

  private:
    std::shared_ptr<DatabaseConnection> connection_;
    QueryWatch& watch_;
};

/// Opens the host's own connection under the name "Data Source=:host:", and every other through another
/// provider; all of them watched.
class ScriptDatabases final : public DatabaseProvider {
  public:
    /// All three outlive the provider.
    ScriptDatabases(std::shared_ptr<DatabaseConnection> hostConnection, DatabaseProvider& others,
                    QueryWatch& watch)
        : hostConnection_(std::move(hostConnection)), others_(others), watch_(watch) {}
    std::shared_ptr<DatabaseConnection> open(const std::string& connectionString) override;
    [[nodiscard]] std::shared_ptr<DatabaseConnection> hostConnection() const;

  private:
    std::shared_ptr<DatabaseConnection> hostConnection_;
    DatabaseProvider& others_;
    QueryWatch& watch_;
};

} // namespace kova
