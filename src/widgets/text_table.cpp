#include "widgets/text_table.h"

#include <limits>
#include <stdexcept>

namespace kova {

void TextTable::clear() {
    texts_.clear();
    items_.clear();
    records_.clear();
}

void TextTable::addRecord() {
    records_.push_back({static_cast<std::uint32_t>(items_.size()), 0});
}

void TextTable::addItem(std::size_t record, std::string_view text) {
    if (text.size() > std::numeric_limits<std::uint32_t>::max() - texts_.size())
        throw std::length_error("the list is too long");
    const Item item{static_cast<std::uint32_t>(texts_.size()), static_cast<std::uint32_t>(text.size())};
    texts_.append(text);
    auto& range = records_.at(record);
    if (record + 1 == records_.size()) {
        items_.push_back(item);
        ++range.count;
        return;
    }
    items_.insert(items_.begin() + range.first + range.count, item);
    ++range.count;
    for (std::size_t later = record + 1; later < records_.size(); ++later)
        ++records_[later].first;
}

std::string_view TextTable::item(std::size_t record, std::size_t column) const {
    const auto& range = records_.at(record);
    if (column >= range.count)
        return {};
    const auto& item = items_[range.first + column];
    return std::string_view(texts_).substr(item.offset, item.length);
}

std::size_t TextTable::memoryUse() const {
    return texts_.capacity() + items_.capacity() * sizeof(Item) + records_.capacity() * sizeof(Range);
}

} // namespace kova
