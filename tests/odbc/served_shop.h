#pragma once
#include "shop/shop_database.h"

namespace kova::test {

/// An embedded database that a server answers from: on Windows one that runs outside, of the build machine.
ShopDatabase beginServedShop();
/// The component's way to it, through the server.
std::shared_ptr<DatabaseConnection> openServedShop(const ShopDatabase& host);

} // namespace kova::test
