#pragma once
#include "services/process_state.h"

#include <string>

namespace kova {

/// One setting of `tabImpostazioni` as text: `fallback` when the key is missing or its value Null. The key
/// goes into the query as it stands. A failure is logged and gives an empty text, not `fallback`.
std::string getDbValue(ProcessState& process, const std::string& key, const std::string& fallback);

/// Reads the settings and resets the selection, but for its currency. A failure is logged and ends the
/// reading; settings not yet read keep what they had.
void InitOpt(ProcessState& process);

} // namespace kova
