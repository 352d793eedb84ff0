// What a cashier sees, and what the log says, when the server or the way to it fails.

#include "../database/database_contract.h"
#include "../unit/test_world.h"
#include "adapters/odbc/odbc_error.h"
#include "odbc_shop.h"

#include <gtest/gtest.h>

namespace kova::test {
namespace {

using namespace std::chrono_literals;
using Log = std::vector<LogRecord>;

const std::string driver = "[FreeTDS][SQL Server]";
const std::string linkBroken = driver + "Unexpected EOF from the server (SQLSTATE 08S01, native error 20017)";
const std::string unreachable = driver + "Unable to connect: Adaptive Server is unavailable or does not exist"
                                         " (SQLSTATE 08S01, native error 20009)";
const std::string timedOut = driver + "Timeout expired (SQLSTATE HYT00, native error 0)";

/// The sample shop behind a server, and a cashier with half a movement on the screen.
class OdbcFailures : public testing::Test {
  protected:
    OdbcFailures() {
        shop.host.loadSample();
        world.openDatabase = openOdbc;
        world.component->UsaSoloValutaAziendale(true);
    }
    void connect(const std::string& more = "") {
        world.component->InizializzaByConnString(shop.server.connectionString(more));
        EXPECT_EQ(world.takeLog(), Log{});
    }
    void compose() {
        world.show();
        world.control<ButtonGrid>("Pulsantiera_Pagamenti").touch("1");
        world.control<TextBox>("txtVisore").paste("12,5");
        world.control<TextBox>("txtNote").paste("RESTO");
        EXPECT_EQ(world.takeLog(), Log{});
    }
    void touchActivity() {
        world.control<ButtonGrid>("Pulsantiera_Attivita").touch("3");
        world.wait(50);
    }
    void listMovements() { world.control<TabControl>("TabControl").touchTab(1); }
    std::size_t movementsListed() { return world.control<ReportGrid>("grd_mov_giornata").recordCount(); }
    std::size_t payments() { return world.control<ButtonGrid>("Pulsantiera_Pagamenti").buttons().size(); }

    void expectNothingLost() {
        EXPECT_TRUE(world.dialog().visible());
        EXPECT_EQ(world.control<TextBox>("txtVisore").text(), "12,5");
        EXPECT_EQ(world.control<TextBox>("txtNote").text(), "RESTO");
        EXPECT_EQ(world.process.selection.idPagamento, 1);
        EXPECT_TRUE(world.sink.movements.empty());
    }
    void expectMovementCanBeSaved() {
        touchActivity();
        world.control<PushButton>("cmdConferma").press();
        EXPECT_EQ(world.takeLog(), Log{});
        ASSERT_EQ(world.sink.movements.size(), 1u);
        EXPECT_EQ(world.sink.movements[0].importo, 12.5);
        EXPECT_EQ(world.sink.movements[0].tipoIncasso, 3);
    }

