#include "../database/database_contract.h"
#include "odbc_shop.h"
#include "served_shop.h"

namespace kova {
namespace {

using test::OdbcShop;
using Rows = std::vector<std::string>;

struct Served {
    Served(const ShopDatabase& host, const std::string& version)
        : server(host.connection(), {.version = version}) {}
    tds::TdsServer server;
    std::shared_ptr<DatabaseConnection> connection = openOdbc(server.connectionString());
};

/// A connection that owns the server that it leads to.
template <char Minor>
std::shared_ptr<DatabaseConnection> openServed(const ShopDatabase& host) {
    const auto served = std::make_shared<Served>(host, std::string("7.") + Minor);
    return {served, served->connection.get()};
}

TEST(OdbcVersions, QueriesArriveAsWrittenAndADayAsADate) {
    const std::tuple<const char*, unsigned, const char*> versions[] = {{"7.1", 0x71, "@P1 DATETIME"},
                                                                       {"7.2", 0x72, "@P1 DATETIME"},
                                                                       {"7.3", 0x73, "@P1 DATE"},
                                                                       {"7.4", 0x74, "@P1 DATE"}};
    const Query plain{"SELECT valore FROM tabImpostazioni WHERE descrizione='l''età'"};
    Query daily{"SELECT importo FROM [dbo].[GetDailyOperation](?)"};
    daily.parameters = {dayParameter(dateTime(2026, 11, 14))};
    for (const auto& [version, number, declaration] : versions) {
        OdbcShop shop(version);
        const auto connection = shop.open();
        EXPECT_EQ(rowsOf(connection->query(plain)), Rows{});
        EXPECT_EQ(rowsOf(connection->query(daily)), Rows{});
        const auto received = shop.server.takeReceived();
        ASSERT_EQ(received.size(), 2U);
        EXPECT_EQ(received[0].text, plain.text);
        EXPECT_EQ(received[0].declaration, "");
        EXPECT_EQ(received[1].text,
                  "SELECT importo FROM [dbo].[GetDailyOperation](@P1)"); // named by the driver
        EXPECT_EQ(received[1].declaration, declaration);
        EXPECT_EQ(received[1].dates, std::vector{daily.parameters[0].value});
        EXPECT_EQ(shop.server.takeVersions(), std::vector{number});
    }
}

} // namespace

ShopDatabase test::beginServedShop() {
    return ShopDatabase::inMemory();
}

std::shared_ptr<DatabaseConnection> test::openServedShop(const ShopDatabase& host) {
    return openServed<'4'>(host);
}

INSTANTIATE_TEST_SUITE_P(Odbc, DatabaseContract,
                         testing::Values(DatabaseAdapter{"Tds71", openServed<'1'>},
                                         DatabaseAdapter{"Tds72", openServed<'2'>},
                                         DatabaseAdapter{"Tds73", openServed<'3'>},
                                         DatabaseAdapter{"Tds74", openServed<'4'>}),
                         [](const auto& adapter) { return adapter.param.name; });

} // namespace kova
