#pragma once
#include "adapters/odbc/odbc_database.h"
#include "kova-test-server/tds_server.h"
#include "shop/shop_database.h"

namespace kova::test {

using namespace tds;

/// A shop whose embedded database is reached through a server on the loopback interface.
class OdbcShop {
  public:
    explicit OdbcShop(const std::string& version = "7.4") : server(host.connection(), {.version = version}) {
        host.createSchema();
    }
    [[nodiscard]] std::shared_ptr<DatabaseConnection> open(const std::string& more = "") const {
        return openOdbc(server.connectionString(more));
    }

    ShopDatabase host = ShopDatabase::inMemory();
    TdsServer server;
};

} // namespace kova::test
