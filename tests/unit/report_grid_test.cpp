#include "services/conversions.h"
#include "services/sql_date_formatter.h"
#include "widgets/report_grid.h"
#include "widgets/window.h"

#include <gtest/gtest.h>

#include <array>

namespace kova {
namespace {

const RegionalSettings Italian;

class Report : public testing::Test {
  protected:
    Report() {
        window.setVisible(true);
        grid.setReadings(
            [](std::string_view cell) {
                return isNumeric(cell, Italian) ? std::optional(toDouble(cell, Italian)) : std::nullopt;
            },
            [](std::string_view cell) -> std::optional<double> {
                const auto date = parseDate(cell, Italian);
                return date ? std::optional(static_cast<double>(date->time_since_epoch().count()))
                            : std::nullopt;
            });
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
    /// Record numbers in the order shown; a group header stands as the number of its records in brackets.
    [[nodiscard]] std::string shown() const {
        std::string result;
        for (const auto& row : grid.rows())
            result += row.record == ReportGrid::Row::NoRecord
                          ? "[" + row.value + " " + std::to_string(row.count) + "]"
                          : std::to_string(row.record);
        return result;
    }
    Window window{"window", "", {}};
    ReportGrid grid{{&window, "grid", {}}};
};

TEST_F(Report, SortsByValueWhereAColumnIsAllNumbersOrDates) {
    EXPECT_EQ(shown(), "0123");
    grid.touchHeader(2);
    EXPECT_EQ(shown(), "3102") << "as numbers; the empty amount first";
    grid.touchHeader(2);
    EXPECT_EQ(shown(), "2013");
    grid.touchHeader(2);
    EXPECT_EQ(shown(), "0123") << "the third touch gives back the order loaded";
    grid.touchHeader(0);
    EXPECT_EQ(shown(), "2310") << "as dates, across years";
    grid.touchHeader(1);
    EXPECT_EQ(shown(), "3102") << "as letters, since not all are numbers; equal ones keep their order";
}

TEST_F(Report, GroupsRecordsInTheirSortedOrder) {
    grid.touchHeader(2);
    grid.groupBy(1);
    EXPECT_EQ(shown(), "[10 1]3[a 1]1[b 2]02");
    grid.groupBy(1);
    EXPECT_EQ(grid.groupColumns().size(), 1U);
    grid.groupBy(0);
    EXPECT_EQ(shown(), "[10 1][01/12/2025 1]3[a 1][16/10/2026 1]1[b 2][ 1]2[02/11/2026 1]0");
    grid.ungroup();
    EXPECT_EQ(shown(), "3102");
    grid.deleteRecords();
    grid.populate();
    EXPECT_EQ(shown(), "");
    EXPECT_FALSE(grid.sortColumn()) << "a new load begins without an order";
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

TEST(SqlDates, MeanTheSameOnEveryServer) {
    const SqlDateFormatter formatter(Italian);
    EXPECT_EQ(formatter.FormatSqlDate("6/11/2026", true, true),
              "CONVERT(datetime,'2026-11-06T00:00:00',126)");
    EXPECT_EQ(formatter.FormatSqlDate("06/11/2026 23:59.59", true, true),
              "CONVERT(datetime,'2026-11-06T23:59:59',126)");
    EXPECT_EQ(formatter.FormatSqlDate("06/11/2026 10:00 23:59.59", true, true),
              "CONVERT(datetime,'2026-11-06T23:59:59',126)");
    EXPECT_THROW((void)formatter.FormatSqlDate("oggi", true, true), Error);
}

} // namespace
} // namespace kova
