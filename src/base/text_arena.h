#pragma once

#include <array>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace kova {

/// Keeps many texts, which never move, and gives each a short place instead of an address. Short texts that
/// come again soon, as the few names in a column do, are mostly kept once.
class TextArena {
  public:
    /// One more than the offset of a text's length, which the text follows.
    enum class Place : std::uint32_t { Empty = 0 };
    /// Throws std::length_error beyond 4 GiB.
    Place keep(std::string_view text);
    [[nodiscard]] std::string_view at(Place place) const {
        if (place == Place::Empty)
            return {};
        const std::size_t offset = static_cast<std::uint32_t>(place) - 1;
        const char* const bytes = pages_[offset / PageSize] + offset % PageSize;
        const auto length = static_cast<unsigned char>(*bytes);
        return length < LongLength ? std::string_view(bytes + 1, length) : longText(bytes + 1);
    }
    /// Keeps the memory of ordinary texts for the next ones.
    void clear();
    /// Bytes held.
    [[nodiscard]] std::size_t memoryUse() const;

  private:
    static constexpr std::size_t PageSize = 65536;
    static constexpr unsigned RecentBits = 11;
    static constexpr unsigned char LongLength = 255; ///< the length follows in four bytes
    struct Piece {
        std::unique_ptr<char[]> bytes;
        std::size_t pages; ///< more than one for a text that is longer than a page
    };
    struct Recent {
        Place place;
        std::uint32_t mark; ///< more of its hash, so that most other texts are told apart unread
    };
    static std::string_view longText(const char* bytes);
    Place add(std::string_view text);
    void addPages(std::size_t count);
    std::vector<Piece> pieces_;
    std::vector<Piece> spare_;                                         ///< of one page each
    std::vector<char*> pages_;                                         ///< by offset
    std::size_t used_ = PageSize;                                      ///< of the last page
    std::array<std::pair<Recent, Recent>, 1U << RecentBits> recent_{}; ///< two for each hash of a text
};

/// What is known of texts whose places came by lately: most texts of a list are of few places, and need be
/// looked at only once.
template <class Known>
class KnownByPlace {
  public:
    explicit KnownByPlace(Known ofEmpty) { recent_.fill({TextArena::Place::Empty, ofEmpty}); }
    /// What `find` returns, which is called where it is not known.
    template <class Find>
    Known of(TextArena::Place place, const Find& find) {
        auto& [recent, known] = recent_[static_cast<std::uint32_t>(place) % recent_.size()];
        if (recent != place) {
            known = find();
            recent = place;
        }
        return known;
    }

  private:
    std::array<std::pair<TextArena::Place, Known>, 4096> recent_;
};

} // namespace kova
