#include "adapters/qt/accessible_views.h"
#include "adapters/qt/report_grid_cells.h"

#include <map>
#include <set>
#include <utility>

namespace kova {
namespace {

constexpr int LeastRowHeight = 8; // pixels

/// What stands in the way of an interface's number being given again.
class NumberTaken final : public QAccessibleInterface {
  public:
    [[nodiscard]] bool isValid() const override { return false; }
    [[nodiscard]] QObject* object() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* parent() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* child(int) const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    [[nodiscard]] QString text(QAccessible::Text) const override { return {}; }
    void setText(QAccessible::Text, const QString&) override {}
    [[nodiscard]] QRect rect() const override { return {}; }
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::NoRole; }
    [[nodiscard]] QAccessible::State state() const override { return {}; }
};

/// Children are the headers, then the cells row by row. They are made when asked for: a list may be long.
class GridTableAccessible final : public QAccessibleWidget, public QAccessibleTableInterface {
  public:
    explicit GridTableAccessible(ReportGridView& view)
        : QAccessibleWidget(&view, QAccessible::Table), view_(view), places_(view) {}
    ~GridTableAccessible() override {
        forget();
        QAccessible::deleteAccessibleInterface(taken_);
    }
    GridTableAccessible(const GridTableAccessible&) = delete;
    GridTableAccessible& operator=(const GridTableAccessible&) = delete;

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::TableInterface)
            return static_cast<QAccessibleTableInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }
    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        if (kind == QAccessible::Description && view_.shownGrid() != nullptr)
            return QString::fromStdString(spokenDescription(*view_.shownGrid(), view_.words()));
        return QAccessibleWidget::text(kind);
    }
    [[nodiscard]] int childCount() const override { return (rowCount() + 1) * columnCount(); }
    [[nodiscard]] QAccessibleInterface* child(int index) const override {
        if (index < 0 || index >= childCount())
            return nullptr;
        return at(index / columnCount() + HeaderRow, index % columnCount());
    }
    int indexOfChild(const QAccessibleInterface* wanted) const override {
        for (const auto& [place, id] : cells_)
            if (QAccessible::accessibleInterface(id) == wanted)
                return wanted->isValid()
                           ? (places_.rowOf(place.first) - HeaderRow) * columnCount() + place.second
                           : -1;
        return -1;
    }
    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override {
        const auto [row, column] = view_.cellAt(QPointF(view_.mapFromGlobal(QPoint(x, y))));
        return row < HeaderRow ? nullptr : at(row, column);
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

    void modelChange(QAccessibleTableModelChangeEvent*) override {} // tellChanges knows more
    void tellChanges();
    void tellDescription();
    void tellFocus();
    [[nodiscard]] QAccessibleInterface* focusChild() const override {
        const auto place = view_.focusedCell();
        return place ? at(place->row, place->column) : nullptr;
    }

  private:
    /// What has been told or could be read, of which only changes are told.
    struct Told {
        std::uint32_t load = 0;
        QString description;
        std::optional<std::size_t> sortColumn;
        ReportGrid::Direction direction = ReportGrid::Direction::AsLoaded;
        std::map<RowKey, bool> marks; ///< of rows in sight or held: records selected, groups collapsed
    };
    [[nodiscard]] const ReportGrid& grid() const { return *view_.shownGrid(); }
    [[nodiscard]] Told present() const;
    [[nodiscard]] bool mark(int row) const {
        const auto& shown = grid().rows()[static_cast<std::size_t>(row)];
        return shown.group == ReportGrid::Row::None ? isRowSelected(row) : grid().group(shown).collapsed;
    }
    [[nodiscard]] QAccessibleInterface* at(int row, int column) const {
        RowKey key = keyOf(grid(), row);
        const auto [known, isNew] = cells_.try_emplace({key, column});
        if (isNew) { // QAccessible owns what is registered
            if (row != HeaderRow && told_)
                told_->marks.try_emplace(key, mark(row));
            known->second = QAccessible::registerAccessibleInterface(
                new GridCellAccessible(view_, places_, std::move(key), column));
        }
        return QAccessible::accessibleInterface(known->second);
    }
    void tell(QAccessibleInterface* part, QAccessible::Event what) const {
        QAccessibleEvent event(part, what);
        QAccessible::updateAccessibility(&event);
    }
    void tellMark(const RowKey& key, int row) const;
    /// Whoever still holds a cell must not find another record under its number, which may be given again.
    void forget() {
        const QAccessible::Id taken =
            cells_.empty() ? 0 : QAccessible::registerAccessibleInterface(new NumberTaken);
        focused_ = 0;
        for (const auto& [place, id] : std::exchange(cells_, {}))
            QAccessible::deleteAccessibleInterface(id);
        if (taken != 0 && taken_ != 0)
            QAccessible::deleteAccessibleInterface(taken_);
        if (taken != 0)
            taken_ = taken;
    }
    ReportGridView& view_;
    mutable std::map<std::pair<RowKey, int>, QAccessible::Id> cells_;
    RowPlaces places_;
    QAccessible::Id taken_ = 0;
    QAccessible::Id focused_ = 0;      ///< the cell last told of
    mutable std::optional<Told> told_; ///< nothing before the first change
};

