#pragma once
#include "adapters/odbc/odbc_handles.h"
#include "ports/database.h"

#include <list>
#include <optional>

namespace kova {

/// One query on one connection, from its text to its rows. All operations throw DatabaseError.
class OdbcStatement {
  public:
    /// Without a time-out the driver's own holds.
    OdbcStatement(SQLHDBC connection, std::optional<std::chrono::seconds> timeout);

    /// Sends the text as it is, with its parameters; returns when the server begins to answer.
    void execute(const Query& query);
    /// Reads forward to the end.
    std::shared_ptr<const Snapshot> readAll();

  private:
    void bindParameter(const DateParameter& parameter);
    void skipToRows();
    OdbcStatementHandle handle_;
    std::list<SQL_DATE_STRUCT> dates_;             ///< the driver reads them when the text is sent
    std::atomic<std::size_t>* rowsRead_ = nullptr; ///< of the query
    SQLLEN dateSize_ = sizeof(SQL_DATE_STRUCT);
};

} // namespace kova
