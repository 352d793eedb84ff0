#include "base/utf8.h"

namespace kova {
namespace {

bool isContinuation(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

} // namespace

void appendUtf8(std::string& text, char32_t c) {
    const auto tail = [&](unsigned shift) { text += static_cast<char>(0x80U | ((c >> shift) & 0x3FU)); };
    if (c < 0x80) {
        text += static_cast<char>(c);
    } else if (c < 0x800) {
        text += static_cast<char>(0xC0U | (c >> 6U));
        tail(0);
    } else if (c < 0x10000) {
        text += static_cast<char>(0xE0U | (c >> 12U));
        tail(6);
        tail(0);
    } else {
        text += static_cast<char>(0xF0U | (c >> 18U));
        tail(12);
        tail(6);
        tail(0);
    }
}

std::u32string fromUtf8(std::string_view text) {
    std::u32string result;
    for (std::size_t i = 0; i < text.size();) {
        const auto lead = static_cast<unsigned char>(text[i]);
        const std::size_t length = lead < 0x80    ? 1
                                   : lead >= 0xF0 ? 4
                                   : lead >= 0xE0 ? 3
                                   : lead >= 0xC0 ? 2
                                                  : 0;
        if (length == 0 || i + length > text.size()) {
            result += ReplacementCharacter;
            ++i;
            continue;
        }
        char32_t c = length == 1 ? lead : lead & (0x7FU >> length);
        std::size_t used = 1;
        while (used < length && isContinuation(text[i + used]))
            c = (c << 6U) | (static_cast<unsigned char>(text[i + used++]) & 0x3FU);
        result += used == length ? c : ReplacementCharacter;
        i += used;
    }
    return result;
}

std::string toUtf8(std::u32string_view text) {
    std::string result;
    for (const char32_t c : text)
        appendUtf8(result, c);
    return result;
}

std::size_t previousCharacter(std::string_view text, std::size_t position) {
    while (position > 0 && isContinuation(text[--position])) {
    }
    return position;
}

char32_t upperCase(char32_t c) {
    if ((c >= U'a' && c <= U'z') || (c >= U'à' && c <= U'þ' && c != U'÷'))
        return c - 32;
    return c;
}

char32_t lowerCase(char32_t c) {
    if ((c >= U'A' && c <= U'Z') || (c >= U'À' && c <= U'Þ' && c != U'×'))
        return c + 32;
    return c;
}

} // namespace kova
