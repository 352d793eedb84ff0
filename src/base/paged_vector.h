#pragma once
#include <cstddef>
#include <vector>

namespace kova {

/// A growing sequence of small values in pages that never move: growing copies nothing, and no large piece of
/// memory is needed. Index checks are the caller's.
template <class T>
class PagedVector {
  public:
    void push_back(const T& value) {
        const std::size_t page = size_ / PageLength;
        if (page == pages_.size()) {
            pages_.emplace_back();
            if (page > 0)
                pages_.back().reserve(PageLength); // the first may stay short
        }
        pages_[page].push_back(value);
        ++size_;
    }
    [[nodiscard]] const T& operator[](std::size_t index) const {
        return pages_[index / PageLength][index % PageLength];
    }
    [[nodiscard]] T& operator[](std::size_t index) { return pages_[index / PageLength][index % PageLength]; }
    [[nodiscard]] std::size_t size() const { return size_; }
    /// Keeps the memory for the next values.
    void clear() {
        for (auto& page : pages_)
            page.clear();
        size_ = 0;
    }
    /// Bytes held.
    [[nodiscard]] std::size_t memoryUse() const {
        std::size_t values = 0;
        for (const auto& page : pages_)
            values += page.capacity();
        return values * sizeof(T);
    }

  private:
    static constexpr std::size_t PageLength = 65536 / sizeof(T);
    std::vector<std::vector<T>> pages_;
    std::size_t size_ = 0;
};

} // namespace kova
