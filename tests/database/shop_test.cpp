// The demonstration shop, as the script for a SQL Server and the embedded sample make it, and the report of a
// day.
#include "documents/day_report.h"

#include "base/error.h"
#include "database_contract.h"
#include "shop/shop_database.h"

#include <fstream>
#include <limits>

namespace kova {
namespace {

using namespace std::chrono_literals;
using Lines = std::vector<std::string>;

const RegionalSettings region = *regionalSettings("en-US");
const DateTime day = dateTime(2026, 11, 16);
constexpr std::int64_t Largest = std::numeric_limits<std::int64_t>::max();

/// One line for each movement, then one for each sum of a payment type and of a currency.
Lines linesOf(const DayReport& report) {
    const auto money = [](Decimal amount) { return " " + moneyText(amount, region, Sign::OfNegative); };
    Lines lines;
    for (const auto& one : report.movements)
        lines.push_back((one.time ? timeOfDayText(*one.time, region) : "") + "|" + one.activity + "|" +
                        one.payment + "|" + one.currency + "|" + one.note + "|" + one.operatorName + "|" +
                        std::to_string(one.drawer) + (one.amount ? money(*one.amount) : ""));
    const auto sum = [&](const std::string& name, const MoneySum& of) {
        lines.push_back(name + ": " + std::to_string(of.movements) + money(of.incoming) + money(of.outgoing) +
                        money(of.balance()));
    };
    for (const auto& currency : report.sums) {
        for (const auto& [payment, of] : currency.payments)
            sum(payment, of);
        sum(currency.currency, currency.total);
    }
    return lines;
}

TEST(DayReport, ListsAndSumsTheWholeDayAndNothingElse) {
    auto shop = ShopDatabase::inMemory();
    shop.createSchema();
    shop.execute("INSERT INTO tabActivityDrawer(id, Description) VALUES (1, 'Versamento');"
                 "INSERT INTO tabPagamenti(idpagamento, TipoPagamento, idOrdinamento) VALUES"
                 " (1, 'Contanti', 20), (2, 'Bancomat', 30), (3, 'Carta', 10), (4, 'CONTANTI', 40);"
                 "INSERT INTO tabUtenti(idutente, Nome) VALUES (1, 'Zoë')");
    const auto linesFor = [&](const DayScope& scope) {
        return linesOf(makeDayReport(scope, shop.connection()->query(dayReportQuery(scope)), region));
    };
    EXPECT_EQ(linesFor({day, {}, {}}), Lines{});
    shop.execute(
        "INSERT INTO tabPagamentiScontriniBackoffice(DataOperazione, TipoOperazione, idpagamento,"
        " Coefficiente, ImportoIncassato, Valuta, Note, Cassetto, idCassa, idutente) VALUES"
        " ('2026-11-17 00:00:00', 1, 1, 1, 1, '€', NULL, 0, 1, 1),"
        " ('2026-11-15 23:59:59', 1, 1, 1, 2, '€', NULL, 0, 1, 1),"
        " ('2026-11-16 12:00:00', 1, 2, 1, 0.345, '€', '', 1, 2, 1)," // not in the order of the times
        " ('2026-11-16 00:00:00', 1, 1, 1, 1234567.8901, '€', 'nota', 2, 1, 1),"
        " ('2026-11-16 12:00:00', 9, 4, -1, 30, '€', NULL, 0, 1, 1),"
        " ('2026-11-16 13:00:00', 1, 3, 1, 50, 'CHF', NULL, NULL, 1, 2),"
        " ('2026-11-16 14:00:00', 1, 1, NULL, 7, 'chf', NULL, NULL, 1, 2),"
        " ('2026-11-16 23:59:59.700', NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL)");
    EXPECT_EQ(linesFor({day + 13h, {}, {}}),
              (Lines{"12:00 AM|Versamento|Contanti|€|nota|Zoë|2 1,234,567.8901",
                     "12:00 PM|Versamento|Bancomat|€||Zoë|1 0.345", "12:00 PM||CONTANTI|€||Zoë|0 \u221230.00",
                     "1:00 PM|Versamento|Carta|CHF|||0 50.00", "2:00 PM|Versamento|Contanti|chf|||0 7.00",
                     "11:59 PM||||||0", "Carta: 1 50.00 0.00 50.00", "Contanti: 1 7.00 0.00 7.00",
                     "CHF: 2 57.00 0.00 57.00", "Contanti: 2 1,234,567.8901 \u221230.00 1,234,537.8901",
                     "Bancomat: 1 0.345 0.00 0.345", "€: 3 1,234,568.2351 \u221230.00 1,234,538.2351"}));
    EXPECT_EQ(linesFor({day, 1, {}}).size(), 4U + 5);
    EXPECT_EQ(linesFor({day, {}, 1}).size(), 3U + 3);
    EXPECT_EQ(linesFor({day, 1, 2}).size(), 2U + 3);
    EXPECT_EQ(linesFor({day, 3, {}}), Lines{});
}

using Row = std::pair<Value, std::int64_t>; ///< amount and coefficient

/// What the movements of a day come to, in units of a ten-thousandth; the number of an error below zero.
std::int64_t balanceOf(const std::vector<Row>& rows) {
    auto found = std::make_shared<Snapshot>();
    for (const char* name : {"moment", "activity", "payment", "order", "coefficient", "amount", "currency",
                             "note", "drawer", "operator"})
        found->addColumn(name);
    for (const auto& [amount, coefficient] : rows) {
        for (int column = 0; column < 10; ++column)
            found->add(column == 4 ? Value(coefficient) : column == 5 ? amount : Value(Null{}));
        found->endRow();
    }
    try {
        return makeDayReport({}, Recordset(found), region).sums.at(0).total.balance().unscaled;
    } catch (const Error& error) {
        return -error.number();
    }
}

TEST(DayReport, SumsExactlyWhateverTheColumnsTypeAndRefusesWhatNoSumCanHold) {
    const auto money = [](std::int64_t unscaled) { return Value(Decimal{unscaled, 4}); };
    std::vector<Row> cents(1000, Row{0.1, 1});
    cents.insert(cents.end(),
                 {{0.2, -1}, {std::int64_t{7}, 1}, {Decimal{5, 1}, 1}, {Decimal{-1234565, 6}, 1}});
    EXPECT_EQ(balanceOf(cents), 1060654) << "100 - 0.2 + 7 + 0.5 - 1.2346, half a unit away from zero";
    EXPECT_EQ(balanceOf({{money(9007199254740993), 1}}), 9007199254740993) << "more digits than a double has";
    EXPECT_EQ(balanceOf({{money(Largest), 1}}), Largest);
    EXPECT_EQ(balanceOf({{money(Largest), 1}, {money(1), 1}}), -6);
    EXPECT_EQ(balanceOf({{money(Largest), -1}, {money(2), -1}}), -6);
    EXPECT_EQ(balanceOf({{money(Largest), 2}}), -6);
    EXPECT_EQ(balanceOf({{Largest, 1}}), -6);
    EXPECT_EQ(balanceOf({{1e18, 1}}), -6);
    EXPECT_EQ(balanceOf({{std::string_view("many"), 1}}), -13);
}

// The script as far as the embedded database can run it.
TEST(ServerScript, MakesTheSameShopAsTheEmbeddedSample) {
    auto server = ShopDatabase::inMemory();
    std::ifstream script(KOVA_SERVER_SCRIPT);
    std::string function, batch;
    for (std::string line; std::getline(script, line);) {
        if (line == "GO") {
            if (batch.find("CREATE FUNCTION") != std::string::npos)
                function = batch; // of a kind that SQLite does not have
            else
                server.execute(batch);
            batch.clear();
        } else if (!line.starts_with("SET ") && !line.starts_with("--")) {
            batch += line + "\n";
        }
    }
    server.execute(batch);
    auto embedded = ShopDatabase::inMemory();
    embedded.createSchema();
    embedded.loadSample();
    EXPECT_NE(databaseErrorOf([&] { embedded.loadSample(); }).number(), 0) << "a second load leaves nothing";
    const auto rows = [](const ShopDatabase& host, const std::string& text) {
        const Recordset records = host.connection()->query({text});
        auto result = rowsOf(records);
        for (std::size_t i = 0; i < records.fieldCount(); ++i)
            result.push_back(records.fieldName(i));
        return result;
    };
    for (const std::string table : {"tabImpostazioni", "tabActivityDrawer", "tabPagamenti", "tabValute",
                                    "tabUtenti", "Report_Drawer_Operation", "Report_Drawer_Daily_Operation",
                                    "Report_NonFiscale_Operation", "tabPagamentiScontriniBackoffice"}) {
        const std::string text = "SELECT * FROM dbo." + table;
        EXPECT_EQ(rows(server, text), rows(embedded, text)) << text;
        EXPECT_GT(rowsOf(server.connection()->query({text})).size(), 2u) << text;
    }
    for (const char* const column :
         {"CREATE FUNCTION dbo.GetDailyOperation(@", "[Data-Ora Aggiornamento]", "[Cassetto]",
          "[Tipo Operazione]", "[Tipo Pagamento]", "importo", "valuta", "[Note Movimento]", "[Operatore]"})
        EXPECT_NE(function.find(column), std::string::npos) << column;
}

} // namespace
} // namespace kova
