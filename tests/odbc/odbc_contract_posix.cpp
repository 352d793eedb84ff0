#include "../database/database_contract.h"
#include "odbc_shop.h"
#include "served_shop.h"

#include <sqlext.h>

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

// A connection that the host opened and keeps, given to the component.

/// The host's own way to its server.
class HostOdbc {
  public:
    explicit HostOdbc(std::uintptr_t version) {
        SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &environment_);
        SQLSetEnvAttr(environment_, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(version), 0);
        SQLAllocHandle(SQL_HANDLE_DBC, environment_, &connection_);
    }
    HostOdbc(const HostOdbc&) = delete;
    HostOdbc& operator=(const HostOdbc&) = delete;
    ~HostOdbc() {
        SQLDisconnect(connection_);
        SQLFreeHandle(SQL_HANDLE_DBC, connection_);
        SQLFreeHandle(SQL_HANDLE_ENV, environment_);
    }
    bool connect(std::string text) {
        SQLDisconnect(connection_);
        return SQL_SUCCEEDED(SQLDriverConnect(connection_, nullptr, reinterpret_cast<SQLCHAR*>(text.data()),
                                              SQL_NTS, nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT));
    }
    [[nodiscard]] SQLHDBC connection() const { return connection_; }

  private:
    SQLHENV environment_ = nullptr;
    SQLHDBC connection_ = nullptr;
};

TEST(OdbcHostHandle, IsReadFromAndNeitherClosedNorOpenedAnew) {
    OdbcShop shop;
    shop.host.execute("INSERT INTO tabValute VALUES('€')");
    HostOdbc host(SQL_OV_ODBC3);
    auto connection = shareOdbc(host.connection());
    const auto rows = [&] { return rowsOf(connection->query({"SELECT Valuta FROM tabValute"})); };
    const auto failure = [&] { return databaseErrorOf([&] { (void)rows(); }); };
    EXPECT_EQ(failure().number(), DatabaseError::NotConnected) << "not open yet";

    ASSERT_TRUE(host.connect(shop.server.connectionString()));
    EXPECT_EQ(rows(), Rows{"€"});
    EXPECT_EQ(rows(), Rows{"€"});
    EXPECT_EQ(shop.server.takeVersions().size(), 1u);

    shop.server.stop();
    shop.server.start();
    EXPECT_EQ(failure().number(), DatabaseError::NotConnected);
    EXPECT_EQ(failure().number(), DatabaseError::NotConnected) << "opening it again is the host's";
    ASSERT_TRUE(host.connect(shop.server.connectionString()));
    EXPECT_EQ(rows(), Rows{"€"});
    connection.reset();
    connection = shareOdbc(host.connection());
    EXPECT_EQ(rows(), Rows{"€"}) << "released, not closed";
}

TEST(OdbcHostHandle, OfOdbc2GivesTheSameCellsAndErrors) {
    const OdbcShop shop;
    HostOdbc host(SQL_OV_ODBC2);
    ASSERT_TRUE(host.connect(shop.server.connectionString()));
    const auto connection = shareOdbc(host.connection());
    const Query times{
        "SEND 28 0343490b 2907 05ffbf692ac9 6f08 08e8b30000ff818b01 2b07 0a7f2220fac443490b3c00"};
    EXPECT_EQ(rowsOf(connection->query(times)),
              Rows{"05.02.2026|23:59:59|05.02.2026 23:59:59|06.02.2026 00:30:00"});
    const Query many{"WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 999) "
                     "SELECT i, iif(i % 3, NULL, 'n. ' || i) FROM n"};
    EXPECT_EQ(rowsOf(connection->query(many)), rowsOf(shop.host.connection()->query(many)));
    EXPECT_EQ(databaseErrorOf([&] { (void)connection->query({"SELECT * FROM nowhere"}); }).sqlState(),
              "42S02");
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
