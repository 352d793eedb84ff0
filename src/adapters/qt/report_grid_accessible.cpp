#include "adapters/qt/accessible_part.h"
#include "adapters/qt/accessible_views.h"
#include "adapters/qt/report_grid_view.h"
#include "screen/spoken_name.h"

#include <map>

namespace kova {
namespace {

constexpr int Header = -1; // the row number of the column headers

/// One cell, or a column header, by its position.
class GridCellAccessible final : public AccessiblePart<ReportGridView>, public QAccessibleTableCellInterface {
  public:
    GridCellAccessible(ReportGridView& view, int row, int column)
        : AccessiblePart(view), row_(row), column_(column) {}

    [[nodiscard]] bool isValid() const override {
        const ReportGrid* const grid = model();
        return grid != nullptr && column_ < static_cast<int>(grid->columns().size()) &&
               (row_ == Header || row_ < static_cast<int>(grid->rows().size()));
    }
    [[nodiscard]] QAccessible::Role role() const override {
        return row_ == Header ? QAccessible::ColumnHeader : QAccessible::Cell;
    }
    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        return AccessiblePart::text(kind == QAccessible::Value ? QAccessible::Name : kind);
    }
    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::TableCellInterface ? static_cast<QAccessibleTableCellInterface*>(this)
                                                       : AccessiblePart::interface_cast(type);
    }

    [[nodiscard]] bool isSelected() const override {
        return isValid() && row_ != Header && shown().record != ReportGrid::Row::None &&
               model()->selected(static_cast<std::size_t>(shown().record));
    }
    [[nodiscard]] QList<QAccessibleInterface*> columnHeaderCells() const override {
        QAccessibleInterface* const table = parent();
        return table == nullptr ? QList<QAccessibleInterface*>()
                                : QList<QAccessibleInterface*>{table->child(column_)};
    }
    [[nodiscard]] QList<QAccessibleInterface*> rowHeaderCells() const override { return {}; }
    [[nodiscard]] int columnIndex() const override { return column_; }
    [[nodiscard]] int rowIndex() const override { return row_; }
    [[nodiscard]] int columnExtent() const override { return 1; }
    [[nodiscard]] int rowExtent() const override { return 1; }
    [[nodiscard]] QAccessibleInterface* table() const override { return parent(); }

  protected:
    [[nodiscard]] QRect place() const override {
        return widget()->cell(row_, column_).toAlignedRect() & widget()->rect();
    }
    void addTo(QAccessible::State& state) const override {
        state.offscreen = rect().isEmpty();
        state.readOnly = true;
        if (row_ == Header)
            return;
        const ReportGrid::Row& row = shown();
        state.selectable = row.group == ReportGrid::Row::None;
        state.selected = isSelected();
        if (row.group != ReportGrid::Row::None) {
            state.expandable = true;
            state.collapsed = model()->group(row).collapsed;
            state.expanded = !state.collapsed;
        }
    }
    void press() override { widget()->touchCell(row_, column_); }
    [[nodiscard]] QString name() const override {
        const auto row = row_ == Header ? std::nullopt : std::optional(static_cast<std::size_t>(row_));
        return QString::fromStdString(spokenCell(*model(), row, static_cast<std::size_t>(column_)));
    }

  private:
    [[nodiscard]] const ReportGrid* model() const { return widget() ? widget()->shownGrid() : nullptr; }
    [[nodiscard]] const ReportGrid::Row& shown() const {
        return model()->rows()[static_cast<std::size_t>(row_)];
    }
    int row_, column_;
};

