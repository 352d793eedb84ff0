#pragma once
#include <ostream>

namespace kova {

struct HostOptions;

/// Plays the script that the options name; the trace goes to `out`, a reason why it could not be played to
/// `errors`. Returns the exit status.
int runScript(const HostOptions& options, std::ostream& out, std::ostream& errors);

} // namespace kova
