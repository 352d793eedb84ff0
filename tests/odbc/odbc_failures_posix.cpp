// What a cashier sees, and what the log says, when the server or the way to it fails.

#include "../database/database_contract.h"
#include "../unit/test_world.h"
#include "adapters/odbc/odbc_error.h"
#include "odbc_shop.h"
#include "ports/server_pause.h"

#include <gtest/gtest.h>

namespace kova::test {
namespace {

using namespace std::chrono_literals;
using Log = std::vector<LogRecord>;

const std::string driver = "[FreeTDS][SQL Server]";
const std::string linkBroken = driver + "Unexpected EOF from the server (SQLSTATE 08S01, native error 20017)";
const std::string unreachable = driver + "Unable to connect: Adaptive Server is unavailable or does not exist"
                                         " (SQLSTATE 08S01, native error 20009)";
const std::string hungUp = driver + "Unable to connect to data source (SQLSTATE 08001, native error 0)";
const std::string logInRefusal =
    driver + "Login failed for user 'till'. (SQLSTATE 42000, native error 18456)";
const std::string timedOut = driver + "Timeout expired (SQLSTATE HYT00, native error 0)";

std::shared_ptr<DatabaseConnection> openImpatiently(const std::string& text) {
    return openOdbc(text, {.pause = 0s});
}

/// The sample shop behind a server, and a cashier.
struct Till {
    Till() {
        shop.host.loadSample();
        world.openDatabase = openImpatiently;
        world.component->UsaSoloValutaAziendale(true);
    }
    void connect(const std::string& more = "") {
        world.component->InizializzaByConnString(shop.server.connectionString(more));
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
    std::size_t movementsListed() { return world.control<ReportGrid>("grd_mov_giornata").recordCount(); }
    void expectMovementCanBeSaved() {
        touchActivity();
        world.control<PushButton>("cmdConferma").press();
        EXPECT_EQ(world.takeLog(), Log{});
        EXPECT_EQ(world.sink.movements, (std::vector<Movement>{{1, 12.5, "€", "RESTO", 0, 3, false}}));
    }

    OdbcShop shop;
    World world;
};

class OdbcFailures : public testing::Test, protected Till {
  protected:
    TdsServer& server = shop.server;
};

struct Failure {
    std::string name, text;
    void (*begin)(TdsServer& server);
    bool silent = true; ///< the cashier is told so
    bool linkSurvives = false;
};

template <Fault::Kind Kind>
void failEverywhere(TdsServer& server) {
    server.add({"", Kind, 0, 1205, "deadlock victim – riprovare"});
}

const Failure failures[] = {{"server gone", unreachable, [](TdsServer& server) { server.stop(); }},
                            {"log-in refused", logInRefusal,
                             [](TdsServer& server) {
                                 server.stop();
                                 server.setLogIns(LogIns::Refuse);
                                 server.start();
                             },
                             false},
                            {"query refused",
                             driver + "deadlock victim – riprovare (SQLSTATE 42000, native error 1205)",
                             failEverywhere<Fault::Kind::Fail>, false, true},
                            {"broken in a row", linkBroken, failEverywhere<Fault::Kind::BreakOff>},
                            {"stalled", timedOut, failEverywhere<Fault::Kind::Stall>},
                            {"stalled for good", timedOut, failEverywhere<Fault::Kind::StallForever>},
                            {"stalled in a packet", timedOut, failEverywhere<Fault::Kind::StallHalf>},
                            {"broken in a packet", linkBroken, failEverywhere<Fault::Kind::HangUpHalf>},
                            {"broken at the log-in", hungUp, [](TdsServer& server) {
                                 server.stop();
                                 server.setLogIns(LogIns::HangUp);
                                 server.start();
                             }}};

TEST(OdbcFailure, CostsNothingThatWasTypedAndPasses) {
    for (const Failure& failure : failures) {
        SCOPED_TRACE(failure.name);
        Till till;
        World& world = till.world;
        till.connect("Query Timeout=1");
        till.compose();
        till.shop.server.takeVersions();
        failure.begin(till.shop.server);
        const auto start = std::chrono::steady_clock::now();
        till.touchActivity();
        EXPECT_LT(std::chrono::steady_clock::now() - start, 3s);
        EXPECT_EQ(world.dialog().notice()->text().starts_with("Il server non risponde."), failure.silent);
        EXPECT_EQ(world.control<ButtonGrid>("Pulsantiera_Attivita").find("3")->marked, !failure.silent);
        world.control<TabControl>("TabControl").touchTab(1);
        EXPECT_EQ(world.takeLog(), (Log{{"AggiornaVariabiliSelezioneAttivita", failure.text},
                                        {"carica_Movimenti_Giornata", failure.text}}));
        EXPECT_EQ(till.movementsListed(), 0u);
        till.shop.server.recover();
        world.control<PushButton>("cmdCaricaMovimenti").press();
        EXPECT_GT(till.movementsListed(), 0u);
        EXPECT_FALSE(world.dialog().notice()->pending()) << "the server answers";
        world.control<TabControl>("TabControl").touchTab(0);
        till.expectMovementCanBeSaved();
        EXPECT_EQ(till.shop.server.takeVersions().empty(), failure.linkSurvives);
    }
}

TEST_F(OdbcFailures, ALinkThatDiedUnnoticedIsReplacedUnnoticed) {
    connect();
    compose();
    server.stop();
    server.recover();
    server.takeReceived();
    expectMovementCanBeSaved();
    EXPECT_NE(server.takeReceived().front().text.find("IsAutomaticNote"), std::string::npos);

    const auto count = [&] { return openOdbc(server.connectionString())->query({"SELECT 1"}).recordCount(); };
    server.add({"SELECT 1", Fault::Kind::HangUp, 0, 0, "", 1});
    EXPECT_EQ(count(), 1);
    server.add({"SELECT 1", Fault::Kind::HangUp, 0, 0, "", 2});
    EXPECT_EQ(databaseErrorOf(count).number(), DatabaseError::NotConnected) << "sent twice at most";
}

TEST_F(OdbcFailures, LeaveTheChoicesOfBeforeToGoOnWith) {
    connect();
    compose();
    touchActivity();
    server.stop();
    world.control<PushButton>("cmdConferma").press();
    EXPECT_EQ(world.takeLog(), (Log{{"Load_Pagamenti", unreachable}, {"Load_Attivita", unreachable}}));
    server.recover();
    for (const auto& [grid, key] : {std::pair("Pulsantiera_Pagamenti", "1"), {"Pulsantiera_Attivita", "3"}})
        world.control<ButtonGrid>(grid).touch(key);
    world.control<TextBox>("txtVisore").paste("7");
    world.wait(50);
    world.control<PushButton>("cmdConferma").press();
    EXPECT_EQ(world.sink.movements.size(), 2u);
}

TEST_F(OdbcFailures, AtTheBeginningAreRecorded) {
    server.setLogIns(LogIns::Refuse);
    EXPECT_EQ(databaseErrorOf([&] { openOdbc(server.connectionString()); }).number(), LogInRefused);
    connect();
    EXPECT_EQ(world.takeLog(), (Log{{"InizializzaByConnString: ", logInRefusal}}));
    world.show();
    EXPECT_TRUE(world.dialog().visible());
}

TEST_F(OdbcFailures, AServerThatNeverAnswersKeepsACashierWaitingOnce) {
    const std::string text = server.connectionString("Connection Timeout=1");
    const auto connection = openOdbc(text);
    EXPECT_EQ(connection->timeout(), 30s);
    EXPECT_EQ(odbcLogInTimeout(text, {.logIn = 7s}), 7s) << "of the machine's settings";
    server.stop();
    server.setLogIns(LogIns::Ignore);
    server.start();
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < 5; ++i)
        EXPECT_NE(databaseErrorOf([&] { (void)connection->query({"SELECT 1"}); }).number(),
                  DatabaseError::CommandFailed);
    EXPECT_LT(std::chrono::steady_clock::now() - start, 4s) << "five queries, one time-out";
    EXPECT_EQ(connection->timeout(), 1s) << "what it waits for is to be let in";

