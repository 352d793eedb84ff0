#pragma once
#include "adapters/odbc/odbc_connection_text.h"
#include "ports/database.h"

#include <memory>
#include <string>

namespace kova {

/// Opens a connection that keeps itself alive: when the link turns out dead as a query is sent, it connects
/// again and sends the query once more; when it dies while rows are read, the query fails, and the next one
/// connects again. A server that keeps it waiting in vain is left alone for a while, see ServerPause.
/// Connection strings as OdbcConnectionText reads them; time-outs that the machine is set to overrule theirs.
/// Throws DatabaseError.
std::shared_ptr<DatabaseConnection> openOdbc(const std::string& connectionString,
                                             const ServerTimeouts& machine = {});

/// How long that connection waits for the server when it is opened; 0: as long as it likes. Throws
/// DatabaseError for what is no connection string.
std::chrono::seconds odbcLogInTimeout(const std::string& connectionString, const ServerTimeouts& machine);

/// Reads from a connection that the host opened: an SQLHDBC, which stays the host's. It is never closed and
/// never opened again, its time-outs are the host's, and it must stay valid as long as it is used.
std::shared_ptr<DatabaseConnection> shareOdbc(void* connectionHandle);

} // namespace kova
