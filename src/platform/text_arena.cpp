#include "platform/text_arena.h"

#include <cstring>
#include <limits>
#include <stdexcept>

namespace kova {

TextArena::Place TextArena::keep(std::string_view text) {
    constexpr std::size_t longestShort = 32;
    if (text.empty() || text.size() > longestShort)
        return add(text);
    const auto byte = [&](std::size_t at) { return std::size_t(static_cast<unsigned char>(text[at])); };
    const std::size_t last = text.size() - 1;
    const std::size_t hash = text.size() * 31U + byte(0) + byte(last / 2) * 7U + byte(last) * 59U;
    Place& recent = recent_[hash % recent_.size()];
    if (at(recent) != text)
        recent = add(text);
    return recent;
}

TextArena::Place TextArena::add(std::string_view text) {
    if (text.empty())
        return {0, 0};
    if (PageSize - used_ < text.size())
        addPages((text.size() + PageSize - 1) / PageSize);
    const std::size_t pages =
        (used_ + text.size() + PageSize - 1) / PageSize; // more than one for a long text alone
    const std::size_t first = pages_.size() - pages;
    const Place place{static_cast<std::uint32_t>(first * PageSize + used_),
                      static_cast<std::uint32_t>(text.size())};
    std::memcpy(pages_[first] + used_, text.data(), text.size());
    used_ = pages > 1 ? PageSize : used_ + text.size();
    return place;
}

void TextArena::addPages(std::size_t count) {
    if ((pages_.size() + count) * PageSize > std::numeric_limits<std::uint32_t>::max())
        throw std::length_error("too many texts");
    if (count == 1 && !spare_.empty()) {
        pieces_.push_back(std::move(spare_.back()));
        spare_.pop_back();
    } else {
        pieces_.push_back({std::make_unique_for_overwrite<char[]>(count * PageSize), count});
    }
    for (std::size_t page = 0; page < count; ++page)
        pages_.push_back(pieces_.back().bytes.get() + page * PageSize);
    used_ = 0;
}

void TextArena::clear() {
    for (Piece& piece : pieces_)
        if (piece.pages == 1)
            spare_.push_back(std::move(piece));
    pieces_.clear();
    pages_.clear();
    used_ = PageSize;
    recent_ = {};
}

std::size_t TextArena::memoryUse() const {
    return (pages_.size() + spare_.size()) * PageSize;
}

} // namespace kova
