#pragma once
#include "ports/database.h"

#ifdef _WIN32
#include <windows.h> // whose types the headers of ODBC need
#endif
#include <sql.h>

namespace kova {

// Error numbers beside those of DatabaseError, as the shops' data access reports them.
inline constexpr std::int32_t LogInRefused = -2147217843;
inline constexpr std::int32_t QueryTimedOut = -2147217871;

/// The error for a driver's SQLSTATE, of ODBC 3 or of ODBC 2, the server's own error number and the text. Its
/// number tells the kind of failure, the description ends with SQLSTATE and the server's number.
DatabaseError asDatabaseError(std::string state, std::int32_t native, std::string text);

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
