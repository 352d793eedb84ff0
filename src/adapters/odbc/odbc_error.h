#pragma once
#include "ports/database.h"

#ifdef _WIN32
#include <windows.h> // whose types the headers of ODBC need
#endif
#include <sql.h>

namespace kova {

/// What the driver says about the last failed call on a handle.
DatabaseError odbcError(SQLSMALLINT handleKind, SQLHANDLE handle);

/// The same when the link is known to be dead: a time-out, or a connection failure whatever state the driver
/// gives.
DatabaseError lostConnectionError(SQLSMALLINT handleKind, SQLHANDLE handle);

/// The link to the server is gone, or was never there.
bool isConnectionFailure(const DatabaseError& error);

inline bool succeeded(SQLRETURN result) {
    return result == SQL_SUCCESS || result == SQL_SUCCESS_WITH_INFO;
}

} // namespace kova
