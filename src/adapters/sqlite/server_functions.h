#pragma once

struct sqlite3;

namespace kova {

/// Adds the date-time function and collation of rewritten texts, and makes NOCASE regard the Latin-1 letters
/// as well, as the shops' servers do. Returns SQLite's result code.
int addServerFunctions(sqlite3* database);

} // namespace kova
