#include "widgets/report_grid.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace kova {

void ReportGrid::deleteRecords() {
    texts_.clear();
    items_.clear();
    records_.clear();
    rows_.clear();
    clearOrder();
    changed(Property::Records);
}

void ReportGrid::deleteColumns() {
    columns_.clear();
    clearOrder();
    changed(Property::Records);
}

void ReportGrid::clearOrder() {
    sortColumn_.reset();
    direction_ = Direction::AsLoaded;
    groupColumns_.clear();
}

void ReportGrid::addColumn(int index, const std::string& caption, int width, bool resizable) {
    const auto at = std::clamp<std::ptrdiff_t>(index, 0, std::ssize(columns_));
    columns_.insert(columns_.begin() + at, {caption, width, resizable});
}

void ReportGrid::addRecord() {
    records_.push_back({static_cast<std::uint32_t>(items_.size()), 0});
}

void ReportGrid::addItem(std::size_t record, std::string_view text) {
    const Item item{static_cast<std::uint32_t>(texts_.size()), static_cast<std::uint32_t>(text.size())};
    texts_.append(text);
    auto& range = records_.at(record);
    items_.insert(items_.begin() + range.first + range.count, item);
    ++range.count;
    for (std::size_t later = record + 1; later < records_.size(); ++later)
        ++records_[later].first;
}

std::string_view ReportGrid::item(std::size_t record, std::size_t column) const {
    const auto& range = records_.at(record);
    if (column >= range.count)
        return {};
    const auto& item = items_[range.first + column];
    return std::string_view(texts_).substr(item.offset, item.length);
}

std::size_t ReportGrid::memoryUse() const {
    return texts_.capacity() + items_.capacity() * sizeof(Item) + records_.capacity() * sizeof(Range) +
           rows_.capacity() * sizeof(Row);
}

void ReportGrid::setReadings(Reading number, Reading date) {
    number_ = std::move(number);
    date_ = std::move(date);
}

void ReportGrid::populate() {
    Order order(records_.size());
    std::iota(order.begin(), order.end(), 0);
    if (sortColumn_ && direction_ != Direction::AsLoaded)
        sortRecords(order, *sortColumn_, direction_ == Direction::Descending);
    // Stable, from the innermost grouping outwards: records keep their order inside a group.
    for (auto column = groupColumns_.rbegin(); column != groupColumns_.rend(); ++column)
        sortRecords(order, *column, false);
    rows_.clear();
    addGroup(order, 0, order.size(), 0);
    changed(Property::Records);
}

void ReportGrid::addGroup(const Order& order, std::size_t first, std::size_t end, std::size_t level) {
    if (level == groupColumns_.size()) {
        for (; first < end; ++first)
            rows_.push_back({order[first], static_cast<std::int32_t>(level), {}, 0});
        return;
    }
    const auto value = [&](std::size_t position) {
        return item(static_cast<std::size_t>(order[position]), groupColumns_[level]);
    };
    while (first < end) {
        std::size_t next = first + 1;
        while (next < end && value(next) == value(first))
            ++next;
        rows_.push_back({Row::NoRecord, static_cast<std::int32_t>(level), std::string(value(first)),
                         static_cast<std::int32_t>(next - first)});
        addGroup(order, first, next, level + 1);
        first = next;
    }
}

/// The column's values; none when some cell, empty ones aside, cannot be read so. Empty cells come first.
std::vector<double> ReportGrid::readAs(const Reading& reading, std::size_t column) const {
    std::vector<double> values;
    if (!reading)
        return values;
    values.reserve(records_.size());
    for (std::size_t record = 0; record < records_.size(); ++record) {
        const std::string_view text = item(record, column);
        const auto value = text.empty() ? std::optional(-HUGE_VAL) : reading(text);
        if (!value)
            return {};
        values.push_back(*value);
    }
    return values;
}

void ReportGrid::sortRecords(Order& order, std::size_t column, bool descending) const {
    auto values = readAs(number_, column);
    if (values.empty())
        values = readAs(date_, column);
    const auto at = [](std::int32_t record) { return static_cast<std::size_t>(record); };
    const auto before = [&](std::int32_t a, std::int32_t b) {
        return values.empty() ? item(at(a), column) < item(at(b), column) : values[at(a)] < values[at(b)];
    };
    std::ranges::stable_sort(
        order, [&](std::int32_t a, std::int32_t b) { return descending ? before(b, a) : before(a, b); });
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
    populate();
    return reached;
}

} // namespace kova
