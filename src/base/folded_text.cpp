#include "base/folded_text.h"

#include "base/ascii_text.h"

#include <algorithm>

namespace kova {
namespace {

/// Of U+00C0 to U+017F, each character's own letter; "." for those that are no letters, or two of them.
constexpr std::string_view Latin = "aaaaaa.ceeeeiiiidnooooo.ouuuuyt."  // U+00C0
                                   "aaaaaa.ceeeeiiiidnooooo.ouuuuyty"  // U+00E0
                                   "aaaaaaccccccccddddeeeeeeeeeegggg"  // U+0100
                                   "gggghhhhiiiiiiiiii..jjkkklllllll"  // U+0120
                                   "lllnnnnnnnnnoooooo..rrrrrrssssss"  // U+0140
                                   "ssttttttuuuuuuuuuuuuwwyyyzzzzzzs"; // U+0160
static_assert(Latin.size() == 0x180 - 0xC0);
constexpr char32_t FirstLatin = 0xC0;

std::string_view twoLetters(char32_t character) {
    switch (character) {
    case U'Æ':
    case U'æ':
        return "ae";
    case U'Œ':
    case U'œ':
        return "oe";
    case U'Ĳ':
    case U'ĳ':
        return "ij";
    case U'ß':
        return "ss";
    default:
        return {};
    }
}

/// Folds what begins at `at`; gives the number of bytes that it was.
std::size_t fold(std::string& folded, std::string_view text, std::size_t at) {
    constexpr std::string_view Minus = "−";
    const auto lead = static_cast<unsigned char>(text[at]);
    if (lead < 0x80 || at + 1 == text.size()) {
        folded += lowered(text[at]);
        return 1;
    }
    const auto next = static_cast<unsigned char>(text[at + 1]);
    if (lead >= 0xC3 && lead <= 0xCD) { // U+00C0 to U+037F
        const char32_t character = (lead & 0x1FU) << 6U | (next & 0x3FU);
        if (character >= 0x300 && character < 0x370)
            return 2; // an accent of its own
        if (character >= FirstLatin && character < FirstLatin + Latin.size()) {
            const char letter = Latin[character - FirstLatin];
            const std::string_view two = twoLetters(character);
            if (letter == '.')
                folded += two.empty() ? text.substr(at, 2) : two;
            else
                folded += letter;
            return 2;
        }
    }
    if (text.substr(at, Minus.size()) == Minus) {
        folded += '-';
        return Minus.size();
    }
    folded += text[at];
    return 1;
}

} // namespace

void appendFolded(std::string& folded, std::string_view text) {
    const auto isPlain = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
    if (std::ranges::all_of(text, isPlain)) { // nearly all, and many
        const std::size_t begin = folded.size();
        folded.append(text);
        std::transform(folded.begin() + static_cast<std::ptrdiff_t>(begin), folded.end(),
                       folded.begin() + static_cast<std::ptrdiff_t>(begin), lowered);
        return;
    }
    for (std::size_t at = 0; at < text.size();)
        at += fold(folded, text, at);
}

std::string foldedText(std::string_view text) {
    std::string folded;
    appendFolded(folded, text);
    return folded;
}

std::vector<TextRange> foundIn(std::string_view text, std::string_view folded) {
    std::string all;
    std::vector<TextRange> origin; // of each byte of `all`
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = at + fold(all, text, at);
        origin.resize(all.size(), {at, end});
        at = end;
    }
    std::vector<TextRange> found;
    for (std::size_t at = all.find(folded); at != std::string::npos;
         at = all.find(folded, at + folded.size()))
        found.push_back({origin[at].begin, origin[at + folded.size() - 1].end});
    return found;
}

} // namespace kova
