#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kova {

/// Records of texts, all in one arena, so that a hundred thousand records cost three allocations.
class TextTable {
  public:
    void clear();
    void addRecord();
    /// The next item of a record, which must exist. Cheapest for the last record. Throws std::length_error
    /// beyond 4 GiB of texts.
    void addItem(std::size_t record, std::string_view text);

    [[nodiscard]] std::size_t recordCount() const { return records_.size(); }
    /// Empty for an item that was not added. The view is valid until the next record or item is added.
    [[nodiscard]] std::string_view item(std::size_t record, std::size_t column) const;
    /// Bytes held.
    [[nodiscard]] std::size_t memoryUse() const;

  private:
    struct Item {
        std::uint32_t offset, length;
    };
    struct Range {
        std::uint32_t first, count;
    };
    std::string texts_;
    std::vector<Item> items_;
    std::vector<Range> records_;
};

} // namespace kova
