#pragma once
#include "platform/database.h"

#include <sql.h>

namespace kova {

// Error numbers beside those of DatabaseError, as the shops' data access reports them.
inline constexpr std::int32_t logInRefused = -2147217843;
inline constexpr std::int32_t queryTimedOut = -2147217871;

/// What the driver says about the last failed call on a handle. The number tells the kind of failure, the
/// description ends with the SQLSTATE and the server's own error number.
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
