#include "report_checks.h"

#include "base/folded_text.h"
#include "services/conversions.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>

namespace kova::test {
namespace {

using Row = ReportGrid::Row;
using Amounts = std::map<std::string, std::int64_t>; ///< in ten-thousandths by currency

std::int64_t units(double amount) {
    return std::llround(amount * 10'000);
}

Amounts amountsOf(const std::vector<ReportGrid::Sum>& sums) {
    Amounts amounts;
    for (const auto& sum : sums)
        EXPECT_TRUE(amounts.emplace(sum.currency, units(sum.amount)).second) << "one sum a currency";
    return amounts;
}

/// The list read again from its rows, each of which must be what its header says.
class ListReader {
  public:
    ListReader(const ReportGrid& grid, const RegionalSettings& regional) : grid_(grid), regional_(regional) {}

    void read() {
        const std::size_t end = readLevel(0, 0, Row::None, 0);
        EXPECT_EQ(end, grid_.rows().size());
        EXPECT_EQ(position_, grid_.order().size()) << "shown and hidden ones are all";
        Amounts all;
        add(all, 0, position_);
        EXPECT_EQ(amountsOf(grid_.totals()), all);
    }

  private:
    /// Reads the rows of one level below a header, from `row` on; gives the row behind them.
    std::size_t readLevel(std::size_t row, std::size_t level, std::int32_t parent, std::int32_t inside) {
        const std::size_t first = position_;
        const auto& rows = grid_.rows();
        if (level == grid_.groupColumns().size()) {
            for (; row < rows.size() && rows[row].group == Row::None &&
                   (parent == Row::None || position_ < first + static_cast<std::size_t>(inside));
                 ++row, ++position_)
                EXPECT_EQ(rows[row].record, grid_.order()[position_]);
            expectInOrder(first, position_);
            return row;
        }
        while (row < rows.size() && rows[row].group != Row::None && grid_.group(rows[row]).level == level)
            row = readGroup(row, level, parent);
        return row;
    }

    std::size_t readGroup(std::size_t row, std::size_t level, std::int32_t parent) {
        const auto& header = grid_.group(grid_.rows()[row]);
        EXPECT_EQ(header.parent, parent);
        EXPECT_EQ(header.column, grid_.groupColumns()[level]);
        EXPECT_GT(header.count, 0);
        const std::size_t first = position_;
        const std::size_t end = first + static_cast<std::size_t>(header.count);
        if (end > grid_.order().size()) {
            ADD_FAILURE() << "a group of more records than there are";
            return grid_.rows().size();
        }
        for (std::size_t at = first; at < end; ++at)
            EXPECT_EQ(grid_.item(recordAt(at), header.column), header.value);
        Amounts sum;
        add(sum, first, end);
        EXPECT_EQ(amountsOf(header.sums), sum);
        if (header.collapsed)
            position_ = end;
        const std::size_t next =
            header.collapsed ? row + 1 : readLevel(row + 1, level + 1, grid_.rows()[row].group, header.count);
        EXPECT_EQ(position_, end) << "a group holds as many records as its header says";
        return next;
    }

    /// Records that nothing else tells apart stand as sorted, and those of one value as loaded.
    void expectInOrder(std::size_t first, std::size_t end) {
        const auto column = grid_.sortColumn();
        const bool byAmount = column && column == grid_.amountColumn();
        for (std::size_t at = first + 1; at < end; ++at) {
            const std::size_t before = recordAt(at - 1), record = recordAt(at);
            if (byAmount && amount(before) != amount(record)) {
                EXPECT_EQ(amount(before) < amount(record),
                          grid_.sortDirection() == ReportGrid::Direction::Ascending);
            } else if (!column || grid_.item(before, *column) == grid_.item(record, *column)) {
                EXPECT_LT(before, record);
            }
        }
    }

    void add(Amounts& amounts, std::size_t first, std::size_t end) const {
        if (grid_.brokenOff())
            return; // what is not whole has no sums
        std::optional<std::size_t> currency;
        for (std::size_t i = 0; i < grid_.columns().size(); ++i)
            if (grid_.columns()[i].caption == "valuta" || grid_.columns()[i].caption == "Valuta")
                currency = i;
        for (std::size_t at = first; at < end && currency; ++at)
            if (!grid_.item(recordAt(at), *grid_.amountColumn()).empty())
                amounts[std::string(grid_.item(recordAt(at), *currency))] += units(amount(recordAt(at)));
    }
    /// An empty one is less than any.
    [[nodiscard]] double amount(std::size_t record) const {
        const auto text = grid_.item(record, *grid_.amountColumn());
        return text.empty() ? -HUGE_VAL : parseNumber(text, regional_).value_or(NAN);
    }
    [[nodiscard]] std::size_t recordAt(std::size_t position) const {
        return static_cast<std::size_t>(grid_.order().at(position));
    }

    const ReportGrid& grid_;
    const RegionalSettings& regional_;
    std::size_t position_ = 0; ///< in the order
};

} // namespace

void addMovements(ScriptedDatabase& database) {
    const Value day = DateTime(std::chrono::local_days(std::chrono::year(2026) / 11 / 16));
    std::vector<std::vector<Value>> rows{
        {day, "Prelievo", "Contanti", -12.5, "€", "b", "Anna"},
        {day, "Non fiscale", "Carta", std::int64_t{7}, "CHF", Null{}, "Zoe"},
        {day, "Prelievo", "Carta", Null{}, "€", "", Null{}},
        {Null{}, "Deposito", "Contanti", Decimal{10'000'001, 4}, Null{}, "a;\"b\"", "Anna"},
        {day, "Deposito", "Contanti", 7.0, "€", "a", "Zoe"},
        {day, "Prelievo", "Contanti", 0.1, "€", "b", "Anna"},
        {day, "Prelievo", "Carta", 0.2, "€", "2", "Anna"}};
    std::vector<std::string> columns{
        "Data-Ora Aggiornamento", "Tipo Operazione", "Tipo Pagamento", "importo", "Valuta",
        "Note Movimento",         "Operatore"};
    database.table("Report_Drawer", columns, rows);
    rows.emplace_back(rows.front());
    columns.insert(columns.begin() + 1, "Cassetto");
    for (std::size_t i = 0; i < rows.size(); ++i)
        rows[i].insert(rows[i].begin() + 1, static_cast<std::int64_t>(i % 3));
    database.table("GetDailyOperation", columns, rows);
}

bool expectLoaded(const ReportGrid& list, const ScriptedDatabase& database) {
    const std::string& query = database.texts.back();
    const bool views = query.find("GetDailyOperation") == std::string::npos;
    const auto& failures = database.failures;
    const bool fails = !failures.empty() && query.find(failures.front().piece) != std::string::npos;
    const std::size_t rows = views ? 7 : 8; // as many columns
    EXPECT_EQ(list.brokenOff(), fails);
    EXPECT_EQ(list.columns().size(), fails && !failures.front().afterRows ? 0 : rows);
    if (!fails)
        EXPECT_EQ(list.rows().size(), rows);
    else
        EXPECT_EQ(list.recordCount(), failures.front().afterRows ? *failures.front().afterRows + 1 : 0);
    return !fails;
}

void expectConsistent(const ReportGrid& grid, const RegionalSettings& regional) {
    auto records = grid.order();
    std::ranges::sort(records);
    std::vector<std::int32_t> found;
    for (std::size_t record = 0; record < grid.recordCount(); ++record)
        for (std::size_t column = 0, last = grid.columns().size(); column < last || last == 0; ++column)
            if (last == 0 ||
                foldedText(grid.item(record, column)).find(grid.searched()) != std::string::npos ||
                foldedText(grid.shown(record, column)).find(grid.searched()) != std::string::npos) {
                found.push_back(static_cast<std::int32_t>(record));
                break;
            }
    ASSERT_EQ(records, found);
    ListReader(grid, regional).read();

    const auto selection = grid.selectedRecords();
    auto next = selection.begin();
    for (const std::int32_t record : grid.order()) {
        const bool selected = next != selection.end() && *next == static_cast<std::size_t>(record);
        EXPECT_EQ(grid.selected(static_cast<std::size_t>(record)), selected);
        next += selected ? 1 : 0;
    }
    EXPECT_EQ(next, selection.end());

    int width = 0;
    for (const auto& column : grid.columns()) {
        EXPECT_GE(column.width, 5);
        width += column.width;
    }
    EXPECT_EQ(width, 20 * static_cast<int>(grid.columns().size()));
}

} // namespace kova::test
