#include "../database/database_contract.h"
#include "../unit/test_world.h"
#include "odbc_shop.h"
#include "widgets/date_field.h"
#include "widgets/push_button.h"
#include "widgets/tab_control.h"

#include <algorithm>

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

/// Asks both adapters, whose answers must be the same.
class BothAdapters final : public DatabaseConnection {
  public:
    BothAdapters(std::shared_ptr<DatabaseConnection> embedded, std::shared_ptr<DatabaseConnection> server)
        : embedded_(std::move(embedded)), server_(std::move(server)) {}
    Recordset query(const Query& query) override {
        queries.push_back(query);
        Recordset fromServer = server_->query(query);
        const Recordset fromEmbedded = embedded_->query(query);
        EXPECT_EQ(namesOf(fromServer), namesOf(fromEmbedded)) << query.text;
        EXPECT_EQ(rowsOf(fromServer), rowsOf(fromEmbedded)) << query.text;
        rows += fromServer.recordCount();
        return fromServer;
    }
    std::vector<Query> queries;
    std::int32_t rows = 0;

  private:
    static Rows namesOf(const Recordset& records) {
        Rows names;
        for (std::size_t i = 0; i < records.fieldCount(); ++i)
            names.push_back(records.fieldName(i));
        return names;
    }
    std::shared_ptr<DatabaseConnection> embedded_, server_;
};

/// Everything in the dialog that asks the database: settings, catalogues, an activity, the previous float and
/// all lists of movements.
void useEveryQuery(test::World& world, const std::shared_ptr<DatabaseConnection>& connection) {
    auto& component = *world.component;
    const auto listDays = [&](const std::string& software, bool withNonFiscal) {
        component.SetSoftwareName(software);
        component.AttivaVisualizzazionePrecontiDefinitivi(withNonFiscal);
        component.Show(0);
        world.control<TabControl>("TabControl").touchTab(1);
        world.control<DateField>("comboData").paste("14/11/2026");
        world.control<PushButton>("cmdCaricaMovimenti").press();
        component.DiscardForm();
    };
    component.idCassa(1);
    component.Inizializza(connection);
    component.AttivaRecuperaFondoCassaPrecedente(true);
    world.show();
    world.control<ButtonGrid>("Pulsantiera_Attivita").touch("2");
    world.wait(50);
    world.control<PushButton>("cmdRecuperaFondoCassaPrecedente").press();
    component.DiscardForm();
    listDays("KOVA", false);
    listDays("MIRANTE", false);
    component.VisualizzaMovimentiUtenteLoggato(true);
    component.idUtente(2);
    listDays("FALCA", true);
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

TEST_P(OdbcVersions, AllQueriesOfTheComponentGiveTheSameCellsAndArriveAsWritten) {
    OdbcShop shop({GetParam().version, ExactType::Money});
    shop.host.loadSample();
    test::World world;
    const auto both = std::make_shared<BothAdapters>(shop.host.connection(), shop.open());
    useEveryQuery(world, both);
    for (const auto& record : world.takeLog())
        ADD_FAILURE() << record.label << record.message;
    EXPECT_GT(both->rows, 100);
    for (const char* const piece :
         {"tabImpostazioni", "Attiva_Gestione", "[tabActivityDrawer]", "FROM tabPagamenti", "tabValute",
          "IsAutomaticNote", "SELECT TOP 1", "GetDailyOperation", "[dbo].[Report_Drawer_Operation] ",
          "[Report_Drawer_Daily_Operation]", " UNION "})
        EXPECT_TRUE(std::ranges::any_of(both->queries, [&](const Query& q) {
            return q.text.find(piece) != std::string::npos;
        })) << piece;

    const auto received = shop.server.takeReceived();
    ASSERT_EQ(received.size(), both->queries.size());
    for (std::size_t i = 0; i < received.size(); ++i) {
        const Query& sent = both->queries[i];
        std::string text = sent.text;
        if (!sent.parameters.empty()) // the driver names the parameter
            text.replace(text.find('?'), 1, "@P1");
        EXPECT_EQ(received[i].text, text);
        EXPECT_EQ(received[i].declaration, sent.parameters.empty() ? "" : GetParam().declaration);
        for (std::size_t p = 0; p < sent.parameters.size(); ++p)
            EXPECT_EQ(received[i].dates.at(p), sent.parameters[p].value);
    }
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
              Rows{note + "|1|True|-|2027-01-15T08:00:00|12.3|€"});
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
