#pragma once
#include <string>
#include <string_view>

namespace kova {

/// The same text in UTF-16; a byte that is no UTF-8 gives U+FFFD.
std::u16string toUtf16(std::string_view text);
/// Appends the text in UTF-8; half of a pair without its other half gives U+FFFD.
void appendUtf16(std::string& utf8, std::u16string_view text);

} // namespace kova
