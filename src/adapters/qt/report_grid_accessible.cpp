#include "adapters/qt/accessible_part.h"
#include "adapters/qt/accessible_views.h"
#include "adapters/qt/report_grid_view.h"
#include "screen/spoken_name.h"

#include <map>
#include <set>
#include <tuple>
#include <utility>

namespace kova {
namespace {

constexpr int Header = -1;                           // the row number of the column headers
const QString GroupAction = QStringLiteral("Group"); // by a column, or no longer
constexpr int LeastRowHeight = 8;                    // pixels
constexpr int Nowhere = -2;                          // of what is not to be seen, for now or for ever

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

RowKey keyOf(const ReportGrid& grid, int row) {
    if (row == Header)
        return {};
    const ReportGrid::Row& shown = grid.rows()[static_cast<std::size_t>(row)];
    RowKey key{shown.record};
    for (auto at = shown.group; at != ReportGrid::Row::None;) {
        const ReportGrid::Group& group = grid.group({.group = at});
        key.group += std::to_string(group.column) + ':' + group.value + '\n';
        at = group.parent;
    }
    return key;
}

class GridTableAccessible;

/// A cell of a record or of a group, or a column header. It follows what it shows to other rows.
class GridCellAccessible final : public AccessiblePart<ReportGridView>, public QAccessibleTableCellInterface {
  public:
    GridCellAccessible(ReportGridView& view, const GridTableAccessible& table, RowKey key, int column)
        : AccessiblePart(view), table_(table), key_(std::move(key)), column_(column) {}

    [[nodiscard]] bool isValid() const override {
        return model() != nullptr && column_ < static_cast<int>(model()->columns().size()) &&
               row() != Nowhere;
    }
    [[nodiscard]] QAccessible::Role role() const override {
        return key_ == RowKey() ? QAccessible::ColumnHeader : QAccessible::Cell;
    }
    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        if (kind == QAccessible::Description && isValid())
            return QString::fromStdString(
                spokenDescription(*model(), modelRow(), column(), widget()->words()));
        return AccessiblePart::text(kind == QAccessible::Value ? QAccessible::Name : kind);
    }
    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::TableCellInterface ? static_cast<QAccessibleTableCellInterface*>(this)
                                                       : AccessiblePart::interface_cast(type);
    }

    [[nodiscard]] QStringList actionNames() const override {
        QStringList names = AccessiblePart::actionNames();
        if (!names.isEmpty() && key_ == RowKey())
            names << GroupAction;
        return names;
    }

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
    void addTo(QAccessible::State& state) const override {
        state.offscreen = rect().isEmpty();
        state.readOnly = true;
        if (key_ == RowKey())
            return;
        state.selectable = key_.record != ReportGrid::Row::None;
        state.selected = isSelected();
        if (!state.selectable) {
            state.expandable = true;
            state.collapsed = model()->group(model()->rows()[*modelRow()]).collapsed;
            state.expanded = !state.collapsed;
        }
    }
    [[nodiscard]] bool canPress() const override { return widget()->reachable(); }
    void press() override { widget()->touchCell(row(), column_); }
    void perform(const QString& action) override {
        if (action == GroupAction)
            widget()->switchGroup(column_);
        else
            AccessiblePart::perform(action);
    }
    [[nodiscard]] QString name() const override {
        return QString::fromStdString(spokenCell(*model(), modelRow(), column()));
    }

  private:
    [[nodiscard]] const ReportGrid* model() const { return widget() ? widget()->shownGrid() : nullptr; }
    [[nodiscard]] int row() const;
    [[nodiscard]] std::optional<std::size_t> modelRow() const {
        const int at = row();
        return at == Header ? std::nullopt : std::optional(static_cast<std::size_t>(at));
    }
    [[nodiscard]] std::size_t column() const { return static_cast<std::size_t>(column_); }
    const GridTableAccessible& table_; ///< which owns this
    RowKey key_;
    int column_;
};

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
        : QAccessibleWidget(&view, QAccessible::Table), view_(view) {}
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
        return at(index / columnCount() + Header, index % columnCount());
    }
    int indexOfChild(const QAccessibleInterface* wanted) const override {
        for (const auto& [place, id] : cells_)
            if (QAccessible::accessibleInterface(id) == wanted)
                return wanted->isValid() ? (rowOf(place.first) - Header) * columnCount() + place.second : -1;
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

    [[nodiscard]] int rowOf(const RowKey& key) const {
        if (key == RowKey())
            return Header;
        if (const int row = knownRow(key); row < rowCount() && row != Nowhere && keyOf(grid(), row) == key)
            return row;
        recordRows_.assign(grid().recordCount(), Nowhere);
        groupRows_.clear();
        for (int row = 0; row < rowCount(); ++row)
            if (const auto record = grid().rows()[static_cast<std::size_t>(row)].record;
                record != ReportGrid::Row::None)
                recordRows_[static_cast<std::size_t>(record)] = row;
            else
                groupRows_.emplace(keyOf(grid(), row).group, row);
        return knownRow(key);
    }
    void modelChange(QAccessibleTableModelChangeEvent*) override {} // tellChanges knows more
    void tellChanges();

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
    [[nodiscard]] int knownRow(const RowKey& key) const {
        if (key.record != ReportGrid::Row::None) {
            const auto record = static_cast<std::size_t>(key.record);
            return record < recordRows_.size() ? recordRows_[record] : Nowhere;
        }
        const auto found = groupRows_.find(key.group);
        return found == groupRows_.end() ? Nowhere : found->second;
    }
    [[nodiscard]] QAccessibleInterface* at(int row, int column) const {
        RowKey key = keyOf(grid(), row);
        const auto [known, isNew] = cells_.try_emplace({key, column});
        if (isNew) { // QAccessible owns what is registered
            if (row != Header && told_)
                told_->marks.try_emplace(key, mark(row));
            known->second = QAccessible::registerAccessibleInterface(
                new GridCellAccessible(view_, *this, std::move(key), column));
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
        for (const auto& [place, id] : std::exchange(cells_, {}))
            QAccessible::deleteAccessibleInterface(id);
        if (taken != 0 && taken_ != 0)
            QAccessible::deleteAccessibleInterface(taken_);
        if (taken != 0)
            taken_ = taken;
    }
    ReportGridView& view_;
    mutable std::map<std::pair<RowKey, int>, QAccessible::Id> cells_;
    // Where they were when last looked for.
    mutable std::vector<int> recordRows_;
    mutable std::map<std::string, int> groupRows_;
    QAccessible::Id taken_ = 0;
    mutable std::optional<Told> told_; ///< nothing before the first change
};

int GridCellAccessible::row() const {
    return table_.rowOf(key_);
}

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
        if (const int row = rowOf(place.first); row >= 0)
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
                tell(at(Header, static_cast<int>(*column)), QAccessible::DescriptionChanged);
    for (const auto& [key, mark] : told_->marks)
        if (const auto known = before->marks.find(key);
            known != before->marks.end() ? known->second != mark : mark && key.group.empty())
            tellMark(key, rowOf(key));
}

} // namespace

QAccessibleInterface* makeAccessibleReportGrid(ReportGridView& view) {
    return new GridTableAccessible(view);
}

void tellReportGrid(ReportGridView& view) {
    if (!QAccessible::isActive())
        return;
    if (auto* const table = dynamic_cast<GridTableAccessible*>(
            QAccessible::queryAccessibleInterface(static_cast<QWidget*>(&view))))
        table->tellChanges();
}

} // namespace kova
