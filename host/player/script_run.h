#pragma once
#include "shop/shop_database.h"

#include <functional>
#include <ostream>

namespace kova {

using DatabaseOpener = std::function<HostDatabase(const HostOptions&, const ServerOpener&)>;

/// Plays the script that the options name; the trace goes to `out`, a reason why it could not be played to
/// `errors`. Returns the exit status.
int runScript(const HostOptions& options, std::ostream& out, std::ostream& errors,
              const DatabaseOpener& openDatabase = openHostDatabase);

} // namespace kova
