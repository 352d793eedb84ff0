#pragma once
#include <chrono>
#include <string>
#include <string_view>

namespace kova {

/// A connection string as it goes to the driver manager, with the time-outs that are ours taken out.
struct OdbcConnectionText {
    std::string driverText;
    std::string driver;                   ///< value of `Driver`, without braces; empty when a DSN is named
    std::chrono::seconds logInTimeout{5}; ///< 0: none; the cashier's window stands still for as long
    std::chrono::seconds queryTimeout{30};
};

/// Names an ODBC driver or data source: `Driver=…`, `DSN=…` or `FILEDSN=…`.
bool namesOdbc(std::string_view connectionString);

/// Reads `Connection Timeout` (or `Connect Timeout`) and `Query Timeout` (or `Command Timeout`), in seconds;
/// names in any letter case, values in braces or not. Everything else stays byte for byte. Throws
/// DatabaseError for a time-out that is no number of seconds.
OdbcConnectionText parseOdbcConnectionText(std::string_view connectionString);

} // namespace kova
