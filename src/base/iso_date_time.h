#pragma once
#include "base/date_time.h"

#include <optional>
#include <string>
#include <string_view>

namespace kova {

// Times without a zone in the order of ISO 8601, whatever the region.

/// Reads `YYYY-MM-DD`, or that with a blank or `T` and `HH:MM[:SS[.fraction]]`; digits past the milliseconds
/// are dropped. Nothing for every other text.
std::optional<DateTime> parseIsoDateTime(std::string_view text);

/// `YYYY-MM-DD HH:MM:SS`, with `.mmm` only when it is not zero, so that texts sort as the times they name.
std::string formatIsoDateTime(DateTime time, char betweenDayAndTime = ' ');

} // namespace kova
