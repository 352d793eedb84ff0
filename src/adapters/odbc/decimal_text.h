#pragma once
#include "ports/database.h"

#include <string_view>

namespace kova {

/// Reads a driver's text of an exact number: an optional sign, digits, a point and digits; the digits before
/// the point may be missing (".5"). A number that a Decimal cannot hold arrives as a LongDecimal, and a text
/// that is no number as the text itself; both are views into `text`.
Value decimalFromText(std::string_view text);

} // namespace kova
