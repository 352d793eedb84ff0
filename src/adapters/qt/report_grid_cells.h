#pragma once
#include "adapters/qt/accessible_part.h"
#include "adapters/qt/report_grid_view.h"
#include "screen/spoken_name.h"

#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace kova {

inline constexpr int HeaderRow = -1; // the row number of the column headers
inline constexpr int NoRow = -2;     // of what is not to be seen, for now or for ever

/// What stands in a row, wherever that row is: a record, by its number; a group, by its value and those
/// around it; the column headers, when it is neither.
struct RowKey {
    std::int32_t record = ReportGrid::Row::None;
    std::string group = {};
    friend bool operator==(const RowKey&, const RowKey&) = default;
    friend bool operator<(const RowKey& one, const RowKey& other) {
        return std::tie(one.record, one.group) < std::tie(other.record, other.group);
    }
};

RowKey keyOf(const ReportGrid& grid, int row);

/// Where rows are by their keys, looked for when they are asked for.
class RowPlaces {
  public:
    explicit RowPlaces(const ReportGridView& view) : view_(view) {} ///< which outlives it
    /// In the model shown, which there must be.
    [[nodiscard]] int rowOf(const RowKey& key) const;

  private:
    [[nodiscard]] int knownRow(const RowKey& key) const;
    const ReportGridView& view_;
    // Where they were when last looked for.
    mutable std::vector<int> recordRows_;
    mutable std::map<std::string, int> groupRows_;
};

/// A cell of a record or of a group, or a column header. It follows what it shows to other rows.
class GridCellAccessible final : public AccessiblePart<ReportGridView>, public QAccessibleTableCellInterface {
  public:
    GridCellAccessible(ReportGridView& view, const RowPlaces& places, RowKey key, int column)
        : AccessiblePart(view), places_(places), key_(std::move(key)), column_(column) {}

    [[nodiscard]] bool isValid() const override {
        return model() != nullptr && column_ < static_cast<int>(model()->columns().size()) && row() != NoRow;
    }
    [[nodiscard]] QAccessible::Role role() const override {
        return key_ == RowKey() ? QAccessible::ColumnHeader : QAccessible::Cell;
    }
    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::TableCellInterface ? static_cast<QAccessibleTableCellInterface*>(this)
                                                       : AccessiblePart::interface_cast(type);
    }

    [[nodiscard]] QStringList actionNames() const override;
    [[nodiscard]] bool isSelected() const override {
        return isValid() && key_.record != ReportGrid::Row::None &&
               model()->selected(static_cast<std::size_t>(key_.record));
    }
    [[nodiscard]] QList<QAccessibleInterface*> columnHeaderCells() const override {
        QAccessibleInterface* const table = parent();
        return table == nullptr ? QList<QAccessibleInterface*>()
                                : QList<QAccessibleInterface*>{table->child(column_)};
    }
    [[nodiscard]] QList<QAccessibleInterface*> rowHeaderCells() const override { return {}; }
    [[nodiscard]] int columnIndex() const override { return column_; }
    [[nodiscard]] int rowIndex() const override { return row(); }
    [[nodiscard]] int columnExtent() const override { return 1; }
    [[nodiscard]] int rowExtent() const override { return 1; }
    [[nodiscard]] QAccessibleInterface* table() const override { return parent(); }

  protected:
    [[nodiscard]] QRect place() const override {
        return widget()->cell(row(), column_).toAlignedRect() & widget()->rect();
    }
    void addTo(QAccessible::State& state) const override;
    [[nodiscard]] bool canPress() const override { return widget()->reachable(); }
    void press() override { widget()->touchCell(row(), column_); }
    void perform(const QString& action) override;
    [[nodiscard]] QString name() const override {
        return QString::fromStdString(spokenCell(*model(), modelRow(), column()));
    }

  private:
    [[nodiscard]] const ReportGrid* model() const { return widget() ? widget()->shownGrid() : nullptr; }
    [[nodiscard]] int row() const { return places_.rowOf(key_); }
    [[nodiscard]] std::optional<std::size_t> modelRow() const {
        const int at = row();
        return at == HeaderRow ? std::nullopt : std::optional(static_cast<std::size_t>(at));
    }
    [[nodiscard]] std::size_t column() const { return static_cast<std::size_t>(column_); }
    const RowPlaces& places_; ///< of the table that owns this
    RowKey key_;
    int column_;
};

} // namespace kova
