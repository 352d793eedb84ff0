#pragma once
#include "base/paged_vector.h"
#include "base/text_arena.h"
#include "widgets/control.h"
#include "widgets/notices.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kova {

/// Records of texts, in a few large pieces of memory that stay for the next records.
class TextTable {
  public:
    void clear();
    void addRecord();
    /// The next item of a record, which must exist. Cheapest for the last record. Throws std::length_error
    /// beyond 2^32 - 1 items, or 4 GiB of texts.
    void addItem(std::size_t record, std::string_view text);

    [[nodiscard]] std::size_t recordCount() const { return records_.size(); }
    /// Empty for an item that was not added. The view is valid until the records are cleared.
    [[nodiscard]] std::string_view item(std::size_t record, std::size_t column) const {
        return texts_.at(place(record, column));
    }
    /// Where its text is. Texts of one place are the same; the same text may have several.
    [[nodiscard]] TextArena::Place place(std::size_t record, std::size_t column) const;
    [[nodiscard]] std::string_view text(TextArena::Place place) const { return texts_.at(place); }
    /// Bytes held.
    [[nodiscard]] std::size_t memoryUse() const;

  private:
    struct Range {
        std::uint32_t first, count;
    };
    TextArena texts_;
    PagedVector<TextArena::Place> items_; ///< those of one record in a row
    PagedVector<Range> records_;
};

/// The texts of a column without their repetitions, in order of first appearance, and which each record has.
struct DistinctTexts {
    DistinctTexts(const TextTable& table, std::size_t column);
    std::vector<std::string_view> texts;
    std::vector<std::uint32_t> ofRecord;
};

/// A read-only list of texts with column headers, which a touch sorts by, a group-by area and a search.
/// Sorting, grouping, searching, sums and selection work on the records held; a new load begins without them.
class ReportGrid : public ControlOfKind<ReportGrid> {
  public:
    struct Column {
        std::string caption;
        int width; ///< in characters; while all are the same, a list is drawn as its texts need it
        bool resizable;
    };
    /// What was added up in one currency.
    struct Sum {
        std::string currency;
        double amount;
    };
    /// A line of the list: a record, or the header of a group.
    struct Row {
        static constexpr std::int32_t None = -1;
        std::int32_t record = None;
        std::int32_t group = None;
        friend bool operator==(const Row&, const Row&) = default;
    };
    /// The records that have the same value in a column, under one header.
    struct Group {
        std::size_t column;
        std::size_t level;   ///< 0 for the outermost
        std::int32_t parent; ///< the group around it, Row::None for the outermost
        std::string value;
        std::int32_t count;
        std::vector<Sum> sums; ///< by first appearance; none when the list has nothing to add up
        std::size_t first;     ///< of its records in `order`
        bool collapsed = false;
    };
    enum class Direction { AsLoaded, Ascending, Descending };
    enum class Extent { Single, Toggle, UpTo }; ///< of a touch on a record: alone, with Ctrl, with Shift
    /// How the user's region writes what stands in the cells. Without readings all are texts.
    struct Conventions {
        /// Reads a cell as a number, or as a date; nothing when it is none.
        using Reading = std::function<std::optional<double>(std::string_view)>;
        Reading number, date;
        /// Writes an amount, or a sum, with the decimals that its currency has at least.
        std::function<std::string(double, std::string_view currency)> amount;
        std::string decimalMark = {}; ///< that it writes
    };
    /// Does what leaves the list alone and may take long.
    using LongWork = std::function<void(const std::function<void()>&)>;
    /// What a context menu offers, in the user's language.
    struct MenuTexts {
        std::string copy, selectAll, save;
    };

    using ControlOfKind::ControlOfKind;

    // The filling side. Nothing new is shown until `populate`.
    void deleteRecords();
    void deleteColumns();
    /// Inserts a column before the one that has this index, or behind the last.
    void addColumn(int index, const std::string& caption, int width, bool resizable);
    void addRecord() { table_.addRecord(); }
    /// The next item of a record, which must exist. Cheapest for the last record.
    void addItem(std::size_t record, std::string_view text) { table_.addItem(record, text); }
    /// The records and their memory, to be filled where the list's drawing cannot see it; none are left until
    /// they are given back.
    [[nodiscard]] TextTable takeRecords() { return std::exchange(table_, TextTable()); }
    void giveRecords(TextTable records) { table_ = std::move(records); }
    /// Builds the rows shown from the records.
    void populate();
    /// The filling failed: shows what came until then, without sums, until the records are deleted.
    void breakOff();
    /// The record that is to be in sight when the list is shown first.
    void setNewest(std::size_t record) { newest_ = record; }

