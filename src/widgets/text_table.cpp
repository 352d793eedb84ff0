#include "widgets/text_table.h"

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
    if (record >= records_.size())
        throw std::out_of_range("no such record");
    Range& range = records_[record];
    if (range.first + range.count != items_.size()) { // items came after its own: it moves behind them
        const auto moved = static_cast<std::uint32_t>(items_.size());
        for (std::uint32_t i = 0; i < range.count; ++i)
            items_.push_back(items_[range.first + i]);
        range.first = moved;
    }
    items_.push_back(texts_.keep(text));
    ++range.count;
}

std::string_view TextTable::item(std::size_t record, std::size_t column) const {
    if (record >= records_.size())
        throw std::out_of_range("no such record");
    const Range& range = records_[record];
    return column < range.count ? texts_.at(items_[range.first + column]) : std::string_view();
}

std::size_t TextTable::memoryUse() const {
    return texts_.memoryUse() + items_.memoryUse() + records_.memoryUse();
}

} // namespace kova
