#include "test_world.h"
#include "widgets/report_text.h"

#include <gtest/gtest.h>

#include <array>

namespace kova::test {
namespace {

using Extent = ReportGrid::Extent;

/// The dialog's own list, with its reading of numbers, dates and money, filled by hand.
class Report : public testing::Test {
  protected:
    Report() {
        world.connect();
        world.show();
        world.control<TabControl>("TabControl").select(1);
        for (const char* caption : {"day", "valuta", "importo"})
            grid().addColumn(static_cast<int>(grid().columns().size()), caption, 20, true);
        add({"02/11/2026", "b", "9,5"});
        add({"16/10/2026", "a", "-100"});
        add({"", "b", "1.000"});
        add({"01/12/2025", "10", ""});
        grid().populate();
    }
    ReportGrid& grid() { return world.control<ReportGrid>("grd_mov_giornata"); }
    void add(const std::array<const char*, 3>& cells) {
        grid().addRecord();
        for (const char* cell : cells)
            grid().addItem(grid().recordCount() - 1, cell);
    }
    /// Record numbers in the order shown; a group header stands as its value and number of records in
    /// brackets.
    std::string shown() {
        std::string result;
        for (const auto& row : grid().rows())
            result += row.group == ReportGrid::Row::None ? std::to_string(row.record)
                                                         : "[" + grid().group(row).value + " " +
                                                               std::to_string(grid().group(row).count) + "]";
        return result;
    }
    std::string selection() {
        std::string result;
        for (const std::size_t record : grid().selectedRecords())
            result += std::to_string(record);
        return result;
    }
    World world;
};

TEST_F(Report, CollapsesAndExpandsGroups) {
    grid().groupBy(1);
    grid().groupBy(0);
    const std::string whole = "[10 1][01/12/2025 1]3[a 1][16/10/2026 1]1[b 2][ 1]2[02/11/2026 1]0";
    ASSERT_EQ(shown(), whole);
    grid().touchRow(6, Extent::Single);
    grid().touchRow(1, Extent::Single);
    grid().touchHeader(2);
    EXPECT_EQ(shown(), "[10 1][01/12/2025 1][a 1][16/10/2026 1]1[b 2]") << "sorting leaves them as they are";
    EXPECT_EQ(grid().order().size(), 4U) << "what is collapsed is hidden, not gone";
    grid().touchRow(5, Extent::Single);
    grid().touchRow(1, Extent::Single);
    EXPECT_EQ(shown(), whole);
    grid().touchRow(0, Extent::Single);
    grid().ungroup();
    grid().groupBy(1);
    EXPECT_EQ(grid().rows().size(), 7U) << "a new grouping begins expanded";
}

TEST_F(Report, AddsUpMoneyPerCurrencyWithoutNoise) {
    grid().deleteRecords();
    for (const auto& [currency, amount] : {std::pair{"€", "0,1"},
                                           {"CHF", "1.000"},
                                           {"€", "0,2"},
                                           {"€", "-0,0001"},
                                           {"CHF", ""},
                                           {"", "5"},
                                           {"$", ""},
                                           {"CHF", "1000,0"}})
        add({"d", currency, amount});
    grid().populate();
    EXPECT_EQ(grid().written(grid().totals()), "€ 0,2999   CHF 2.000,00   5,00");
    grid().groupBy(1);
    grid().touchHeader(2);
    EXPECT_EQ(shown(), "[ 1]5[$ 1]6[CHF 3]417[€ 3]302") << "texts of the same value keep their order";
    std::string sums;
    for (const auto& row : grid().rows())
        if (row.group != ReportGrid::Row::None)
            sums += grid().group(row).value + "=" + grid().written(grid().group(row).sums) + ";";
    EXPECT_EQ(sums, "=5,00;$=;CHF=CHF 2.000,00;€=€ 0,2999;");
    grid().groupBy(2);
    EXPECT_EQ(shown(),
              "[ 1][5 1]5[$ 1][ 1]6[CHF 3][ 1]4[1.000 1]1[1000,0 1]7[€ 3][-0,0001 1]3[0,1 1]0[0,2 1]2");
    add({"d", "€", "abc"});
    grid().populate();
    EXPECT_TRUE(grid().totals().empty()) << "a sum without one of its amounts would be wrong";
    EXPECT_TRUE(grid().group(grid().rows()[0]).sums.empty());
}

TEST_F(Report, SelectsRecordsAsListsDo) {
    grid().touchHeader(2); // shows 3102
    const std::tuple<std::size_t, Extent, const char*> touches[] = {
        {1, Extent::Single, "1"},
        {3, Extent::UpTo, "102"},
        {2, Extent::UpTo, "10"}, // from where it was begun
        {0, Extent::Toggle, "310"},
        {1, Extent::Toggle, "30"}};
    for (const auto& [row, extent, selected] : touches) {
        grid().touchRow(row, extent);
        EXPECT_EQ(selection(), selected);
    }
    grid().touchHeader(2);
    EXPECT_EQ(selection(), "03") << "records stay selected, in the order now shown";
    grid().touchRow(2, Extent::Single);
    EXPECT_EQ(selection(), "1");
    grid().selectAll();
    grid().touchRow(9, Extent::Single); // no such row
    EXPECT_EQ(selection(), "2013");
    grid().deleteRecords();
    add({"", "", ""});
    grid().populate();
    EXPECT_EQ(selection(), "");
}

TEST_F(Report, ColumnsTakeTheirRoomFromTheNextOne) {
    grid().adoptWidths({10, 30, 0});
    grid().adoptWidths({1, 2}); // of another number of columns
    grid().resizeColumn(2, 9);  // the last one has no next
    const std::pair<int, int> asked[] = {{10, 10}, {25, 25}, {99, 35}, {0, 5}};
    for (const auto& [width, given] : asked) {
        grid().resizeColumn(0, width);
        EXPECT_EQ(grid().columns()[0].width, given);
        EXPECT_EQ(grid().columns()[1].width, 40 - given);
    }
    EXPECT_EQ(grid().columns()[2].width, 1);
}

TEST_F(Report, IsHandedOutAsText) {
    add({"a;b", "say \"c\"", "x\ty\r\nz"});
    grid().addRecord();
    grid().populate();
    grid().touchHeader(1);
    grid().groupBy(1);
    grid().touchRow(0, Extent::Single); // collapsed
    EXPECT_EQ(tabSeparated(grid(), {4, 0}), "a;b\tsay \"c\"\tx y  z\r\n02/11/2026\tb\t9,5\r\n");
    EXPECT_EQ(commaSeparated(grid(), ";"), "\xEF\xBB\xBF"
                                           "day;valuta;importo\r\n"
                                           ";;\r\n"
                                           "01/12/2025;10;\r\n"
                                           "16/10/2026;a;-100\r\n"
                                           "02/11/2026;b;9,5\r\n"
                                           ";b;1.000\r\n"
                                           "\"a;b\";\"say \"\"c\"\"\";\"x\ty\r\nz\"\r\n");
}

} // namespace
} // namespace kova::test
