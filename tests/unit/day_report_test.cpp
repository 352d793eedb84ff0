#include "day_report.h"
#include "day_report_texts.h"
#include "test_world.h"

#include <gtest/gtest.h>

#include <limits>

namespace kova {
namespace {

using namespace std::chrono_literals;

const RegionalSettings italian;
const auto day = std::chrono::local_days(2026y / 11 / 16);

struct Row {
    Value amount;
    Value coefficient = std::int64_t{1};
    Value payment = std::string_view("Contanti");
    Value order = std::int64_t{10};
    Value currency = std::string_view("€");
    Value note = Null{};
};

DayReport reportOf(const std::vector<Row>& rows) {
    auto found = std::make_shared<Snapshot>();
    for (const char* name : {"moment", "activity", "payment", "order", "coefficient", "amount", "currency",
                             "note", "drawer", "operator"})
        found->addColumn(name);
    for (const Row& row : rows) {
        for (const Value& value :
             {Value(DateTime(day + 9h)), Value(std::string_view("Versamento")), row.payment, row.order,
              row.coefficient, row.amount, row.currency, row.note, Value(Null{}), Value(Null{})})
            found->add(value);
        found->endRow();
    }
    return makeDayReport({day, 1, {}}, Recordset(found), italian);
}

Value money(std::int64_t unscaled) {
    return Decimal{unscaled, 4};
}

std::int32_t errorOf(const std::vector<Row>& rows) {
    return test::errorNumber([&] { (void)reportOf(rows); });
}

TEST(DayReport, SumsEachPaymentTypeInItsCurrencyAndTheCurrencyAsAWhole) {
    const std::string_view card = "Carta CHF";
    const std::string_view chf = "CHF";
    const auto report =
        reportOf({{money(500000), std::int64_t{1}, card, std::int64_t{60}, chf},
                  {money(1000000)},
                  {money(300000), std::int64_t{-1}, std::string_view("CONTANTI")},
                  {money(70000), std::int64_t{1}, std::string_view("Contanti"), std::int64_t{10},
                   std::string_view("chf")},
                  {money(123400), std::int64_t{1}, std::string_view("Bancomat"), std::int64_t{30}}});
    ASSERT_EQ(report.sums.size(), 2U);
    const CurrencySum& euro = report.sums[0];
    EXPECT_EQ(euro.currency, "€") << "the shop's first payment type decides, not the first movement";
    ASSERT_EQ(euro.payments.size(), 2U);
    EXPECT_EQ(euro.payments[0].payment, "Contanti");
    EXPECT_EQ(euro.payments[0].sum.movements, 2);
    EXPECT_EQ(euro.payments[0].sum.incoming, (Decimal{1000000, 4}));
    EXPECT_EQ(euro.payments[0].sum.outgoing, (Decimal{-300000, 4}));
    EXPECT_EQ(euro.payments[0].sum.balance(), (Decimal{700000, 4}));
    EXPECT_EQ(euro.payments[1].payment, "Bancomat");
    EXPECT_EQ(euro.total.movements, 3);
    EXPECT_EQ(euro.total.balance(), (Decimal{823400, 4}));
    const CurrencySum& francs = report.sums[1];
    ASSERT_EQ(francs.payments.size(), 2U) << "letter case makes no other currency";
    EXPECT_EQ(francs.total.balance(), (Decimal{570000, 4}));
}

TEST(DayReport, SumsExactlyWhateverTheColumnsType) {
    std::vector<Row> cents(1000, Row{0.1});
    cents.push_back({0.2, std::int64_t{-1}});
    cents.push_back({std::int64_t{7}});
    cents.push_back({Decimal{5, 1}});
    cents.push_back({Decimal{-1234565, 6}});
    EXPECT_EQ(reportOf(cents).sums[0].total.balance(), (Decimal{1060654, 4}))
        << "100 - 0.2 + 7 + 0.5 - 1.2346, half a unit away from zero";
    EXPECT_EQ(reportOf({{money(9007199254740993)}}).sums[0].total.incoming.unscaled, 9007199254740993)
        << "more digits than a double has";
}

TEST(DayReport, KeepsMovementsWithNothingStoredInThem) {
    const auto report =
        reportOf({{Null{}}, {money(50000), Null{}, Null{}, Null{}, Null{}, std::string_view("resto")}});
    ASSERT_EQ(report.movements.size(), 2U);
    EXPECT_EQ(report.movements[0].amount, std::nullopt);
    EXPECT_EQ(report.movements[0].note, "");
    EXPECT_EQ(report.movements[0].drawer, 0);
    EXPECT_EQ(report.movements[1].note, "resto");
    ASSERT_EQ(report.sums.size(), 1U);
    EXPECT_EQ(report.sums[0].total.movements, 1) << "what has no amount does not count";
    EXPECT_EQ(report.sums[0].total.incoming, (Decimal{50000, 4})) << "no coefficient: into the drawer";
    EXPECT_TRUE(reportOf({}).movements.empty());
    EXPECT_TRUE(reportOf({}).sums.empty());
}

TEST(DayReport, RefusesWhatNoSumCanHold) {
    constexpr std::int64_t Largest = std::numeric_limits<std::int64_t>::max();
    EXPECT_EQ(errorOf({{money(Largest)}}), 0);
    EXPECT_EQ(errorOf({{money(Largest)}, {money(1)}}), 6);
    EXPECT_EQ(errorOf({{money(Largest), std::int64_t{-1}}, {money(2), std::int64_t{-1}}}), 6);
    EXPECT_EQ(errorOf({{money(Largest), std::int64_t{2}}}), 6);
    EXPECT_EQ(errorOf({{Largest}}), 6);
    EXPECT_EQ(errorOf({{1e18}}), 6);
    EXPECT_EQ(errorOf({{std::string_view("many")}}), 13);
}

TEST(DayReportTexts, WriteAmountsAndTimesAsTheRegionDoes) {
    const auto english = *regionalSettings("en-US");
    const auto text = [](Decimal amount, const RegionalSettings& regional = italian) {
        return moneyText(amount, regional, Sign::Always);
    };
    EXPECT_EQ(text({12345678900, 4}), "+1.234.567,89");
    EXPECT_EQ(text({-1000000, 4}, english), "\u2212100.00");
    EXPECT_EQ(text({9999990000, 4}), "+999.999,00");
    EXPECT_EQ(text({-50, 4}), "\u22120,005");
    EXPECT_EQ(text({1, 4}), "+0,0001");
    EXPECT_EQ(text({0, 4}), "0,00");
    EXPECT_EQ(text({5, 0}), "+5,00");
    EXPECT_EQ(text({std::numeric_limits<std::int64_t>::min(), 4}), "\u2212922.337.203.685.477,5808");
    EXPECT_EQ(moneyText({50000, 4}, italian, Sign::OfNegative), "5,00");
    EXPECT_EQ(moneyText({-50000, 4}, italian, Sign::OfNegative), "\u22125,00");
    EXPECT_EQ(timeOfDayText(day + 8h + 5min + 59s, italian), "08:05");
    EXPECT_EQ(timeOfDayText(day, english), "12:00 AM");
    EXPECT_EQ(timeOfDayText(day + 14h + 5min, english), "2:05 PM");
}

} // namespace
} // namespace kova
