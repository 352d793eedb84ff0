#include "base/utf16.h"

#include "base/utf8.h"

#include <algorithm>

namespace kova {
namespace {

constexpr char32_t FirstOfPairs = 0x10000;

bool isFirstHalf(char16_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}

bool isSecondHalf(char16_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

} // namespace

std::u16string toUtf16(std::string_view text) {
    std::u16string result;
    result.reserve(text.size());
    for (const char32_t character : fromUtf8(text)) {
        if (character < FirstOfPairs) {
            result += static_cast<char16_t>(character);
            continue;
        }
        const char32_t offset = character - FirstOfPairs;
        result += static_cast<char16_t>(0xD800 + (offset >> 10));
        result += static_cast<char16_t>(0xDC00 + (offset & 0x3FF));
    }
    return result;
}

void appendUtf16(std::string& utf8, std::u16string_view text) {
    const auto isPlain = [](char16_t unit) { return unit < 0x80; };
    if (std::ranges::all_of(text, isPlain)) { // as nearly all texts are
        const std::size_t start = utf8.size();
        utf8.resize(start + text.size());
        std::ranges::transform(text, utf8.begin() + std::ptrdiff_t(start),
                               [](char16_t unit) { return static_cast<char>(unit); });
        return;
    }
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t unit = text[i];
        if (unit < 0x80) {
            utf8 += static_cast<char>(unit);
        } else if (isFirstHalf(unit) && i + 1 < text.size() && isSecondHalf(text[i + 1])) {
            ++i;
            appendUtf8(utf8, FirstOfPairs + ((unit - 0xD800u) << 10) + (text[i] - 0xDC00u));
        } else {
            appendUtf8(utf8, isFirstHalf(unit) || isSecondHalf(unit) ? ReplacementCharacter : unit);
        }
    }
}

} // namespace kova