    OdbcShop shop;
    World world;
};

TEST_F(OdbcFailures, AServerThatGoesAwayAndComesBackCostsNothingThatWasTyped) {
    connect();
    compose();
    shop.server.stop();
    touchActivity();
    EXPECT_EQ(world.takeLog(), (Log{{"AggiornaVariabiliSelezioneAttivita", unreachable}}));
    listMovements();
    EXPECT_EQ(world.takeLog(), (Log{{"carica_Movimenti_Giornata", unreachable}}));
    EXPECT_EQ(movementsListed(), 0u);
    expectNothingLost();
    shop.server.start();
    world.control<PushButton>("cmdCaricaMovimenti").press();
    EXPECT_EQ(world.takeLog(), Log{});
    EXPECT_GT(movementsListed(), 0u);
    world.control<TabControl>("TabControl").touchTab(0);
    expectMovementCanBeSaved();
}

TEST_F(OdbcFailures, ALinkThatDiedUnnoticedIsReplacedUnnoticed) {
    connect();
    compose();
    shop.server.stop();
    shop.server.start();
    shop.server.takeReceived();
    expectMovementCanBeSaved();
    EXPECT_NE(shop.server.takeReceived().front().text.find("IsAutomaticNote"), std::string::npos);

    shop.server.add({"tabValute", Fault::Kind::HangUp, 0, 0, "", 1});
    EXPECT_EQ(openOdbc(shop.server.connectionString())->query({"SELECT * FROM tabValute"}).recordCount(), 3);
    shop.server.add({"tabValute", Fault::Kind::HangUp, 0, 0, "", 2});
    EXPECT_EQ(databaseErrorOf([&] {
                  (void)openOdbc(shop.server.connectionString())->query({"SELECT * FROM tabValute"});
              }).number(),
              DatabaseError::NotConnected)
        << "sent twice at most";
}

TEST_F(OdbcFailures, ALinkThatBreaksInTheMiddleOfARowEndsThatQueryAlone) {
    connect();
    shop.server.add({"FROM tabPagamenti", Fault::Kind::BreakOff, 2, 0, "", 1});
    world.show();
    EXPECT_EQ(world.takeLog(), (Log{{"Load_Pagamenti", linkBroken}}));
    EXPECT_EQ(payments(), 0u) << "half a catalogue is none";
    EXPECT_GT(world.control<ButtonGrid>("Pulsantiera_Attivita").buttons().size(), 0u);
    world.component->DiscardForm();
    compose();
    EXPECT_EQ(payments(), 6u);

    shop.server.add({"GetDailyOperation", Fault::Kind::BreakOff, 3, 0, "", 1});
    listMovements();
    EXPECT_EQ(world.takeLog(), (Log{{"carica_Movimenti_Giornata", linkBroken}}));
    EXPECT_EQ(movementsListed(), 0u);
    world.control<TabControl>("TabControl").touchTab(0);
    expectNothingLost();
    expectMovementCanBeSaved();
}

TEST_F(OdbcFailures, ARefusedQueryLeavesTheLinkAsItIs) {
    connect();
    compose();
    shop.server.takeVersions();
    shop.server.add({"IsAutomaticNote", Fault::Kind::Fail, 0, 1205, "deadlock victim – riprovare"});
    shop.server.add({"GetDailyOperation", Fault::Kind::Fail, 0, 229, "The SELECT permission was denied"});
    touchActivity();
    listMovements();
    EXPECT_EQ(world.takeLog(),
              (Log{{"AggiornaVariabiliSelezioneAttivita",
                    driver + "deadlock victim – riprovare (SQLSTATE 42000, native error 1205)"},
                   {"carica_Movimenti_Giornata",
                    driver + "The SELECT permission was denied (SQLSTATE 42000, native error 229)"}}));
    expectNothingLost();
    shop.server.clearFaults();
    world.control<TabControl>("TabControl").touchTab(0);
    expectMovementCanBeSaved();
    EXPECT_TRUE(shop.server.takeVersions().empty()) << "nobody had to log in again";

    shop.server.add({"tabImpostazioni", Fault::Kind::Fail, 0, 208, "Invalid object name 'tabImpostazioni'."});
    world.component->InizializzaByConnString("");
    EXPECT_EQ(world.takeLog().front(), (LogRecord{"getDbValue", "-2147217900-" + driver +
                                                                    "Invalid object name 'tabImpostazioni'."
                                                                    " (SQLSTATE 42S02, native error 208)"}));
}

TEST_F(OdbcFailures, AServerThatStallsIsGivenUp) {
    connect("Query Timeout=1");
    compose();
    for (const auto kind : {Fault::Kind::Stall, Fault::Kind::StallDeadly}) {
        shop.server.add({"IsAutomaticNote", kind, 0, 0, "", 1});
        const auto start = std::chrono::steady_clock::now();
        touchActivity();
        EXPECT_LT(std::chrono::steady_clock::now() - start, 3s);
        EXPECT_EQ(world.takeLog(), (Log{{"AggiornaVariabiliSelezioneAttivita", timedOut}}));
        expectNothingLost();
    }
    expectMovementCanBeSaved();
}

TEST_F(OdbcFailures, ARefusedLogInIsToldApart) {
    const std::string refused = driver + "Login failed for user 'till'. (SQLSTATE 42000, native error 18456)";
    connect();
    compose();
    shop.server.stop();
    shop.server.setLogIns(LogIns::Refuse);
    shop.server.start();
    touchActivity();
    EXPECT_EQ(world.takeLog(), (Log{{"AggiornaVariabiliSelezioneAttivita", refused}}));
    expectNothingLost();
    shop.server.setLogIns(LogIns::Accept);
    expectMovementCanBeSaved();

    shop.server.setLogIns(LogIns::Refuse);
    EXPECT_EQ(databaseErrorOf([&] { openOdbc(shop.server.connectionString()); }).number(), logInRefused);
    World other;
    other.openDatabase = openOdbc;
    other.component->InizializzaByConnString(shop.server.connectionString());
    EXPECT_EQ(other.takeLog(), (Log{{"InizializzaByConnString: ", refused}}));
    other.show();
    EXPECT_TRUE(other.dialog().visible());
    shop.server.stop();
    World third;
    third.openDatabase = openOdbc;
    third.component->InizializzaByConnString(shop.server.connectionString());
    EXPECT_EQ(third.takeLog(), (Log{{"InizializzaByConnString: ", unreachable}}));
}

TEST_F(OdbcFailures, AServerThatNeverAnswersKeepsACashierWaitingOnce) {
    const auto connection = openOdbc(shop.server.connectionString("Connection Timeout=1"));
    shop.server.stop();
    shop.server.setLogIns(LogIns::Ignore);
    shop.server.start();
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < 5; ++i)
        EXPECT_NE(databaseErrorOf([&] { (void)connection->query({"SELECT 1"}); }).number(),
                  DatabaseError::CommandFailed);
    EXPECT_LT(std::chrono::steady_clock::now() - start, 4s) << "five queries, one time-out";
}

TEST_F(OdbcFailures, TheKindOfAFailureShowsInItsNumber) {
    for (const auto& [state, expected] :
         {std::pair("40001", "-2147217900 40001"), std::pair("S0002", "-2147217900 42S02"),
          std::pair("37000", "-2147217900 42000"), std::pair("S1T00", "-2147217871 HYT00")}) {
        const auto error = asDatabaseError(state, 0, "");
        EXPECT_EQ(std::to_string(error.number()) + " " + error.sqlState(), expected);
    }
    const auto connection = openOdbc(shop.server.connectionString("Query Timeout=1"));
    const auto failing = [&](const std::string& text) {
        const auto error = databaseErrorOf([&] { (void)connection->query({text}); });
        return std::to_string(error.number()) + " " + error.sqlState();
    };
    shop.server.add({"stall", Fault::Kind::Stall});
    shop.server.add({"hang", Fault::Kind::HangUp});
    shop.server.add({"Stalled", Fault::Kind::StallLate, 2});
    shop.server.add({"Late", Fault::Kind::FailLate, 1, 8134, "Divide by zero error encountered."});
    shop.server.add({"Last", Fault::Kind::FailLate, 3, 8134, "Divide by zero error encountered."});
    EXPECT_EQ(failing("SELECT stall"), "-2147217871 HYT00");
    EXPECT_EQ(failing("SELECT hang"), "3709 08S01");
    EXPECT_EQ(failing("SELECT Valuta AS Stalled FROM tabValute"), "-2147217871 HYT00");
    EXPECT_EQ(failing("SELECT Valuta AS Late FROM tabValute"), "-2147217900 22012");
    EXPECT_EQ(failing("SELECT Valuta AS Last FROM tabValute"), "-2147217900 22012");
    EXPECT_EQ(failing("SELECT FROM"), "-2147217900 42000");
    EXPECT_EQ(failing("SELECT * FROM nowhere"), "-2147217900 42S02");
    EXPECT_EQ(failing("SET NOCOUNT ON"), "-2147217900 24000");
    EXPECT_EQ(rowsOf(connection->query({"SELECT Valuta FROM tabValute"})).size(), 3u);
}

} // namespace
} // namespace kova::test