/// Children are the headers, then the cells row by row. They are made when asked for: a list may be long.
class GridTableAccessible final : public QAccessibleWidget, public QAccessibleTableInterface {
  public:
    explicit GridTableAccessible(ReportGridView& view)
        : QAccessibleWidget(&view, QAccessible::Table), view_(view) {}
    ~GridTableAccessible() override { forget(); }
    GridTableAccessible(const GridTableAccessible&) = delete;
    GridTableAccessible& operator=(const GridTableAccessible&) = delete;

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::TableInterface)
            return static_cast<QAccessibleTableInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }
    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        const ReportGrid* const grid = view_.shownGrid();
        if (kind == QAccessible::Description && grid != nullptr) {
            if (grid->brokenOff())
                return QString::fromStdString(grid->brokenOffText());
            if (grid->recordCount() == 0)
                return QString::fromStdString(grid->emptyText());
        }
        return QAccessibleWidget::text(kind);
    }
    [[nodiscard]] int childCount() const override { return (rowCount() + 1) * columnCount(); }
    [[nodiscard]] QAccessibleInterface* child(int index) const override {
        if (index < 0 || index >= childCount())
            return nullptr;
        return at(index / columnCount() + Header, index % columnCount());
    }
    int indexOfChild(const QAccessibleInterface* wanted) const override {
        for (const auto& [place, id] : cells_)
            if (QAccessible::accessibleInterface(id) == wanted)
                return (place.first - Header) * columnCount() + place.second;
        return -1;
    }
    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override {
        const auto [row, column] = view_.cellAt(QPointF(view_.mapFromGlobal(QPoint(x, y))));
        return row < Header ? nullptr : at(row, column);
    }

    [[nodiscard]] QAccessibleInterface* caption() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* summary() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* cellAt(int row, int column) const override {
        const bool there = row >= 0 && row < rowCount() && column >= 0 && column < columnCount();
        return there ? at(row, column) : nullptr;
    }
    [[nodiscard]] int selectedCellCount() const override { return selectedRowCount() * columnCount(); }
    [[nodiscard]] QList<QAccessibleInterface*> selectedCells() const override {
        QList<QAccessibleInterface*> cells;
        for (const int row : selectedRows())
            for (int column = 0; column < columnCount(); ++column)
                cells << at(row, column);
        return cells;
    }
    [[nodiscard]] QString columnDescription(int column) const override {
        QAccessibleInterface* const header = child(column);
        return header == nullptr ? QString() : header->text(QAccessible::Name);
    }
    [[nodiscard]] QString rowDescription(int) const override { return {}; }
    [[nodiscard]] int selectedColumnCount() const override { return 0; }
    [[nodiscard]] int selectedRowCount() const override { return static_cast<int>(selectedRows().size()); }
    [[nodiscard]] int columnCount() const override {
        return view_.shownGrid() == nullptr ? 0 : static_cast<int>(view_.shownGrid()->columns().size());
    }
    [[nodiscard]] int rowCount() const override {
        return view_.shownGrid() == nullptr ? 0 : static_cast<int>(view_.shownGrid()->rows().size());
    }
    [[nodiscard]] QList<int> selectedColumns() const override { return {}; }
    [[nodiscard]] QList<int> selectedRows() const override {
        QList<int> rows;
        for (int row = 0; row < rowCount(); ++row)
            if (isRowSelected(row))
                rows << row;
        return rows;
    }
    [[nodiscard]] bool isColumnSelected(int) const override { return false; }
    [[nodiscard]] bool isRowSelected(int row) const override {
        const ReportGrid* const grid = view_.shownGrid();
        if (grid == nullptr || row < 0 || row >= rowCount())
            return false;
        const std::int32_t record = grid->rows()[static_cast<std::size_t>(row)].record;
        return record != ReportGrid::Row::None && grid->selected(static_cast<std::size_t>(record));
    }
    bool selectRow(int row) override {
        if (row < 0 || row >= rowCount())
            return false;
        view_.touchCell(row, 0);
        return isRowSelected(row);
    }
    bool selectColumn(int) override { return false; }
    bool unselectRow(int) override { return false; }
    bool unselectColumn(int) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent*) override { forget(); }

  private:
    [[nodiscard]] QAccessibleInterface* at(int row, int column) const {
        const auto [known, isNew] = cells_.try_emplace({row, column});
        if (isNew) // QAccessible owns what is registered
            known->second =
                QAccessible::registerAccessibleInterface(new GridCellAccessible(view_, row, column));
        return QAccessible::accessibleInterface(known->second);
    }
    void forget() {
        for (const auto& [place, id] : std::exchange(cells_, {}))
            QAccessible::deleteAccessibleInterface(id);
    }
    ReportGridView& view_;
    mutable std::map<std::pair<int, int>, QAccessible::Id> cells_;
};

} // namespace

QAccessibleInterface* makeAccessibleReportGrid(ReportGridView& view) {
    return new GridTableAccessible(view);
}

} // namespace kova
