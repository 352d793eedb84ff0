#include "widgets/report_grid.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <unordered_map>

namespace kova {
namespace {

using Records = std::vector<std::int32_t>;

/// The texts of a column without their repetitions, in order of first appearance, and which each record has.
struct DistinctTexts {
    DistinctTexts(const TextTable& table, std::size_t column) : ofRecord(table.recordCount()) {
        std::unordered_map<std::string_view, std::uint32_t> known;
        for (std::size_t record = 0; record < ofRecord.size(); ++record) {
            const std::string_view text = table.item(record, column);
            if (record > 0 && text == texts[ofRecord[record - 1]]) {
                ofRecord[record] = ofRecord[record - 1];
                continue;
            }
            const auto [entry, isNew] = known.try_emplace(text, static_cast<std::uint32_t>(texts.size()));
            if (isNew)
                texts.push_back(text);
            ofRecord[record] = entry->second;
        }
    }
    std::vector<std::string_view> texts;
    std::vector<std::uint32_t> ofRecord;
};

/// The values of all texts; none when one, the empty one aside, cannot be read so. The empty one comes first.
std::vector<double> valuesOf(const std::vector<std::string_view>& texts,
                             const ReportGrid::Conventions::Reading& reading) {
    std::vector<double> values;
    if (!reading)
        return values;
    values.reserve(texts.size());
    for (const std::string_view text : texts) {
        const auto value = text.empty() ? std::optional(-HUGE_VAL) : reading(text);
        if (!value)
            return {};
        values.push_back(*value);
    }
    return values;
}

enum class Ties { Together, Apart }; ///< whether texts of the same value, as 1 and 1,0, share a place

/// The place of each text in ascending order: by value where all can be read, else by letters.
std::vector<std::uint32_t> places(const std::vector<std::string_view>& texts,
                                  const ReportGrid::Conventions& conventions, Ties ties) {
    auto values = valuesOf(texts, conventions.number);
    if (values.empty())
        values = valuesOf(texts, conventions.date);
    std::vector<std::uint32_t> ascending(texts.size());
    std::iota(ascending.begin(), ascending.end(), 0U);
    if (values.empty())
        std::ranges::stable_sort(ascending, {}, [&](std::uint32_t text) { return texts[text]; });
    else
        std::ranges::stable_sort(ascending, {}, [&](std::uint32_t text) { return values[text]; });
    std::vector<std::uint32_t> place(texts.size());
    std::uint32_t next = 0;
    for (std::size_t i = 0; i < ascending.size(); ++i) {
        const bool tied = i > 0 && ties == Ties::Together && !values.empty() &&
                          values[ascending[i]] == values[ascending[i - 1]];
        next += i > 0 && !tied ? 1 : 0;
        place[ascending[i]] = next;
    }
    return place;
}

/// Reorders `records` by key; those of one key keep their order.
template <class Key>
void sortByKey(Records& records, std::size_t keys, Key key) {
    std::vector<std::uint32_t> begin(keys + 1);
    for (const std::int32_t record : records)
        ++begin[key(record) + 1];
    std::partial_sum(begin.begin(), begin.end(), begin.begin());
    Records sorted(records.size());
    for (const std::int32_t record : records)
        sorted[begin[key(record)]++] = record;
    records = std::move(sorted);
}

} // namespace

void ReportGrid::populate() {
    filling_ = false;
    populated_ = recordCount();
    folded_.clear();
    foldedEnds_.clear();
    readAmounts();
    putInOrder();
    countDecimals();
    changed(Property::Records);
}

void ReportGrid::arrange() {
    putInOrder();
    changed(Property::Order);
}

void ReportGrid::putInOrder() {
    if (searched_.empty()) {
        order_.resize(populated_);
        std::iota(order_.begin(), order_.end(), 0);
    } else {
        order_ = foundRecords();
    }
    totals_ = sumsOf(0, order_.size());
    if (sortColumn_ && direction_ != Direction::AsLoaded)
        sortRecords(*sortColumn_, direction_ == Direction::Descending);
    // From the innermost grouping outwards: records keep their order inside a group.
    for (auto column = groupColumns_.rbegin(); column != groupColumns_.rend(); ++column)
        groupRecords(*column);
    buildRows();
}

void ReportGrid::sortRecords(std::size_t column, bool descending) {
    const DistinctTexts distinct(table_, column);
    const auto place = places(distinct.texts, conventions_, Ties::Together);
    const auto last = static_cast<std::uint32_t>(place.size());
    sortByKey(order_, place.size() + 1, [&](std::int32_t record) {
        const std::uint32_t ascending = place[distinct.ofRecord[static_cast<std::size_t>(record)]];
        return std::size_t(descending ? last - ascending : ascending);
    });
}

void ReportGrid::groupRecords(std::size_t column) {
    const DistinctTexts distinct(table_, column);
    const auto place = places(distinct.texts, conventions_, Ties::Apart);
    sortByKey(order_, place.size(), [&](std::int32_t record) {
        return std::size_t(place[distinct.ofRecord[static_cast<std::size_t>(record)]]);
    });
}

void ReportGrid::buildRows() {
    rows_.clear();
    rows_.reserve(order_.size());
    groups_.clear();
    addRows(0, order_.size(), 0, Row::None);
}

void ReportGrid::addRows(std::size_t first, std::size_t end, std::size_t level, std::int32_t parent) {
    if (level == groupColumns_.size()) {
        for (; first < end; ++first)
            rows_.push_back({order_[first], Row::None});
        return;
    }
    const std::size_t column = groupColumns_[level];
    const auto value = [&](std::size_t at) { return item(static_cast<std::size_t>(order_[at]), column); };
    while (first < end) {
        std::size_t next = first + 1;
        while (next < end && value(next) == value(first))
            ++next;
        const auto header = static_cast<std::int32_t>(groups_.size());
        rows_.push_back({Row::None, header});
        groups_.push_back({column, level, parent, std::string(value(first)),
                           static_cast<std::int32_t>(next - first), sumsOf(first, next)});
        const bool collapsed = !collapsed_.empty() && collapsed_.contains(pathOf(header));
        groups_.back().collapsed = collapsed;
        if (!collapsed)
            addRows(first, next, level + 1, header);
        first = next;
    }
}

ReportGrid::GroupPath ReportGrid::pathOf(std::int32_t group) const {
    GroupPath path;
    for (; group != Row::None; group = groups_[static_cast<std::size_t>(group)].parent)
        path.push_back(groups_[static_cast<std::size_t>(group)].value);
    return path;
}

} // namespace kova
