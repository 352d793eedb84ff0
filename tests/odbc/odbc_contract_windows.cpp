// Through the driver manager of Windows, to the server that with_server.sh has started.
#include "../database/database_contract.h"
#include "adapters/odbc/odbc_database.h"
#include "served_shop.h"

#include <cstdlib>

namespace kova {

ShopDatabase test::beginServedShop() {
    return ShopDatabase::openFile(std::getenv("KOVA_SERVED_SHOP"));
}

std::shared_ptr<DatabaseConnection> test::openServedShop(const ShopDatabase&) {
    return openOdbc(std::getenv("KOVA_SERVER"));
}

INSTANTIATE_TEST_SUITE_P(Odbc, DatabaseContract,
                         testing::Values(DatabaseAdapter{"Windows", test::openServedShop,
                                                         test::beginServedShop}),
                         [](const auto& adapter) { return adapter.param.name; });

} // namespace kova