    [[nodiscard]] const std::vector<Column>& columns() const { return columns_; }
    [[nodiscard]] std::size_t recordCount() const { return table_.recordCount(); }
    /// Empty for an item that was not added. The view is valid until the next record or item is added.
    [[nodiscard]] std::string_view item(std::size_t record, std::size_t column) const {
        return table_.item(record, column);
    }
    [[nodiscard]] const std::vector<Row>& rows() const { return rows_; }
    [[nodiscard]] const Group& group(const Row& header) const {
        return groups_.at(static_cast<std::size_t>(header.group));
    }
    /// What is drawn in a cell: an amount with the decimals of its currency, all else as it is.
    [[nodiscard]] std::string shown(std::size_t record, std::size_t column) const;
    /// The most decimals that an amount is shown with.
    [[nodiscard]] std::size_t decimals() const { return decimals_; }
    [[nodiscard]] const std::string& decimalMark() const { return conventions_.decimalMark; }
    /// Whether a record is money that goes out, by its sign.
    [[nodiscard]] bool isOutflow(std::size_t record) const { return amountOf(record).value_or(0) < 0; }
    [[nodiscard]] std::optional<std::size_t> newest() const { return newest_; }
    /// All records in the order shown, those of collapsed groups among them and those that a search leaves
    /// out not; as of the last `populate`.
    [[nodiscard]] const std::vector<std::int32_t>& order() const { return order_; }
    [[nodiscard]] bool brokenOff() const { return brokenOff_; }
    /// Whether its records were deleted and others have yet to come: nobody knows whether it is empty.
    [[nodiscard]] bool filling() const { return filling_; }
    /// Another number after each `deleteRecords`: a record is the same one only under the same number.
    [[nodiscard]] std::uint32_t load() const { return load_; }
    /// Bytes held by texts, records and rows.
    [[nodiscard]] std::size_t memoryUse() const;

    /// A column whose cells are all numbers, or all dates, empty ones aside, is sorted by value.
    void setConventions(Conventions conventions) { conventions_ = std::move(conventions); }
    /// Names the columns to add up and to add up by, letter case aside. A list that has both, with nothing
    /// but numbers in the first, shows sums. They are exact for money, that is to four decimals.
    void setSummedColumns(std::string amount, std::string currency);
    [[nodiscard]] std::optional<std::size_t> amountColumn() const;
    /// Of all records in `order`.
    [[nodiscard]] const std::vector<Sum>& totals() const { return totals_; }
    /// As shown: each currency before its amount.
    [[nodiscard]] std::string written(const std::vector<Sum>& sums) const;

    // The cashier's gestures.
    /// A touch on a header: ascending, descending, as loaded.
    Gesture touchHeader(std::size_t column);
    /// A header dragged into the group-by area; a column that is there already stays.
    Gesture groupBy(std::size_t column);
    Gesture ungroup();
    /// Takes the room from the column to the right, or gives it; both keep a legible rest. The last column
    /// and one that is not resizable stay.
    Gesture resizeColumn(std::size_t column, int width);
    /// Takes over the widths in which the columns were drawn, before the first border moves; one for each
    /// column.
    Gesture adoptWidths(const std::vector<int>& widths);
    /// Collapses or expands a group at its header; selects a record.
    Gesture touchRow(std::size_t row, Extent extent);
    /// Selects all that is shown.
    Gesture selectAll();
    /// Leaves the records of which a cell has this text, letter case and accents aside; all for none.
    Gesture search(std::string_view text);
    /// What is searched for, folded; empty for nothing.
    [[nodiscard]] const std::string& searched() const { return searched_; }

    [[nodiscard]] std::optional<std::size_t> sortColumn() const { return sortColumn_; }
    [[nodiscard]] Direction sortDirection() const { return direction_; }
    [[nodiscard]] const std::vector<std::size_t>& groupColumns() const { return groupColumns_; }
    [[nodiscard]] bool selected(std::size_t record) const {
        return record < selected_.size() && selected_[record];
    }
    /// In the order shown.
    [[nodiscard]] std::vector<std::size_t> selectedRecords() const;

