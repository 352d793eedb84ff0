// The report of a day from the tables of an embedded shop.
#include "day_report.h"

#include "adapters/sqlite/sqlite_database.h"
#include "database_contract.h"

namespace kova {
namespace {

using namespace std::chrono_literals;

class DayReportOfAShop : public testing::Test {
  protected:
    DayReportOfAShop() {
        shop.createSchema();
        shop.execute("INSERT INTO tabActivityDrawer(id, Description) VALUES (1, 'Versamento');"
                     "INSERT INTO tabPagamenti(idpagamento, TipoPagamento, idOrdinamento) VALUES"
                     " (1, 'Contanti', 20), (2, 'Bancomat', 10);"
                     "INSERT INTO tabUtenti(idutente, Nome) VALUES (1, 'Zoë')");
    }
    void store(DateTime time, double amount, std::int32_t till = 1, std::int32_t user = 1,
               std::int32_t payment = 1) {
        shop.storeMovement({.dataOperazione = time,
                            .tipoOperazione = 1,
                            .idpagamento = payment,
                            .importoIncassato = amount,
                            .valuta = "€",
                            .note = "nota",
                            .cassetto = 2,
                            .idCassa = till,
                            .idutente = user});
    }
    [[nodiscard]] DayReport report(const DayScope& scope) const {
        return makeDayReport(scope, shop.connection()->query(dayReportQuery(scope)), {});
    }
    SqliteHostDatabase shop = SqliteHostDatabase::inMemory();
    DateTime day = dateTime(2026, 11, 16);
};

TEST_F(DayReportOfAShop, TakesInTheWholeDayAndNothingElse) {
    store(day + 24h, 1);
    store(day + 24h - 1s, 2);
    store(day, 4);
    store(day - 1s, 8);
    shop.execute("INSERT INTO tabPagamentiScontriniBackoffice(DataOperazione, ImportoIncassato) VALUES"
                 " ('2026-11-16 23:59:59.700', 16), (NULL, 32)");
    const auto found = report({day + 13h, {}, {}}).movements;
    ASSERT_EQ(found.size(), 3U);
    EXPECT_EQ(found[0].amount, (Decimal{40000, 4})) << "in the order in which they happened";
    EXPECT_EQ(found[1].amount, (Decimal{20000, 4}));
    EXPECT_EQ(found[2].amount, (Decimal{160000, 4})) << "the last second has a whole second's length";
    EXPECT_EQ(found[2].activity + found[2].payment + found[2].operatorName, "") << "nothing to name it by";
    EXPECT_EQ(found[0].time, day);
    EXPECT_EQ(found[0].activity, "Versamento");
    EXPECT_EQ(found[0].payment, "Contanti");
    EXPECT_EQ(found[0].currency, "€");
    EXPECT_EQ(found[0].note, "nota");
    EXPECT_EQ(found[0].drawer, 2);
    EXPECT_EQ(found[0].operatorName, "Zoë");
}

TEST_F(DayReportOfAShop, IsRestrictedToTillAndUser) {
    store(day + 9h, 1, 1, 1);
    store(day + 9h, 2, 2, 1);
    store(day + 9h, 4, 1, 2, 2);
    const auto sum = [&](const DayScope& scope) {
        const auto sums = report(scope).sums;
        return sums.empty() ? 0 : sums[0].total.balance().unscaled / 10000;
    };
    EXPECT_EQ(sum({day, {}, {}}), 7);
    EXPECT_EQ(sum({day, 1, {}}), 5);
    EXPECT_EQ(sum({day, {}, 1}), 3);
    EXPECT_EQ(sum({day, 1, 2}), 4);
    EXPECT_EQ(sum({day, 3, {}}), 0);
    EXPECT_EQ(report({day, {}, {}}).sums[0].payments[0].payment, "Bancomat") << "in the shop's own order";
}

} // namespace
} // namespace kova
