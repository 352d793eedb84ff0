#pragma once
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kova {

/// Appends a UTF-8 text as it is compared in a search: Latin letters small and without their accents, a minus
/// as a hyphen, all else as it is.
void appendFolded(std::string& folded, std::string_view text);
std::string foldedText(std::string_view text);

struct TextRange {
    std::size_t begin, end; ///< bytes
    friend bool operator==(const TextRange&, const TextRange&) = default;
};
/// Where a folded text, which must not be empty, stands in one that is not.
std::vector<TextRange> foundIn(std::string_view text, std::string_view folded);

} // namespace kova
