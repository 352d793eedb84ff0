#pragma once
#include "ports/database.h"
#include "ports/regional_settings.h"

#include <string>

namespace kova {

/// Which amounts carry a sign; zero never does.
enum class Sign { OfNegative, Always };

/// Digit by digit, so that no sum is too large to be right: grouped, with two decimals, more only where it
/// has more. The minus is the typographical one, as wide as a plus.
std::string moneyText(Decimal amount, const RegionalSettings& regional, Sign sign);

/// Hours and minutes in the region's form, as in 14:05 or 2:05 PM.
std::string timeOfDayText(DateTime time, const RegionalSettings& regional);

} // namespace kova
