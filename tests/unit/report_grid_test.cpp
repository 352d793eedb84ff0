#include "services/conversions.h"
#include "services/number_format.h"
#include "widgets/report_grid.h"
#include "widgets/report_text.h"
#include "widgets/window.h"

#include <gtest/gtest.h>

#include <array>

namespace kova {
namespace {

const RegionalSettings ItalianRegion;

class Report : public testing::Test {
  protected:
    Report() {
        window.setVisible(true);
        grid.setConventions({[](std::string_view cell) { return parseNumber(cell, ItalianRegion); },
                             [](std::string_view cell) -> std::optional<double> {
                                 const auto date = parseDate(cell, ItalianRegion);
                                 return date ? std::optional(
                                                   static_cast<double>(date->time_since_epoch().count()))
                                             : std::nullopt;
                             },
                             [this](double sum) { return numbers.FormatSum(sum); }});
        numbers.SetAmountDecimals(2);
        for (const char* caption : {"day", "kind", "amount"})
            grid.addColumn(static_cast<int>(grid.columns().size()), caption, 20, true);
        add({"02/11/2026", "b", "9,5"});
        add({"16/10/2026", "a", "-100"});
        add({"", "b", "1.000"});
        add({"01/12/2025", "10", ""});
        grid.populate();
    }
    void add(const std::array<const char*, 3>& cells) {
        grid.addRecord();
        for (const char* cell : cells)
            grid.addItem(grid.recordCount() - 1, cell);
    }
    /// Record numbers in the order shown; a group header stands as its value and number of records in
    /// brackets.
    [[nodiscard]] std::string shown() const {
        std::string result;
        for (const auto& row : grid.rows())
            result += row.group == ReportGrid::Row::None
                          ? std::to_string(row.record)
                          : "[" + grid.group(row).value + " " + std::to_string(grid.group(row).count) + "]";
        return result;
    }
    [[nodiscard]] std::string selection() const {
        std::string result;
        for (const std::size_t record : grid.selectedRecords())
            result += std::to_string(record);
        return result;
    }
    NumberFormat numbers{ItalianRegion};
    Window window{"window", "", {}};
    ReportGrid grid{{&window, "grid", {}}};
};

TEST_F(Report, KeepsTextsOfTheSameValueInGroupsOfTheirOwn) {
    grid.deleteRecords();
    for (const char* amount : {"1,0", "1", "1,0"})
        add({"", "k", amount});
    grid.populate();
    grid.touchHeader(2);
    EXPECT_EQ(shown(), "012") << "sorted, they are equal and keep their order";
    grid.touchHeader(2);
    EXPECT_EQ(shown(), "012");
    grid.touchHeader(2);
    grid.groupBy(2);
    EXPECT_EQ(shown(), "[1,0 2]02[1 1]1");
}

TEST_F(Report, CollapsesAndExpandsGroups) {
    using Extent = ReportGrid::Extent;
    grid.groupBy(1);
    grid.groupBy(0);
    const std::string whole = "[10 1][01/12/2025 1]3[a 1][16/10/2026 1]1[b 2][ 1]2[02/11/2026 1]0";
    ASSERT_EQ(shown(), whole);
    grid.touchRow(6, Extent::Single);
    EXPECT_EQ(shown(), "[10 1][01/12/2025 1]3[a 1][16/10/2026 1]1[b 2]");
    grid.touchRow(1, Extent::Single);
    EXPECT_EQ(shown(), "[10 1][01/12/2025 1][a 1][16/10/2026 1]1[b 2]");
    grid.touchHeader(2);
    EXPECT_EQ(shown(), "[10 1][01/12/2025 1][a 1][16/10/2026 1]1[b 2]") << "sorting leaves them as they are";
    EXPECT_EQ(grid.order().size(), 4U) << "what is collapsed is hidden, not gone";
    grid.touchRow(5, Extent::Single);
    grid.touchRow(1, Extent::Single);
    EXPECT_EQ(shown(), whole);
    grid.touchRow(0, Extent::Single);
    grid.ungroup();
    EXPECT_EQ(grid.rows().size(), 4U);
    grid.groupBy(1);
    EXPECT_EQ(grid.rows().size(), 7U) << "a new grouping begins expanded";
}

TEST_F(Report, AddsUpMoneyPerCurrencyWithoutNoise) {
    grid.setSummedColumns("AMOUNT", "kind");
    grid.deleteRecords();
    for (const auto& [kind, amount] : {std::pair{"€", "0,1"},
                                       {"CHF", "1.000"},
                                       {"€", "0,2"},
                                       {"€", "-0,0001"},
                                       {"CHF", ""},
                                       {"", "5"},
                                       {"$", ""}})
        add({"d", kind, amount});
    grid.populate();
    EXPECT_EQ(grid.written(grid.totals()), "€ 0,2999   CHF 1.000,00   5,00");
    grid.groupBy(1);
    std::string sums;
    for (const auto& row : grid.rows())
        if (row.group != ReportGrid::Row::None)
            sums += grid.group(row).value + "=" + grid.written(grid.group(row).sums) + ";";
    EXPECT_EQ(sums, "=5,00;$=;CHF=CHF 1.000,00;€=€ 0,2999;");
    add({"d", "€", "abc"});
    grid.populate();
    EXPECT_TRUE(grid.totals().empty()) << "a sum without one of its amounts would be wrong";
    EXPECT_TRUE(grid.group(grid.rows()[0]).sums.empty());
}

TEST_F(Report, SelectsRecordsAsListsDo) {
    using Extent = ReportGrid::Extent;
    grid.touchHeader(2); // shows 3102
    grid.touchRow(1, Extent::Single);
    EXPECT_EQ(selection(), "1");
    grid.touchRow(3, Extent::UpTo);
    EXPECT_EQ(selection(), "102");
    grid.touchRow(2, Extent::UpTo);
    EXPECT_EQ(selection(), "10") << "from where it was begun";
    grid.touchRow(0, Extent::Toggle);
    EXPECT_EQ(selection(), "310");
    grid.touchRow(1, Extent::Toggle);
    EXPECT_EQ(selection(), "30");
    grid.touchHeader(2);
    EXPECT_EQ(selection(), "03") << "records stay selected, in the order now shown";
    grid.touchRow(2, Extent::Single);
    EXPECT_EQ(selection(), "1");
    grid.selectAll();
    EXPECT_EQ(selection(), "2013");
    grid.touchRow(9, Extent::Single);
    EXPECT_EQ(selection(), "2013") << "there is no such row";
    grid.deleteRecords();
    add({"", "", ""});
    grid.populate();
    EXPECT_EQ(selection(), "");
}

TEST_F(Report, IsHandedOutAsText) {
    add({"a;b", "say \"c\"", "x\ty\r\nz"});
    grid.populate();
    grid.touchHeader(1);
    grid.groupBy(1);
    grid.touchRow(0, ReportGrid::Extent::Single); // collapsed
    EXPECT_EQ(tabSeparated(grid, {4, 0}), "a;b\tsay \"c\"\tx y  z\r\n02/11/2026\tb\t9,5\r\n");
    EXPECT_EQ(commaSeparated(grid, ";"), "\xEF\xBB\xBF"
                                         "day;kind;amount\r\n"
                                         "01/12/2025;10;\r\n"
                                         "16/10/2026;a;-100\r\n"
                                         "02/11/2026;b;9,5\r\n"
                                         ";b;1.000\r\n"
                                         "\"a;b\";\"say \"\"c\"\"\";\"x\ty\r\nz\"\r\n");
}

TEST_F(Report, TakesItemsInAnyOrderAndGivesEmptyOnesForMissing) {
    grid.addRecord();
    grid.addItem(0, "further");
    grid.addItem(4, "x");
    EXPECT_EQ(grid.item(0, 3), "further");
    EXPECT_EQ(grid.item(1, 0), "16/10/2026");
    EXPECT_EQ(grid.item(4, 0), "x");
    EXPECT_EQ(grid.item(4, 1), "");
    window.setVisible(false);
    EXPECT_EQ(grid.touchHeader(0), Gesture::Hidden);
}

} // namespace
} // namespace kova
