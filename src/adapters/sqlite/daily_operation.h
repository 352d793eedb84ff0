#pragma once

struct sqlite3;

namespace kova {

/// Adds the table-valued function GetDailyOperation(date): the rows of that day from the view Daily_Operation
/// (or a table of that name), in that view's order. Returns SQLite's result code.
int addDailyOperation(sqlite3* database);

} // namespace kova
