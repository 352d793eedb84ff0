#include "widgets/report_grid.h"

#include "base/ascii_text.h"

#include <algorithm>
#include <climits>
#include <stdexcept>

namespace kova {
namespace {

constexpr int NarrowestColumn = 5; // characters

constexpr std::string_view LineEnd = "\r\n";

/// Room for all lines once some are written: a long text that grows is copied again and again.
void makeRoom(std::string& text, std::size_t written, std::size_t all) {
    constexpr std::size_t Some = 100;
    if (written == Some)
        text.reserve(text.size() / Some * all * 9 / 8);
}

void appendQuoted(std::string& text, std::string_view item, std::string_view separator) {
    const bool quoted = std::ranges::any_of(item, [&](char c) {
        return c == '"' || c == '\r' || c == '\n' || (!separator.empty() && c == separator.front());
    });
    if (!quoted) {
        text += item;
        return;
    }
    text += '"';
    for (const char c : item) {
        text += c;
        if (c == '"')
            text += c;
    }
    text += '"';
}

} // namespace

void ReportGrid::deleteRecords() {
    table_.clear();
    ++load_;
    brokenOff_ = false;
    newest_.reset();
    selected_.clear();
    forgetOrder();
    populate();
    filling_ = true;
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
    searched_.clear();
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
           currencies_.capacity() * sizeof(std::uint32_t) + selected_.capacity() / CHAR_BIT;
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
    arrange();
    return reached;
}

Gesture ReportGrid::groupBy(std::size_t column) {
    const Gesture reached = reach();
    if (reached != Gesture::Done || column >= columns_.size())
        return reached;
    if (std::ranges::find(groupColumns_, column) == groupColumns_.end()) {
        groupColumns_.push_back(column);
        arrange();
    }
    return reached;
}

Gesture ReportGrid::ungroup() {
    const Gesture reached = reach();
    if (reached != Gesture::Done || groupColumns_.empty())
        return reached;
    groupColumns_.clear();
    collapsed_.clear();
    arrange();
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
        Group& group = groups_[static_cast<std::size_t>(rows_[row].group)];
        group.collapsed = !group.collapsed;
        if (group.collapsed)
            collapsed_.insert(pathOf(rows_[row].group));
        else
            collapsed_.erase(pathOf(rows_[row].group));
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
    selected_.assign(recordCount(), false);
    for (const std::int32_t record : order_)
        selected_[static_cast<std::size_t>(record)] = true;
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

void TextTable::clear() {
    texts_.clear();
    items_.clear();
    records_.clear();
}

void TextTable::addRecord() {
    records_.push_back({static_cast<std::uint32_t>(items_.size()), 0});
}

void TextTable::addItem(std::size_t record, std::string_view text) {
    if (record >= records_.size())
        throw std::out_of_range("no such record");
    Range& range = records_[record];
    if (range.first + range.count != items_.size()) { // items came after its own: it moves behind them
        const auto moved = static_cast<std::uint32_t>(items_.size());
        for (std::uint32_t i = 0; i < range.count; ++i)
            items_.push_back(items_[range.first + i]);
        range.first = moved;
    }
    if (items_.size() == UINT32_MAX)
        throw std::length_error("too many cells");
    items_.push_back(texts_.keep(text));
    ++range.count;
}

TextArena::Place TextTable::place(std::size_t record, std::size_t column) const {
    if (record >= records_.size())
        throw std::out_of_range("no such record");
    const Range& range = records_[record];
    return column < range.count ? items_[range.first + column] : TextArena::Place::Empty;
}

std::size_t TextTable::memoryUse() const {
    return texts_.memoryUse() + items_.memoryUse() + records_.memoryUse();
}

std::string tabSeparated(const ReportGrid& grid, const std::vector<std::size_t>& records) {
    std::string text;
    std::size_t written = 0;
    for (const std::size_t record : records) {
        makeRoom(text, written++, records.size());
        for (std::size_t column = 0; column < grid.columns().size(); ++column) {
            text += column == 0 ? "" : "\t";
            const std::size_t begin = text.size();
            text += grid.item(record, column);
            std::replace_if(
                text.begin() + static_cast<std::ptrdiff_t>(begin), text.end(),
                [](char c) { return c == '\t' || c == '\r' || c == '\n'; }, ' ');
        }
        text += LineEnd;
    }
    return text;
}

std::string commaSeparated(const ReportGrid& grid, std::string_view listSeparator) {
    std::string text = "\xEF\xBB\xBF";
    const auto addLine = [&](auto itemOf) {
        for (std::size_t column = 0; column < grid.columns().size(); ++column) {
            text += column == 0 ? "" : listSeparator;
            appendQuoted(text, itemOf(column), listSeparator);
        }
        text += LineEnd;
    };
    addLine([&](std::size_t column) { return std::string_view(grid.columns()[column].caption); });
    std::size_t written = 0;
    for (const std::int32_t record : grid.order()) {
        makeRoom(text, written++, grid.order().size());
        addLine([&](std::size_t column) { return grid.item(static_cast<std::size_t>(record), column); });
    }
    return text;
}

} // namespace kova
