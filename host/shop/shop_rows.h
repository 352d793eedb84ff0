#pragma once
#include "ports/database.h"
#include "ports/regional_settings.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kova {

// What a host's own window shows of the shop's tables. All throw DatabaseError, and Error for cells that
// cannot be read as what they should be.

struct NamedId {
    std::int32_t id;
    std::string name;
};

/// What the shop's tables offer to choose from, and the names behind the ids of an event.
struct ShopCatalogues {
    std::vector<NamedId> users, payments, activities;
    std::vector<std::string> currencies;
};
ShopCatalogues readCatalogues(DatabaseConnection& connection, const RegionalSettings& regional);

/// A stored movement as people read it; a text is empty, and a value missing, where the cell is Null.
struct ListedMovement {
    std::string moment, activity, payment, currency, note, drawer, till, user;
    std::optional<bool> incoming;
    std::optional<double> amount;
};
/// The last 200 rows stored, newest first.
std::vector<ListedMovement> latestMovements(DatabaseConnection& connection, const RegionalSettings& regional);

} // namespace kova
