#pragma once
#include "ports/database.h"

#include <optional>
#include <string>
#include <string_view>

namespace kova {

/// Reads `YYYY-MM-DD`, or that with a blank or `T` and `HH:MM[:SS[.fraction]]`; digits past the milliseconds
/// are dropped. Nothing for every other text.
std::optional<DateTime> parseDateTimeText(std::string_view text);

/// `YYYY-MM-DD HH:MM:SS`, with `.mmm` only when it is not zero, so that texts sort as the times they name.
std::string formatDateTimeText(DateTime time);

} // namespace kova
