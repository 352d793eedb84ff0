#include "../database/database_contract.h"
#include "odbc_shop.h"
#include "services/conversions.h"

namespace kova {
namespace {

using test::OdbcShop;
using Rows = std::vector<std::string>;

TEST(OdbcConnection, OpensWithBracesAtTheEndAndInAdosForm) {
    const OdbcShop shop;
    const std::string place = std::to_string(shop.server.port());
    for (const std::string& text :
         {"Driver=FreeTDS;Server=127.0.0.1;Port=" + place + ";Database=shop;Uid=till;Pwd={se;cret}",
          "Provider=SQLOLEDB;Data Source=127.0.0.1," + place +
              ";Initial Catalog=shop;User ID=till;Password='se;cret'"})
        EXPECT_EQ(rowsOf(openOdbc(text)->query({"SELECT 7"})), Rows{"7"}) << text;
}

struct Served {
    Served(const SqliteHostDatabase& host, const std::string& version) : server(host.connection(), version) {}
    test::TdsServer server;
    std::shared_ptr<DatabaseConnection> connection = openOdbc(server.connectionString());
};

/// A connection that owns the server that it leads to.
template <char Minor>
std::shared_ptr<DatabaseConnection> openServed(const SqliteHostDatabase& host) {
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

struct ServerType {
    const char *name, *type, *cell, *null, *shown;
};

// The bytes of a type and of a cell, as the server sends them, and what a cashier in Italy reads.
const ServerType serverTypes[] = {
    {"bit", "6801", "0101", "00", "True"},
    {"tinyint", "2601", "01ff", "00", "255"},
    {"smallint", "2602", "0218fc", "00", "-1000"},
    {"int", "2604", "04ffffff7f", "00", "2147483647"},
    {"bigint", "2608", "080000000000000080", "00", "-9223372036854775808"},
    {"real", "6d04", "04cdcc4441", "00", "12,3"},
    {"float", "6d08", "089a9999999999b93f", "00", "0,1"},
    {"decimal(38,10)", "6a11260a", "1100ffffffff3f228a097ac4865aa84c3b4b", "00",
     "-9999999999999999999999999999,9999999999"},
    {"numeric(38,38)", "6c112626", "110100000000e0be5a0a1aa25761911ce700", "00", "0,012"},
    {"smallmoney", "6e04", "04f81dfeff", "00", "-12,34"},
    {"money", "6e08", "08ffffff7fffffffff", "00", "922337203685477,5807"},
    {"char", "af05000904d00034", "05008075726f20", "ffff", "€uro "},
    {"varchar", "a714000904d00034", "08007065726368e92080", "ffff", "perché €"},
    {"varchar(max)", "a7ffff0904d00034", "0100000000000000010000008000000000", "ffffffffffffffff", "€"},
    {"nchar", "ef04000904d00034", "0400ea962000", "ffff", "雪 "},
    {"nvarchar", "e714000904d00034", "0a00ab00ac20bb002000ea96", "ffff", "«€» 雪"},
    {"text", "23ffffff7f0904d0003400", "1078787878787878787878787878787878787878787878787804000000706572f2",
     "00", "però"},
    {"ntext", "63ffffff7f0904d0003400", "1078787878787878787878787878787878787878787878787802000000ea96",
     "00", "雪"},
    {"date", "28", "0343490b", "00", "05/02/2026"},
    {"time(7)", "2907", "05ffbf692ac9", "00", "23:59:59"},
    {"time(0)", "2900", "03000000", "00", "00:00:00"},
    {"smalldatetime", "6f04", "04e8b37602", "00", "05/02/2026 10:30:00"},
    {"datetime", "6f08", "08e8b30000ff818b01", "00", "05/02/2026 23:59:59"},
    {"datetime2", "2a07", "08ffbf692ac943490b", "00", "05/02/2026 23:59:59"},
    {"datetimeoffset", "2b07", "0a7f2220fac443490b3c00", "00", "06/02/2026 00:30:00"},
    {"uniqueidentifier", "2410", "10ff19966f868bd011b42d00c04fc964ff", "00",
     "6F9619FF-8B86-11D0-B42D-00C04FC964FF"},
    {"binary", "ad0400", "040000ff10ab", "ffff", "00ff10ab"},
    {"varbinary", "a50800", "01000a", "ffff", "0a"},
    {"varbinary(max)", "a5ffff", "020000000000000002000000beef00000000", "ffffffffffffffff", "beef"},
    {"xml", "f100", "1000000000000000100000003c0061003e00ac203c002f0061003e0000000000", "ffffffffffffffff",
     "<a>€</a>"},
    {"sql_variant", "62491f0000", "060000003800f9ffffff", "00000000", "-7"},
};

TEST(OdbcTypes, EachTypeOfTheServerIsShownInTheRegionsForm) {
    OdbcShop shop;
    const auto connection = shop.open();
    const std::string anyLength = "e7ffff0904d00034 ffffffffffffffff "; // what follows is read in another way
    for (const auto& [name, type, cell, null, shown] : serverTypes) {
        const std::string column = std::string(type) + " ";
        for (const std::string& before : {std::string(), anyLength}) {
            const Recordset row = connection->query({"SEND " + before + column + cell + " " + column + null});
            EXPECT_EQ(asText(row.field(row.fieldCount() - 2), RegionalSettings()), shown) << name;
            EXPECT_EQ(row.field(row.fieldCount() - 1), Value(Null{})) << name;
        }
    }
    const Recordset exact = connection->query({"SEND 6a11260a 1100ffffffff3f228a097ac4865aa84c3b4b"});
    EXPECT_EQ(asDouble(exact.field(0), RegionalSettings()), -1e28);
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Odbc, DatabaseContract,
                         testing::Values(DatabaseAdapter{"Tds71", openServed<'1'>},
                                         DatabaseAdapter{"Tds72", openServed<'2'>},
                                         DatabaseAdapter{"Tds73", openServed<'3'>},
                                         DatabaseAdapter{"Tds74", openServed<'4'>}),
                         [](const auto& adapter) { return adapter.param.name; });

} // namespace kova
