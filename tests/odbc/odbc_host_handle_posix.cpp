// A connection that the host opened and keeps, given to the component.

#include "../database/database_contract.h"
#include "odbc_shop.h"

#include <sqlext.h>

namespace kova::test {
namespace {

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
    EXPECT_EQ(rows(), std::vector<std::string>{"€"});
    EXPECT_EQ(rows(), std::vector<std::string>{"€"});
    EXPECT_EQ(shop.server.takeVersions().size(), 1u);

    shop.server.stop();
    shop.server.start();
    EXPECT_EQ(failure().number(), DatabaseError::NotConnected);
    EXPECT_EQ(failure().number(), DatabaseError::NotConnected) << "opening it again is the host's";
    ASSERT_TRUE(host.connect(shop.server.connectionString()));
    EXPECT_EQ(rows(), std::vector<std::string>{"€"});
    connection.reset();
    connection = shareOdbc(host.connection());
    EXPECT_EQ(rows(), std::vector<std::string>{"€"}) << "released, not closed";
}

TEST(OdbcHostHandle, OfOdbc2GivesTheSameCellsAndErrors) {
    const OdbcShop shop;
    HostOdbc host(SQL_OV_ODBC2);
    ASSERT_TRUE(host.connect(shop.server.connectionString()));
    const auto connection = shareOdbc(host.connection());
    const Query times{
        "SEND 28 0343490b 2907 05ffbf692ac9 6f08 08e8b30000ff818b01 2b07 0a7f2220fac443490b3c00"};
    EXPECT_EQ(rowsOf(connection->query(times)),
              std::vector<std::string>{"05.02.2026|23:59:59|05.02.2026 23:59:59|06.02.2026 00:30:00"});
    EXPECT_EQ(databaseErrorOf([&] { (void)connection->query({"SELECT * FROM nowhere"}); }).sqlState(),
              "42S02");
}

} // namespace
} // namespace kova::test
