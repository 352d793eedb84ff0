#include "adapters/odbc/odbc_handles.h"

#include "adapters/odbc/odbc_error.h"
#include "base/utf16.h"

#include <set>
#include <sqlext.h>
#include <sqlucode.h>

namespace kova {
namespace {

/// The environment speaks ODBC 3 before anything else happens in it.
SQLHANDLE declareVersion(SQLHANDLE environment) {
    if (!succeeded(SQLSetEnvAttr(environment, SQL_ATTR_ODBC_VERSION, attributeNumber(SQL_OV_ODBC3), 0)))
        throw odbcError(SQL_HANDLE_ENV, environment);
    return environment;
}

/// The driver manager takes a name that nobody registered for a file that it cannot load, which would send
/// whoever reads the log looking for a file.
DatabaseError openingFailure(const DatabaseError& error, const std::string& driver) {
    const bool unknownName =
        error.sqlState().starts_with("01") && !driver.empty() && driver.find('/') == std::string::npos;
    if (!unknownName)
        return error;
    return {DatabaseError::Unspecified, "Data source name not found and no default driver specified",
            "IM002"};
}

} // namespace

std::string serverDriver() {
    const OdbcHandle environment(SQL_HANDLE_ENV, SQL_NULL_HANDLE);
    declareVersion(environment.get());
    std::set<std::string> drivers;
    SQLCHAR name[256] = {};
    SQLCHAR attributes[1] = {};
    for (SQLUSMALLINT which = SQL_FETCH_FIRST; succeeded(SQLDrivers(
             environment.get(), which, name, sizeof name, nullptr, attributes, sizeof attributes, nullptr));
         which = SQL_FETCH_NEXT)
        drivers.insert(reinterpret_cast<const char*>(name));
    // Windows comes with an old one of its own.
    std::string best =
        drivers.contains("SQL Server") && !drivers.contains("FreeTDS") ? "SQL Server" : "FreeTDS";
    for (const std::string& found : drivers)
        if (found.starts_with("ODBC Driver ") && found.ends_with(" for SQL Server"))
            best = found; // the newest is the last: 17, 18
    return best;
}

OdbcHandle::OdbcHandle(SQLSMALLINT kind, SQLHANDLE parent) : kind_(kind) {
    if (succeeded(SQLAllocHandle(kind, parent, &handle_)))
        return;
    if (kind == SQL_HANDLE_ENV)
        throw DatabaseError(DatabaseError::Unspecified, "No ODBC environment can be made", "HY001");
    throw odbcError(kind == SQL_HANDLE_STMT ? SQL_HANDLE_DBC : SQL_HANDLE_ENV, parent);
}

SQLPOINTER attributeNumber(std::uintptr_t value) {
    return reinterpret_cast<SQLPOINTER>(value); // NOLINT(performance-no-int-to-ptr)
}

bool isDead(SQLHDBC connection) {
    SQLUINTEGER dead = SQL_CD_FALSE;
    const auto result = SQLGetConnectAttrW(connection, SQL_ATTR_CONNECTION_DEAD, &dead, 0, nullptr);
    return succeeded(result) && dead == SQL_CD_TRUE;
}

void OdbcStatementHandle::require(SQLRETURN result) const {
    if (succeeded(result))
        return;
    if (isDead(connection_))
        throw lostConnectionError(SQL_HANDLE_STMT, get());
    throw odbcError(SQL_HANDLE_STMT, get());
}

OdbcSession::OdbcSession(const OdbcConnectionText& text)
    : environment_(SQL_HANDLE_ENV, SQL_NULL_HANDLE),
      connection_(SQL_HANDLE_DBC, declareVersion(environment_.get())) {
    const auto seconds = static_cast<std::uintptr_t>(text.logInTimeout.count());
    SQLSetConnectAttrW(get(), SQL_ATTR_LOGIN_TIMEOUT, attributeNumber(seconds), 0); // a driver may have none
    std::u16string wide = toUtf16(text.driverText);
    const auto connected =
        SQLDriverConnectW(get(), nullptr, reinterpret_cast<SQLWCHAR*>(wide.data()),
                          static_cast<SQLSMALLINT>(wide.size()), nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT);
    if (!succeeded(connected))
        throw openingFailure(odbcError(SQL_HANDLE_DBC, get()), text.driver);
}

} // namespace kova