    ServerPause pause(5s);
    const ServerPause::Clock::time_point begin{};
    const auto asks = [&](std::chrono::seconds at) {
        try {
            pause.check(begin + at);
            return true;
        } catch (const DatabaseError&) {
            return false;
        }
    };
    const DatabaseError silence(QueryTimedOut, "", "HYT00");
    pause.attemptFailed(silence, begin, begin + 400ms);
    EXPECT_TRUE(asks(0s)) << "failed at once";
    std::string asked;
    for (auto at = 0s; at < 200s; at += 1s)
        if (asks(at)) {
            asked += std::to_string(at.count()) + " ";
            pause.attemptFailed(silence, begin + at - 1s, begin + at);
        }
    EXPECT_EQ(asked, "0 5 15 35 75 135 195 ");
    pause.answered();
    EXPECT_TRUE(asks(196s));
}

TEST_F(OdbcFailures, TheKindOfAFailureShowsInItsNumber) {
    const auto connection = openImpatiently(server.connectionString("Query Timeout=1"));
    const auto failing = [&](const std::string& text) {
        const auto error = databaseErrorOf([&] { (void)connection->query({text}); });
        return std::to_string(error.number()) + " " + error.sqlState();
    };
    server.add({"stall", Fault::Kind::Stall});
    server.add({"hang", Fault::Kind::HangUp});
    server.add({"Stalled", Fault::Kind::StallLate, 2});
    server.add({"Late", Fault::Kind::FailLate, 1, 8134, "Divide by zero error encountered."});
    server.add({"Broken", Fault::Kind::BreakOff, 2});
    server.add({"Last", Fault::Kind::FailLate, 3, 8134, "Divide by zero error encountered."});
    for (const auto& [text, expected] : {std::pair("SELECT stall", "-2147217871 HYT00"),
                                         {"SELECT hang", "3709 08S01"},
                                         {"SELECT Valuta AS Stalled FROM tabValute", "-2147217871 HYT00"},
                                         {"SELECT Valuta AS Late FROM tabValute", "-2147217900 22012"},
                                         {"SELECT Valuta AS Broken FROM tabValute", "3709 08S01"},
                                         {"SELECT Valuta AS Last FROM tabValute", "-2147217900 22012"},
                                         {"SELECT FROM", "-2147217900 42000"},
                                         {"SELECT * FROM nowhere", "-2147217900 42S02"},
                                         {"SET NOCOUNT ON", "-2147217900 24000"}})
        EXPECT_EQ(failing(text), expected) << text;
    EXPECT_EQ(rowsOf(connection->query({"SELECT Valuta FROM tabValute"})).size(), 3u);
}

} // namespace
} // namespace kova::test
