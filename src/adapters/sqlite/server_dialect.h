#pragma once
#include <string>
#include <string_view>

namespace kova {

/// Rewrites what SQLite does not understand of the shops' SQL Server texts: `TOP n`, `ISNULL(a,b)`,
/// `CONVERT(datetime,…,126)`, `N'…'` and comments in comments. Strings, [names] and "names" stay as they are,
/// and so does everything else, so that SQLite itself refuses what it cannot run. Throws DatabaseError for
/// TOP in a branch of a compound SELECT, which has no counterpart, and for a comment without an end.
std::string toSqliteDialect(std::string_view text);

/// Function and collation that a rewritten CONVERT(datetime,…) relies on: the function gives the text form of
/// a date-time, the collation compares such texts by the time that they name.
inline constexpr const char* ServerDateTimeName = "sqlserver_datetime";

} // namespace kova
