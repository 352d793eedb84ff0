#include "widgets/report_grid.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <numeric>

namespace kova {
namespace {

using Records = std::vector<std::int32_t>;

/// Numbers texts in order of their first appearance. Faster than the standard's tables, which have a piece of
/// memory for each.
class TextNumbers {
  public:
    explicit TextNumbers(std::vector<std::string_view>& texts) : texts_(texts), slots_(1024) {}
    std::uint32_t numberOf(std::string_view text) {
        const auto hash = static_cast<std::uint32_t>(std::hash<std::string_view>()(text));
        std::size_t at = firstSlot(hash);
        for (; slots_[at].number != None; at = next(at))
            if (slots_[at].hash == hash && texts_[slots_[at].number] == text)
                return slots_[at].number;
        const auto number = static_cast<std::uint32_t>(texts_.size());
        texts_.push_back(text);
        slots_[at] = {hash, number};
        if (texts_.size() * 2 > slots_.size())
            grow();
        return number;
    }

  private:
    static constexpr std::uint32_t None = UINT32_MAX;
    struct Slot {
        std::uint32_t hash = 0, number = None;
    };
    [[nodiscard]] std::size_t firstSlot(std::uint32_t hash) const { return hash & (slots_.size() - 1); }
    [[nodiscard]] std::size_t next(std::size_t slot) const { return (slot + 1) & (slots_.size() - 1); }
    void grow() {
        const auto before = std::exchange(slots_, std::vector<Slot>(slots_.size() * 4));
        for (const Slot& slot : before) {
            if (slot.number == None)
                continue;
            std::size_t at = firstSlot(slot.hash);
            while (slots_[at].number != None)
                at = next(at);
            slots_[at] = slot;
        }
    }
    std::vector<std::string_view>& texts_;
    std::vector<Slot> slots_; ///< as many as a power of two; at least every second is free
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

DistinctTexts::DistinctTexts(const TextTable& table, std::size_t column) : ofRecord(table.recordCount()) {
    TextNumbers numbers(texts);
    KnownByPlace<std::uint32_t> known(numbers.numberOf({}));
    for (std::size_t record = 0; record < ofRecord.size(); ++record) {
        const auto place = table.place(record, column);
        ofRecord[record] = known.of(place, [&] { return numbers.numberOf(table.text(place)); });
    }
}

void ReportGrid::populate() {
    filling_ = false;
    populated_ = recordCount();
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
    std::vector<std::vector<std::uint32_t>> values(groupColumns_.size());
    for (std::size_t level = values.size(); level-- > 0;)
        values[level] = groupRecords(groupColumns_[level]);
    groups_.clear();
    if (!values.empty())
        addGroups(values, 0, order_.size(), 0, Row::None);
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

std::vector<std::uint32_t> ReportGrid::groupRecords(std::size_t column) {
    DistinctTexts distinct(table_, column);
    const auto place = places(distinct.texts, conventions_, Ties::Apart);
    sortByKey(order_, place.size(), [&](std::int32_t record) {
        return std::size_t(place[distinct.ofRecord[static_cast<std::size_t>(record)]]);
    });
    return std::move(distinct.ofRecord);
}

void ReportGrid::addGroups(const std::vector<std::vector<std::uint32_t>>& values, std::size_t first,
                           std::size_t end, std::size_t level, std::int32_t parent) {
    const std::size_t column = groupColumns_[level];
    const auto recordAt = [&](std::size_t at) { return static_cast<std::size_t>(order_[at]); };
    while (first < end) {
        const std::uint32_t value = values[level][recordAt(first)];
        std::size_t next = first + 1;
        while (next < end && values[level][recordAt(next)] == value)
            ++next;
        const auto header = static_cast<std::int32_t>(groups_.size());
        groups_.push_back({column, level, parent, std::string(item(recordAt(first), column)),
                           static_cast<std::int32_t>(next - first), sumsOf(first, next), first});
        groups_.back().collapsed = !collapsed_.empty() && collapsed_.contains(pathOf(header));
        if (level + 1 < values.size())
            addGroups(values, first, next, level + 1, header);
        first = next;
    }
}

void ReportGrid::buildRows() {
    rows_.clear();
    rows_.reserve(order_.size() + groups_.size());
    const auto addRecords = [&](std::size_t first, std::size_t count) {
        for (std::size_t at = first; at < first + count; ++at)
            rows_.push_back({order_[at], Row::None});
    };
    if (groupColumns_.empty())
        addRecords(0, order_.size());
    std::size_t deepest = groupColumns_.size(); // level to be shown
    for (std::size_t at = 0; at < groups_.size(); ++at) {
        const Group& group = groups_[at];
        if (group.level > deepest) // inside one that is collapsed
            continue;
        rows_.push_back({Row::None, static_cast<std::int32_t>(at)});
        deepest = group.collapsed ? group.level : groupColumns_.size();
        if (!group.collapsed && group.level + 1 == groupColumns_.size())
            addRecords(group.first, static_cast<std::size_t>(group.count));
    }
}

ReportGrid::GroupPath ReportGrid::pathOf(std::int32_t group) const {
    GroupPath path;
    for (; group != Row::None; group = groups_[static_cast<std::size_t>(group)].parent)
        path.push_back(groups_[static_cast<std::size_t>(group)].value);
    return path;
}

} // namespace kova
