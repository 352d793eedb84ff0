#include "widgets/report_grid.h"

#include "base/letter_case.h"

#include <algorithm>
#include <climits>

namespace kova {
namespace {

constexpr int NarrowestColumn = 5; // characters

} // namespace

void ReportGrid::deleteRecords() {
    table_.clear();
    brokenOff_ = false;
    selected_.clear();
    forgetOrder();
    populate();
}

void ReportGrid::deleteColumns() {
    columns_.clear();
    forgetOrder();
    changed(Property::Records);
}

void ReportGrid::breakOff() {
    brokenOff_ = true;
    populate();
}

void ReportGrid::forgetOrder() {
    sortColumn_.reset();
    direction_ = Direction::AsLoaded;
    groupColumns_.clear();
    collapsed_.clear();
}

void ReportGrid::addColumn(int index, const std::string& caption, int width, bool resizable) {
    const auto at = std::clamp<std::ptrdiff_t>(index, 0, std::ssize(columns_));
    columns_.insert(columns_.begin() + at, {caption, width, resizable});
}

std::optional<std::size_t> ReportGrid::findColumn(std::string_view caption) const {
    const auto found = std::ranges::find_if(
        columns_, [&](const Column& column) { return equalIgnoringCase(column.caption, caption); });
    if (found == columns_.end())
        return std::nullopt;
    return static_cast<std::size_t>(found - columns_.begin());
}

std::size_t ReportGrid::memoryUse() const {
    return table_.memoryUse() + order_.capacity() * sizeof(std::int32_t) + rows_.capacity() * sizeof(Row) +
           groups_.capacity() * sizeof(Group) + amounts_.capacity() * sizeof(double) +
           selected_.capacity() / CHAR_BIT;
}

Gesture ReportGrid::touchHeader(std::size_t column) {
    const Gesture reached = reach();
    if (reached != Gesture::Done || column >= columns_.size())
        return reached;
    if (sortColumn_ != column) {
        sortColumn_ = column;
        direction_ = Direction::Ascending;
    } else if (direction_ == Direction::Ascending) {
        direction_ = Direction::Descending;
    } else {
        sortColumn_.reset();
        direction_ = Direction::AsLoaded;
    }
    populate();
    return reached;
}

Gesture ReportGrid::groupBy(std::size_t column) {
    const Gesture reached = reach();
    if (reached != Gesture::Done || column >= columns_.size())
        return reached;
    if (std::ranges::find(groupColumns_, column) == groupColumns_.end()) {
        groupColumns_.push_back(column);
        populate();
    }
    return reached;
}

Gesture ReportGrid::ungroup() {
    const Gesture reached = reach();
    if (reached != Gesture::Done || groupColumns_.empty())
        return reached;
    groupColumns_.clear();
    collapsed_.clear();
    populate();
    return reached;
}

Gesture ReportGrid::resizeColumn(std::size_t column, int width) {
    const Gesture reached = reach();
    if (reached != Gesture::Done || column + 1 >= columns_.size() || !columns_[column].resizable)
        return reached;
    Column& left = columns_[column];
    Column& right = columns_[column + 1];
    const int both = left.width + right.width;
    const int narrowest = std::min(NarrowestColumn, both / 2);
    left.width = std::clamp(width, narrowest, both - narrowest);
    right.width = both - left.width;
    changed(Property::Rows);
    return reached;
}

Gesture ReportGrid::adoptWidths(const std::vector<int>& widths) {
    const Gesture reached = reach();
    if (reached != Gesture::Done || widths.size() != columns_.size())
        return reached;
    for (std::size_t i = 0; i < widths.size(); ++i)
        columns_[i].width = std::max(widths[i], 1);
    changed(Property::Rows);
    return reached;
}

Gesture ReportGrid::touchRow(std::size_t row, Extent extent) {
    const Gesture reached = reach();
    if (reached != Gesture::Done || row >= rows_.size())
        return reached;
    if (rows_[row].group != Row::None) {
        const GroupPath path = pathOf(rows_[row].group);
        if (!collapsed_.insert(path).second)
            collapsed_.erase(path);
        buildRows();
    } else {
        selected_.resize(recordCount());
        const auto record = static_cast<std::size_t>(rows_[row].record);
        if (extent != Extent::Toggle)
            selected_.assign(recordCount(), false);
        if (extent == Extent::UpTo) {
            const std::size_t anchor = std::min(anchor_, rows_.size() - 1);
            const auto [first, last] = std::minmax(anchor, row);
            for (std::size_t at = first; at <= last; ++at)
                if (rows_[at].record != Row::None)
                    selected_[static_cast<std::size_t>(rows_[at].record)] = true;
        } else {
            selected_[record] = !selected_[record];
            anchor_ = row;
        }
    }
    changed(Property::Rows);
    return reached;
}

Gesture ReportGrid::selectAll() {
    const Gesture reached = reach();
    if (reached != Gesture::Done)
        return reached;
    selected_.assign(recordCount(), true);
    changed(Property::Rows);
    return reached;
}

std::vector<std::size_t> ReportGrid::selectedRecords() const {
    std::vector<std::size_t> records;
    for (const std::int32_t record : order_)
        if (selected(static_cast<std::size_t>(record)))
            records.push_back(static_cast<std::size_t>(record));
    return records;
}

} // namespace kova
