#pragma once
#include "widgets/control.h"

#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

namespace kova {

/// A read-only list of texts with column headers, which a touch sorts by, and a group-by area. Sorting and
/// grouping work on the records held; a new load begins without them.
class ReportGrid : public Control {
  public:
    struct Column {
        std::string caption;
        int width; ///< initial width in characters
        bool resizable;
    };
    /// What a line of the list shows: a record, or the header of a group of records.
    struct Row {
        static constexpr std::int32_t NoRecord = -1;
        std::int32_t record = NoRecord;
        std::int32_t level = 0; ///< of a group header, from 0
        std::string value;      ///< of a group header: the column's value in the group
        std::int32_t count = 0; ///< of a group header: its records
    };
    enum class Direction { AsLoaded, Ascending, Descending };
    /// Reads a cell as a number, or as a date; nothing when it is none.
    using Reading = std::function<std::optional<double>(std::string_view)>;

    using Control::Control;
    void accept(ControlVisitor& visitor) override;

    // The filling side. Nothing is shown anew until `populate`.
    void deleteRecords();
    void deleteColumns();
    /// Inserts a column before the one that has this index, or behind the last.
    void addColumn(int index, const std::string& caption, int width, bool resizable);
    void addRecord();
    /// The next item of a record, which must exist. Cheapest for the last record.
    void addItem(std::size_t record, std::string_view text);
    /// Builds the rows shown from the records.
    void populate();

    [[nodiscard]] const std::vector<Column>& columns() const { return columns_; }
    [[nodiscard]] std::size_t recordCount() const { return records_.size(); }
    /// Empty for an item that was not added. The view is valid until the next record or item is added.
    [[nodiscard]] std::string_view item(std::size_t record, std::size_t column) const;
    [[nodiscard]] const std::vector<Row>& rows() const { return rows_; }
    /// Bytes held by records, rows and texts.
    [[nodiscard]] std::size_t memoryUse() const;

    /// How cells are told to be numbers or dates: a column whose cells all are one or the other, empty ones
    /// aside, is sorted by value. Without readings all are texts.
    void setReadings(Reading number, Reading date);
    /// The cashier's touch on a header: ascending, descending, as loaded.
    Gesture touchHeader(std::size_t column);
    /// The cashier's drag of a header into the group-by area; a column that is there already stays.
    Gesture groupBy(std::size_t column);
    Gesture ungroup();
    [[nodiscard]] std::optional<std::size_t> sortColumn() const { return sortColumn_; }
    [[nodiscard]] Direction sortDirection() const { return direction_; }
    [[nodiscard]] const std::vector<std::size_t>& groupColumns() const { return groupColumns_; }

    [[nodiscard]] const std::string& emptyText() const { return emptyText_; } ///< shown without records
    void setEmptyText(const std::string& text) { assign(emptyText_, text, Property::Text); }
    [[nodiscard]] const std::string& groupHint() const { return groupHint_; } ///< in the empty group-by area
    void setGroupHint(const std::string& text) { assign(groupHint_, text, Property::Text); }
    [[nodiscard]] const std::string& sortPrefix() const {
        return sortPrefix_;
    } ///< before the sort column's name
    void setSortPrefix(const std::string& text) { assign(sortPrefix_, text, Property::Text); }
    [[nodiscard]] const Font& headerFont() const { return headerFont_; }
    void setHeaderFont(const Font& font) { assign(headerFont_, font, Property::Text); }
    [[nodiscard]] const Font& rowFont() const { return rowFont_; }
    void setRowPoints(double points) { assign(rowFont_, Font{rowFont_.face, points, false}, Property::Text); }

  private:
    struct Item {
        std::uint32_t offset, length;
    };
    struct Range {
        std::uint32_t first, count;
    };
    using Order = std::vector<std::int32_t>;
    void sortRecords(Order& order, std::size_t column, bool descending) const;
    [[nodiscard]] std::vector<double> readAs(const Reading& reading, std::size_t column) const;
    void addGroup(const Order& order, std::size_t first, std::size_t end, std::size_t level);
    void clearOrder();

    std::vector<Column> columns_;
    std::string texts_;
    std::vector<Item> items_;
    std::vector<Range> records_;
    std::vector<Row> rows_;
    std::optional<std::size_t> sortColumn_;
    Direction direction_ = Direction::AsLoaded;
    std::vector<std::size_t> groupColumns_;
    Reading number_, date_;
    std::string emptyText_, groupHint_, sortPrefix_;
    Font headerFont_;
    Font rowFont_;
};

} // namespace kova
