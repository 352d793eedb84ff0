#include "../database/database_contract.h"
#include "odbc_shop.h"

namespace kova {
namespace {

using test::ExactType;
using test::OdbcShop;
using Rows = std::vector<std::string>;

class ContractShop final : public ShopDatabase {
  public:
    explicit ContractShop(test::TdsServer::Options options) : shop_(std::move(options)) {}
    void execute(const std::string& sql) override { shop_.host.execute(sql); }
    std::shared_ptr<DatabaseConnection> connection() override { return shop_.open(); }

  private:
    OdbcShop shop_;
};

template <char Minor, ExactType Exact>
std::unique_ptr<ShopDatabase> makeShop() {
    return std::make_unique<ContractShop>(test::TdsServer::Options{std::string("7.") + Minor, Exact});
}

struct VersionCase {
    const char* version;
    unsigned number;
    const char* declaration;
};

void PrintTo(const VersionCase& version, std::ostream* out) {
    *out << version.version;
}

class OdbcVersions : public testing::TestWithParam<VersionCase> {};

TEST_P(OdbcVersions, QueriesArriveAsWrittenAndADayAsADate) {
    OdbcShop shop({GetParam().version, ExactType::Money});
    const auto connection = shop.open();
    const Query plain{"SELECT valore FROM tabImpostazioni WHERE descrizione='l''età'"};
    Query daily{"SELECT importo FROM [dbo].[GetDailyOperation](?)"};
    daily.parameters = {dayParameter(dateTime(2026, 11, 14))};
    EXPECT_EQ(rowsOf(connection->query(plain)), Rows{});
    EXPECT_EQ(rowsOf(connection->query(daily)), Rows{});
    const auto received = shop.server.takeReceived();
    ASSERT_EQ(received.size(), 2U);
    EXPECT_EQ(received[0].text, plain.text);
    EXPECT_EQ(received[0].declaration, "");
    EXPECT_EQ(received[1].text, "SELECT importo FROM [dbo].[GetDailyOperation](@P1)"); // named by the driver
    EXPECT_EQ(received[1].declaration, GetParam().declaration);
    EXPECT_EQ(received[1].dates, std::vector{daily.parameters[0].value});
    EXPECT_EQ(shop.server.takeVersions(), std::vector{GetParam().number});
}

TEST_P(OdbcVersions, TextsOfAnyLengthArriveWhole) {
    OdbcShop shop({GetParam().version, ExactType::Money});
    std::string note = "x";
    for (int i = 0; i < 3000; ++i)
        note += "«€» 😀";
    shop.host.execute("INSERT INTO tabImpostazioni VALUES('lungo', '" + note +
                      "'), ('nulla', NULL),"
                      " ('vuoto', ''), ('breve', 'x')");
    const auto connection = shop.open();
    // The columns behind a text without a limit are read in another way: all kinds of them.
    Recordset records = connection->query({"SELECT valore, descrizione, id, visible, DataOperazione,"
                                           " ImportoIncassato FROM tabImpostazioni LEFT JOIN"
                                           " tabActivityDrawer ON id < 0 LEFT JOIN"
                                           " (SELECT DataOperazione, ImportoIncassato FROM"
                                           " tabPagamentiScontriniBackoffice) ON 1 = 0"});
    EXPECT_EQ(records.recordCount(), 4);
    EXPECT_EQ(records.field("valore"), Value(std::string_view(note)));
    EXPECT_EQ(records.field("descrizione"), Value(std::string_view("lungo")));
    records.moveNext();
    EXPECT_EQ(records.field("valore"), Value(Null{}));
    records.moveNext();
    EXPECT_EQ(records.field("valore"), Value(std::string_view()));
    records.moveNext();
    EXPECT_EQ(records.field("valore"), Value(std::string_view("x")));

    shop.host.execute("INSERT INTO tabActivityDrawer VALUES(7, 'a', -1, 4, 1, 20, NULL, 0)");
    shop.host.storeMovement({DateTime(std::chrono::hours(500000)), 7, 1, 1, 12.3, "€", "", 0, 1, 1});
    EXPECT_EQ(rowsOf(connection->query({"SELECT valore, id, visible, IsAutomaticNote, DataOperazione,"
                                        " ImportoIncassato, Valuta FROM tabPagamentiScontriniBackoffice"
                                        " JOIN (SELECT id AS a, visible, IsAutomaticNote FROM"
                                        " tabActivityDrawer) JOIN (SELECT valore FROM tabImpostazioni WHERE"
                                        " descrizione = 'lungo')"})),
              Rows{note + "|1|True|-|15.01.2027 08:00:00|12.3|€"});
}

const VersionCase versions[] = {{"7.1", 0x71, "@P1 DATETIME"},
                                {"7.2", 0x72, "@P1 DATETIME"},
                                {"7.3", 0x73, "@P1 DATE"},
                                {"7.4", 0x74, "@P1 DATE"}};

INSTANTIATE_TEST_SUITE_P(Odbc, OdbcVersions, testing::ValuesIn(versions),
                         [](const auto& version) { return "Tds7" + std::string(version.param.version + 2); });

} // namespace

INSTANTIATE_TEST_SUITE_P(Odbc, DatabaseContract,
                         testing::Values(DatabaseAdapter{"Tds71", makeShop<'1', ExactType::Money>},
                                         DatabaseAdapter{"Tds72", makeShop<'2', ExactType::Money>},
                                         DatabaseAdapter{"Tds73", makeShop<'3', ExactType::Money>},
                                         DatabaseAdapter{"Tds74", makeShop<'4', ExactType::Money>},
                                         DatabaseAdapter{"Numeric", makeShop<'4', ExactType::Numeric>}),
                         [](const auto& adapter) { return adapter.param.name; });

} // namespace kova
