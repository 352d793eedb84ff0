#pragma once

struct sqlite3;

namespace kova {

/// Adds the date-time function and collation of rewritten texts, and makes NOCASE regard the Latin-1 letters
/// as well, as the shops' servers do. Returns SQLite's result code.
int addServerFunctions(sqlite3* database);

/// Adds the table-valued function GetDailyOperation(date): the rows of that day from the view Daily_Operation
/// (or a table of that name), in that view's order. Returns SQLite's result code.
int addDailyOperation(sqlite3* database);

} // namespace kova
