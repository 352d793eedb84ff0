#pragma once
#include "ports/database.h"

#include <memory>
#include <string>

struct IDispatch;

namespace kova {

/// A host's `Connection` object of ADO, which stays the host's: referred to, never closed, and not looked at
/// before a query. Nothing gives null, the empty slot.
std::shared_ptr<DatabaseConnection> shareAdo(IDispatch* connection);

/// A connection of one's own, opened with the text as it is, and opened anew after its link was lost. A
/// server that keeps it waiting in vain is left alone for a while, see ServerPause. Null where Windows has no
/// ADO that opens connections; throws DatabaseError when the opening fails.
std::shared_ptr<DatabaseConnection> openAdo(const std::string& connectionString,
                                            const ServerTimeouts& machine = {});

} // namespace kova
