#include "base/text_arena.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <stdexcept>
#include <utility>

namespace kova {

namespace {

template <class Word>
std::uint64_t wordAt(const char* bytes) {
    Word word{};
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

/// Of a text of up to 32 bytes, best in its highest bits: eight at a time, since every cell of a list comes
/// by. The last eight may overlap those before.
std::uint64_t hashOf(std::string_view text) {
    const char* const end = text.data() + text.size();
    std::uint64_t hash = text.size();
    const auto mix = [&hash](std::uint64_t part) {
        hash = (hash ^ (hash >> 32U) ^ part) * 0x9E3779B97F4A7C15U;
    };
    if (text.size() >= 8) {
        for (const char* at = text.data(); at < end - 8; at += 8)
            mix(wordAt<std::uint64_t>(at));
        mix(wordAt<std::uint64_t>(end - 8));
    } else if (text.size() >= 4) {
        mix(wordAt<std::uint32_t>(text.data()) << 32U | wordAt<std::uint32_t>(end - 4));
    } else {
        std::uint64_t part = 0;
        for (const char byte : text)
            part = part << 8U | static_cast<unsigned char>(byte);
        mix(part);
    }
    return hash;
}

} // namespace

TextArena::Place TextArena::keep(std::string_view text) {
    constexpr std::size_t LongestShort = 32;
    if (text.empty())
        return Place::Empty;
    if (text.size() > LongestShort)
        return add(text);
    const std::uint64_t hash = hashOf(text);
    const auto mark = static_cast<std::uint32_t>(hash >> 20U);
    const auto holds = [&](const Recent& recent) { return recent.mark == mark && at(recent.place) == text; };
    auto& [latest, earlier] = recent_[hash >> (64 - RecentBits)];
    if (holds(latest))
        return latest.place;
    if (!holds(earlier))
        earlier = {add(text), mark};
    std::swap(latest, earlier);
    return latest.place;
}

TextArena::Place TextArena::add(std::string_view text) {
    const bool isLong = text.size() >= LongLength;
    const std::size_t needed = text.size() + (isLong ? 1 + sizeof(std::uint32_t) : 1);
    if (PageSize - used_ < needed)
        addPages((needed + PageSize - 1) / PageSize);
    const std::size_t pages = (used_ + needed + PageSize - 1) / PageSize; // several for a long text alone
    const std::size_t first = pages_.size() - pages;
    const auto place = static_cast<Place>(first * PageSize + used_ + 1);
    char* to = pages_[first] + used_;
    *to++ = static_cast<char>(isLong ? LongLength : text.size());
    if (isLong) {
        const auto length = static_cast<std::uint32_t>(text.size());
        std::memcpy(to, &length, sizeof length);
        to += sizeof length;
    }
    std::memcpy(to, text.data(), text.size());
    used_ = pages > 1 ? PageSize : used_ + needed;
    return place;
}

std::string_view TextArena::longText(const char* bytes) {
    std::uint32_t length = 0;
    std::memcpy(&length, bytes, sizeof length);
    return {bytes + sizeof length, length};
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