    [[nodiscard]] const std::string& emptyText() const { return emptyText_; } ///< shown without records
    void setEmptyText(const std::string& text) { assign(emptyText_, text, Property::Text); }
    [[nodiscard]] const std::string& brokenOffText() const { return brokenOffText_; } ///< of a list cut short
    void setBrokenOffText(const std::string& text) { assign(brokenOffText_, text, Property::Text); }
    [[nodiscard]] const std::string& groupHint() const { return groupHint_; } ///< in the empty group-by area
    void setGroupHint(const std::string& text) { assign(groupHint_, text, Property::Text); }
    /// Before the sort column's name, with whatever blank there is to be between them.
    [[nodiscard]] const std::string& sortPrefix() const { return sortPrefix_; }
    void setSortPrefix(const std::string& text) { assign(sortPrefix_, text, Property::Text); }
    /// Whether what it would be loaded with now is something else than it was; it is drawn dimmed then.
    [[nodiscard]] bool stale() const { return stale_; }
    void setStale(bool stale) { assign(stale_, stale, Property::Enabled); }
    /// Of a file that it is saved in, without a folder.
    [[nodiscard]] const std::string& fileName() const { return fileName_; }
    void setFileName(std::string name) { fileName_ = std::move(name); }
    /// How it is written into a file; at once, where nobody says.
    void setWriting(LongWork writing) { writing_ = std::move(writing); }
    [[nodiscard]] const LongWork& writing() const { return writing_; }
    /// Says whether it was saved; a list may have none. It must outlive the list.
    [[nodiscard]] PageNotice* notice() const { return notice_; }
    void setNotice(PageNotice& notice) { notice_ = &notice; }
    [[nodiscard]] const MenuTexts& menuTexts() const { return menuTexts_; }
    void setMenuTexts(MenuTexts texts) { menuTexts_ = std::move(texts); }
    [[nodiscard]] const Font& headerFont() const { return headerFont_; }
    void setHeaderFont(const Font& font) { assign(headerFont_, font, Property::Text); }
    [[nodiscard]] const Font& rowFont() const { return rowFont_; }
    void setRowPoints(double points) { assign(rowFont_, Font{rowFont_.face, points, false}, Property::Text); }

  private:
    static constexpr std::uint32_t NoAmount = UINT32_MAX;
    /// The values of a group and of those around it.
    using GroupPath = std::vector<std::string>;

    // report_grid_order.cpp
    void putInOrder();
    void arrange(); ///< the same, and tells it
    void sortRecords(std::size_t column, bool descending);
    /// Gives the number of each record's value.
    std::vector<std::uint32_t> groupRecords(std::size_t column);
    [[nodiscard]] GroupPath pathOf(std::int32_t group) const;
    void addGroups(const std::vector<std::vector<std::uint32_t>>& values, std::size_t first, std::size_t end,
                   std::size_t level, std::int32_t parent);
    void buildRows();
    // report_grid_search.cpp
    [[nodiscard]] std::vector<std::int32_t> foundRecords() const;
    // report_grid_sums.cpp
    void readAmounts();
    void countDecimals();
    [[nodiscard]] std::optional<double> amountOf(std::size_t record) const;
    [[nodiscard]] std::optional<std::size_t> currencyColumn() const;
    [[nodiscard]] std::string shownAmount(std::string_view cell, std::string_view currency) const;
    [[nodiscard]] std::vector<Sum> sumsOf(std::size_t first, std::size_t end) const;

    [[nodiscard]] std::optional<std::size_t> findColumn(std::string_view caption) const;
    void forgetOrder();

    std::vector<Column> columns_;
    TextTable table_;
    std::uint32_t load_ = 0;
    bool brokenOff_ = false, filling_ = false;
    std::size_t populated_ = 0; ///< records
    std::optional<std::size_t> newest_;
    std::vector<std::int32_t> order_;
    std::vector<Row> rows_;
    std::vector<Group> groups_;
    std::optional<std::size_t> sortColumn_;
    Direction direction_ = Direction::AsLoaded;
    std::vector<std::size_t> groupColumns_;
    std::set<GroupPath> collapsed_;
    std::string searched_;
    std::vector<bool> selected_; ///< by record
    std::size_t anchor_ = 0;     ///< the row where the selection was begun
    std::string amountCaption_, currencyCaption_;
    std::vector<double> amounts_; ///< of each record in ten-thousandths; none when the list has no sums
    std::vector<std::uint32_t> currencies_; ///< of each amount, or NoAmount
    std::vector<std::string_view> currencyTexts_;
    std::vector<Sum> totals_;
    std::size_t decimals_ = 0;
    Conventions conventions_;
    MenuTexts menuTexts_;
    bool stale_ = false;
    std::string fileName_;
    LongWork writing_ = [](const std::function<void()>& work) { work(); };
    PageNotice* notice_ = nullptr;
    std::string emptyText_, brokenOffText_, groupHint_, sortPrefix_;
    Font headerFont_;
    Font rowFont_;
};

class ReportGrid;

// A list as text, UTF-8, lines ended by CR LF.

/// The records, in the order given, with a tab between their items, as spreadsheets paste them. Tabs and line
/// breaks inside an item become blanks.
std::string tabSeparated(const ReportGrid& grid, const std::vector<std::size_t>& records);

/// The captions and all records in `order`, in the form of RFC
/// 4180 but for the separator, which is the region's. Begins with the byte order mark, without which
/// spreadsheets take a file for one in the system's 8-bit page.
std::string commaSeparated(const ReportGrid& grid, std::string_view listSeparator);

} // namespace kova
