#pragma once
#include <QString>

namespace kova {

/// An amount as it was stored: grouped, with two decimals, more only where it has more (up to four).
QString amountText(double amount);

} // namespace kova
