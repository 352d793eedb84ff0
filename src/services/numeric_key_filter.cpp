#include "services/numeric_key_filter.h"

namespace kova {

char32_t NumericKeyFilter(char32_t character, const NumericKeys& allowed) {
    const auto keepIf = [character](bool keep) { return keep ? character : U'\0'; };
    switch (character) {
    case U'.':
    case U',':
        return allowed.decimals ? U',' : U'\0';
    case U'-':
    case U'+':
        return keepIf(allowed.sign);
    case U'\'':
        return keepIf(allowed.grouping);
    case U'e':
    case U'E':
        return keepIf(allowed.exponent);
    case U'%':
        return keepIf(allowed.percent);
    case U' ':
        return keepIf(allowed.blanks);
    default:
        return keepIf(character < U' ' || (character >= U'0' && character <= U'9'));
    }
}

} // namespace kova
