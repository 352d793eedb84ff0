#include "adapters/qt/report_grid_cells.h"

namespace kova {
namespace {

const QString GroupAction = QStringLiteral("Group"); // by a column, or no longer

} // namespace

RowKey keyOf(const ReportGrid& grid, int row) {
    if (row == HeaderRow)
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

int RowPlaces::rowOf(const RowKey& key) const {
    if (key == RowKey())
        return HeaderRow;
    const ReportGrid& grid = *view_.shownGrid();
    const auto count = static_cast<int>(grid.rows().size());
    if (const int row = knownRow(key); row < count && row != NoRow && keyOf(grid, row) == key)
        return row;
    recordRows_.assign(grid.recordCount(), NoRow);
    groupRows_.clear();
    for (int row = 0; row < count; ++row)
        if (const auto record = grid.rows()[static_cast<std::size_t>(row)].record;
            record != ReportGrid::Row::None)
            recordRows_[static_cast<std::size_t>(record)] = row;
        else
            groupRows_.emplace(keyOf(grid, row).group, row);
    return knownRow(key);
}

int RowPlaces::knownRow(const RowKey& key) const {
    if (key.record != ReportGrid::Row::None) {
        const auto record = static_cast<std::size_t>(key.record);
        return record < recordRows_.size() ? recordRows_[record] : NoRow;
    }
    const auto found = groupRows_.find(key.group);
    return found == groupRows_.end() ? NoRow : found->second;
}

QString GridCellAccessible::text(QAccessible::Text kind) const {
    if (kind == QAccessible::Description && isValid())
        return QString::fromStdString(spokenDescription(*model(), modelRow(), column(), widget()->words()));
    return AccessiblePart::text(kind == QAccessible::Value ? QAccessible::Name : kind);
}

QStringList GridCellAccessible::actionNames() const {
    QStringList names = AccessiblePart::actionNames();
    if (names.isEmpty())
        return names;
    if (key_ == RowKey())
        names << GroupAction;
    return names << setFocusAction();
}

void GridCellAccessible::addTo(QAccessible::State& state) const {
    state.offscreen = rect().isEmpty();
    state.readOnly = true;
    state.focusable = widget()->isEnabled();
    state.focused = widget()->focusedCell() == ReportGridPlace{row(), column_};
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

void GridCellAccessible::perform(const QString& action) {
    if (action == GroupAction)
        widget()->switchGroup(column_);
    else if (action == setFocusAction())
        widget()->focusCell({row(), column_});
    else
        AccessiblePart::perform(action);
}

} // namespace kova