GridTableAccessible::Told GridTableAccessible::present() const {
    Told now;
    now.load = grid().load();
    now.description = text(QAccessible::Description);
    now.sortColumn = grid().sortColumn();
    now.direction = grid().sortDirection();
    for (int y = 0; y < view_.height(); y += LeastRowHeight)
        if (const int row = view_.cellAt(QPointF(1, y)).row; row >= 0)
            now.marks[keyOf(grid(), row)] = mark(row);
    for (const auto& [place, id] : cells_)
        if (const int row = places_.rowOf(place.first); row >= 0)
            now.marks[place.first] = mark(row);
    return now;
}

// The bus has no event for a group that collapses, but for its description.
void GridTableAccessible::tellMark(const RowKey& key, int row) const {
    QAccessibleInterface* const cell = at(row, 0);
    if (key.record == ReportGrid::Row::None) {
        QAccessible::State changed;
        changed.expanded = true;
        QAccessibleStateChangeEvent event(cell, changed);
        QAccessible::updateAccessibility(&event);
        tell(cell, QAccessible::DescriptionChanged);
        return;
    }
    const auto what = isRowSelected(row) ? QAccessible::SelectionAdd : QAccessible::SelectionRemove;
    for (int column = 0; column < columnCount(); ++column)
        if (column == 0 || cells_.contains({key, column}))
            tell(at(row, column), what);
}

void GridTableAccessible::tellChanges() {
    if (view_.shownGrid() == nullptr)
        return;
    if (told_ && grid().load() != told_->load)
        forget();
    const std::optional<Told> before = std::exchange(told_, present());
    QAccessibleTableModelChangeEvent reset(&view_, QAccessibleTableModelChangeEvent::ModelReset);
    QAccessible::updateAccessibility(&reset);
    if (!before || before->description != told_->description)
        tell(this, QAccessible::DescriptionChanged);
    if (!before || before->load != told_->load)
        return;
    if (before->sortColumn != told_->sortColumn || before->direction != told_->direction)
        for (const auto& column : std::set{before->sortColumn, told_->sortColumn})
            if (column && static_cast<int>(*column) < columnCount())
                tell(at(HeaderRow, static_cast<int>(*column)), QAccessible::DescriptionChanged);
    for (const auto& [key, mark] : told_->marks)
        if (const auto known = before->marks.find(key);
            known != before->marks.end() ? known->second != mark : mark && key.group.empty())
            tellMark(key, places_.rowOf(key));
}

void GridTableAccessible::tellDescription() {
    if (!told_ || view_.shownGrid() == nullptr)
        return;
    const QString before = std::exchange(told_->description, text(QAccessible::Description));
    if (before != told_->description)
        tell(this, QAccessible::DescriptionChanged);
}

void GridTableAccessible::tellFocus() {
    QAccessibleInterface* const cell = focusChild();
    const QAccessible::Id before = std::exchange(focused_, cell == nullptr ? 0 : QAccessible::uniqueId(cell));
    if (cell != nullptr && focused_ != before)
        tell(cell, QAccessible::Focus);
}

} // namespace

QAccessibleInterface* makeAccessibleReportGrid(ReportGridView& view) {
    return new GridTableAccessible(view);
}

void tellReportGrid(ReportGridView& view, ToldOfGrid what) {
    if (!QAccessible::isActive())
        return;
    auto* const table = dynamic_cast<GridTableAccessible*>(
        QAccessible::queryAccessibleInterface(static_cast<QWidget*>(&view)));
    if (table == nullptr)
        return;
    switch (what) {
    case ToldOfGrid::All:
        return table->tellChanges();
    case ToldOfGrid::Description:
        return table->tellDescription();
    case ToldOfGrid::Focus:
        return table->tellFocus();
    }
}

} // namespace kova
