#pragma once
#include <cstdint>
#include <memory>
#include <string>
#include <variant>

namespace kova {

/// A connection to the host's database, as `openDatabase` and `hostOdbcConnection` make them.
class DatabaseConnection;

/// A value of a late-bound call: empty, or one of the kinds that the interface uses.
using Variant = std::variant<std::monostate, std::int16_t, std::int32_t, double, bool, std::string,
                             std::shared_ptr<DatabaseConnection>>;

} // namespace kova
