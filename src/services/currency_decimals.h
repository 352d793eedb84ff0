#pragma once
#include <string_view>

namespace kova {

/// How many decimals amounts of a currency have, by ISO 4217. It may be named by its code, letter case
/// aside, or by a common sign; 2 where the name is not known.
[[nodiscard]] int decimalsOf(std::string_view currency);

} // namespace kova
