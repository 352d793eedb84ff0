#pragma once
#include <chrono>
#include <string>
#include <string_view>

namespace kova {

/// A connection string as it goes to the driver manager, with the time-outs that are ours taken out.
struct OdbcConnectionText {
    std::string driverText;
    std::string driver;                    ///< value of `Driver`, without braces; empty when a DSN is named
    std::chrono::seconds logInTimeout{15}; ///< 0: none
    std::chrono::seconds queryTimeout{30};
};

/// Names a server rather than a file: a driver or data source of ODBC (`Driver=…`, `DSN=…` or `FILEDSN=…`),
/// or the form that ADO takes (`Provider=…`, or `Data Source=SERVER` with any other key of a server).
bool namesOdbc(std::string_view connectionString);

/// Names a provider of ADO, and no driver or data source of ODBC.
bool namesAdoProvider(std::string_view connectionString);

/// Reads `Connection Timeout` (or `Connect Timeout`) and `Query Timeout` (or `Command Timeout`), in seconds;
/// names in any letter case, values in braces or not. Of a text that names a driver or data source everything
/// else stays byte for byte. One in ADO's form is translated for `defaultDriver`, the name of an installed
/// ODBC driver for SQL Server: values in quotes or braces, servers also as `host,port`, `host\instance`,
/// `tcp:host`, `(local)` or `.`. Throws DatabaseError for a time-out that is no number of seconds, and for a
/// provider or key of ADO's form that has no counterpart, which it names.
OdbcConnectionText parseOdbcConnectionText(std::string_view connectionString,
                                           const std::string& defaultDriver = "FreeTDS");

} // namespace kova
