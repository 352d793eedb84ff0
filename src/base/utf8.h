#pragma once
#include <string>
#include <string_view>

namespace kova {

/// Stands for what is no character.
inline constexpr char32_t ReplacementCharacter = 0xFFFD;

/// Appends one character in UTF-8.
void appendUtf8(std::string& text, char32_t character);
/// The characters of a UTF-8 text; a byte that starts none gives U+FFFD.
std::u32string fromUtf8(std::string_view text);
std::string toUtf8(std::u32string_view text);
/// Start of the character that ends before `position`.
std::size_t previousCharacter(std::string_view text, std::size_t position);
/// Upper and lower case of the letters of Italian, German and English; other characters give themselves.
char32_t upperCase(char32_t character);
char32_t lowerCase(char32_t character);

} // namespace kova
