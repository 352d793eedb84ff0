#pragma once
#include <optional>
#include <string>
#include <string_view>

namespace kova {

/// Value of a key in `key=value;key="value";…`, blanks around both trimmed; of several equal keys the last
/// one. Inside quotes of either kind a semicolon is a character, and a doubled quote one quote. `key` is
/// given in small letters and found in any case.
std::optional<std::string> connectionStringValue(std::string_view connectionString, std::string_view key);

} // namespace kova
