// The dialog's own list, with its reading of numbers, dates and money, filled by hand.
#include "scene.h"
#include "trace_file.h"
#include "widgets/report_grid.h"

#include <gtest/gtest.h>

namespace kova::test {
namespace {

/// After each line: the records' numbers in the order shown, a group's header as its value, number of records
/// and sums in brackets; the records selected, the totals, the columns' widths.
class ReportPlayer : public ScenePlayer {
  public:
    ReportPlayer() {
        world.show();
        world.control<TabControl>("TabControl").select(1);
        for (const char* caption : {"day", "valuta", "importo"})
            grid().addColumn(static_cast<int>(grid().columns().size()), caption, 20, true);
        verbs["delete"] = [this](auto&) { grid().deleteRecords(); };
        verbs["record"] = [this](auto& words) {
            grid().addRecord();
            for (std::size_t i = 1; i < words.size(); ++i)
                grid().addItem(grid().recordCount() - 1, words[i]);
        };
        gesture("populate", [this](auto&) { grid().populate(); });
        gesture("sort", [this](auto& words) { grid().touchHeader(number(words, 1)); });
        gesture("group", [this](auto& words) { grid().groupBy(number(words, 1)); });
        gesture("ungroup", [this](auto&) { grid().ungroup(); });
        gesture("row", [this](auto& words) { grid().touchRow(number(words, 1), extent(words)); });
        gesture("all", [this](auto&) { grid().selectAll(); });
        gesture("widths", [this](auto& words) {
            std::vector<int> widths;
            for (std::size_t i = 1; i < words.size(); ++i)
                widths.push_back(std::stoi(words[i]));
            grid().adoptWidths(widths);
        });
        gesture("resize", [this](auto& words) {
            grid().resizeColumn(number(words, 1), static_cast<int>(number(words, 2)));
        });
        verbs["texts"] = [this](auto&) {
            seen << traced(tabSeparated(grid(), {4, 0})) << '\n'
                 << traced(commaSeparated(grid(), ";")) << '\n';
        };
    }

  private:
    ReportGrid& grid() { return world.control<ReportGrid>("grd_mov_giornata"); }
    static std::size_t number(const Words& words, std::size_t at) { return std::stoul(words.at(at)); }
    static ReportGrid::Extent extent(const Words& words) {
        return words.size() == 2        ? ReportGrid::Extent::Single
               : words[2] == "toggling" ? ReportGrid::Extent::Toggle
                                        : ReportGrid::Extent::UpTo;
    }
    void gesture(const std::string& name, const std::function<void(const Words&)>& verb) {
        verbs[name] = [this, verb](const Words& words) {
            verb(words);
            for (const std::string& word : words)
                seen << word << ' ';
            seen << '|';
            for (const auto& row : grid().rows())
                if (row.group == ReportGrid::Row::None)
                    seen << ' ' << row.record;
                else
                    seen << " [" << grid().group(row).value << " x" << grid().group(row).count << " "
                         << grid().written(grid().group(row).sums) << "]";
            seen << " | selected";
            for (const std::size_t record : grid().selectedRecords())
                seen << ' ' << record;
            seen << " | " << grid().written(grid().totals()) << " |";
            for (const auto& column : grid().columns())
                seen << ' ' << column.width;
            seen << " | of " << grid().order().size() << '\n';
        };
    }
};

TEST(ReportGrid, GoesAsEver) {
    expectTrace("report_grid", played<ReportPlayer>("report_grid"));
}

} // namespace
} // namespace kova::test
