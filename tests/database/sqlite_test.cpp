#include "database_contract.h"

#include "adapters/sqlite/server_dialect.h"
#include "adapters/sqlite/sqlite_database.h"
#include "shop/shop_database.h"

#include <filesystem>
#include <fstream>
#include <iomanip>
#include <unistd.h>

namespace kova {
namespace {

using Rows = std::vector<std::string>;

class Sqlite : public testing::Test {
  protected:
    Sqlite() {
        std::filesystem::create_directories(folder);
        host.createSchema();
    }
    ~Sqlite() override { std::filesystem::remove_all(folder); }
    [[nodiscard]] std::string path(const std::string& name) const { return (folder / name).string(); }
    Recordset query(const std::string& text) { return host.connection()->query({text}); }
    Rows rows(const std::string& text) { return rowsOf(query(text)); }
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("kova-sqlite-" + std::to_string(getpid()));
    ShopDatabase host = ShopDatabase::inMemory();
};

// A line of the table holds a text for a server, and what it becomes, if anything, or the state of its error.
TEST(SqliteDialect, RewritesServerTextsAndLeavesEverythingElseAlone) {
    std::ifstream table(KOVA_DIALECT);
    int lines = 0;
    for (std::string text, expected; table >> std::quoted(text) >> std::quoted(expected); ++lines)
        try {
            EXPECT_EQ(toSqliteDialect(text), expected == "same" ? text : expected);
        } catch (const DatabaseError& error) {
            EXPECT_EQ(error.sqlState(), expected) << text;
        }
    EXPECT_EQ(lines, 17);
}

TEST_F(Sqlite, BothFormsOfADateTimeCompareAndSortAsTimes) {
    host.execute(
        "INSERT INTO tabPagamentiScontriniBackoffice(id, DataOperazione) VALUES"
        "(1,'2026-11-16T10:00:00'),(2,'2026-11-16 23:59:59.000'),(3,'2026-11-16'),"
        "(4,'2026-11-17 00:00:00'),(5,'2026-11-15T23:59:59.999'),(6,NULL),(7,'2026-11-16 11:00:00')");
    const auto since = [&](const std::string& begin) {
        return rows("SELECT id FROM tabPagamentiScontriniBackoffice WHERE DataOperazione BETWEEN"
                    " CONVERT(datetime,'" +
                    begin +
                    "',126) and CONVERT(datetime,'2026-11-16T23:59:59',126)"
                    " ORDER BY DataOperazione DESC");
    };
    EXPECT_EQ(since("2026-11-16T00:00:00"), (Rows{"2", "7", "1", "3"}));
    EXPECT_EQ(databaseErrorOf([&] { since("16/11/2026"); }).number(), DatabaseError::CommandFailed);
}

TEST_F(Sqlite, CellsThatDoNotFitTheirColumnsStayWhatTheyAre) {
    host.execute("CREATE TABLE t(b bit, m money, w datetime, i int, x);"
                 "INSERT INTO t VALUES('yes', 'a lot', 'tomorrow', 'one', '2026-11-16 10:00:00'),"
                 "(x'00ff', 1e300, 20261116, 1.5, 7), (5, 9223372036854775807, '2026-02-30', 9e99, NULL)");
    const auto text = [](const char* value) { return Value(std::string_view(value)); };
    expectCells(query("SELECT *, m * 1 AS product FROM t"),
                {{text("yes"), text("a lot"), text("tomorrow"), text("one"), text("2026-11-16 10:00:00")},
                 {std::string_view("\0\xff", 2), 1e300, std::int64_t{20261116}, 1.5, std::int64_t{7}, 1e300},
                 {true, std::int64_t{9223372036854775807}, text("2026-02-30"), 9e99, Null{}}});
}

TEST_F(Sqlite, TheComponentsConnectionOnlyReads) {
    for (const char* text : {"INSERT INTO tabValute VALUES('x')", "DROP TABLE tabValute",
                             "SELECT 1; INSERT INTO tabValute VALUES('x')", "", " -- nothing"})
        EXPECT_EQ(databaseErrorOf([&] { rows(text); }).number(), DatabaseError::CommandFailed) << text;
    EXPECT_EQ(rows("SELECT count(*) FROM tabValute ; -- done"), Rows{"0"});
}

TEST_F(Sqlite, TheDailyFunctionReadsWhateverTheViewIs) {
    const auto daily = [&](const std::string& columns) {
        Query query{"SELECT " + columns + " FROM [dbo].[GetDailyOperation](?)"};
        query.parameters = {dayParameter(dateTime(2026, 11, 16, std::chrono::hours(10)))};
        return rowsOf(host.connection()->query(query));
    };
    host.execute(
        "DROP VIEW Daily_Operation; CREATE VIEW dbo.Daily_Operation AS SELECT '2026-11-16T09:00:00'"
        " AS [Data-Ora Aggiornamento], 1 AS Cassetto, 'a' AS [Tipo Operazione], NULL AS"
        " [Tipo Pagamento], 2.5 AS importo, '€' AS valuta, NULL AS [Note Movimento], 'b' AS Operatore"
        " UNION ALL SELECT '2026-11-17 09:00:00', 1, 'a', NULL, 2.5, '€', NULL, 'b'");
    EXPECT_EQ(daily("*"), Rows{"16.11.2026 09:00:00|1|a|-|2.5|€|-|b"});
    host.execute("DROP VIEW Daily_Operation");
    host.execute("CREATE VIEW Daily_Operation AS SELECT * FROM GetDailyOperation('2026-11-16')");
    EXPECT_EQ(databaseErrorOf([&] { daily("importo"); }).number(), DatabaseError::CommandFailed);
}

TEST_F(Sqlite, ConnectionStringsNameAnExistingDatabase) {
    const std::string file = path("shop;1.db"), empty = path("empty.db"), text = path("text.db");
    ShopDatabase::openFile(file).createSchema();
    std::ofstream(empty).flush();
    std::ofstream(text) << std::string(5000, 'x');
    SqliteProvider provider;
    for (const std::string& source :
         {"Data Source=\"" + file + "\"", "Provider=x ; DATA source = '" + file + "' ;Mode=Read",
          "data source= " + empty + " ;"})
        EXPECT_EQ(rowsOf(provider.open(source)->query({"SELECT 1"})), Rows{"1"}) << source;
    for (const std::string& source :
         {std::string(), std::string("Server=till;Database=shop"), std::string("Data Source"),
          std::string("Data Source="), std::string("Data Source=:memory:"), "Data Source=" + file,
          "Data Source=" + path("absent.db"), "Data Source=" + folder.string(), "Data Source=" + text}) {
        const auto error = databaseErrorOf([&] { (void)provider.open(source); });
        EXPECT_EQ(error.number(), DatabaseError::Unspecified) << source;
        EXPECT_EQ(error.sqlState(), "HY000") << source;
        const std::string reason = error.what(), named = folder.string();
        EXPECT_EQ(reason.find(named) == reason.npos, source.find(named) == source.npos) << reason;
    }
    EXPECT_FALSE(std::filesystem::exists(path("absent.db")));
}

TEST_F(Sqlite, ALockedDatabaseFailsAfterAShortWait) {
    auto writer = ShopDatabase::openFile(path("shop.db"));
    writer.createSchema();
    const auto reader = openSqlite(path("shop.db"));
    writer.execute("BEGIN EXCLUSIVE");
    const auto before = std::chrono::steady_clock::now();
    const auto error = databaseErrorOf([&] { (void)reader->query({"SELECT * FROM tabValute"}); });
    EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(3));
    EXPECT_EQ(error.number(), DatabaseError::Unspecified);
    writer.execute("COMMIT");
    EXPECT_EQ(reader->query({"SELECT * FROM tabValute"}).recordCount(), 0);
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Sqlite, DatabaseContract,
                         testing::Values(DatabaseAdapter{
                             "Sqlite", [](const ShopDatabase& host) { return host.connection(); }}),
                         [](const auto& adapter) { return adapter.param.name; });

} // namespace kova
