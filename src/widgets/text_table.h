#pragma once
#include "base/paged_vector.h"
#include "base/text_arena.h"

#include <string_view>

namespace kova {

/// Records of texts, in a few large pieces of memory that stay for the next records.
class TextTable {
  public:
    void clear();
    void addRecord();
    /// The next item of a record, which must exist. Cheapest for the last record.
    void addItem(std::size_t record, std::string_view text);

    [[nodiscard]] std::size_t recordCount() const { return records_.size(); }
    /// Empty for an item that was not added. The view is valid until the records are cleared.
    [[nodiscard]] std::string_view item(std::size_t record, std::size_t column) const;
    /// Bytes held.
    [[nodiscard]] std::size_t memoryUse() const;

  private:
    struct Range {
        std::uint32_t first, count;
    };
    TextArena texts_;
    PagedVector<TextArena::Place> items_; ///< those of one record in a row
    PagedVector<Range> records_;
};

} // namespace kova
