#pragma once

namespace kova {

/// What a numeric field takes besides digits and control characters.
struct NumericKeys {
    bool decimals = false; ///< the decimal comma; a point is taken as one, since number pads have either
    bool sign = false;     ///< - and +
    bool grouping = false; ///< an apostrophe between groups of digits
    bool exponent = false; ///< e and E
    bool percent = false;
    bool blanks = false;
};

/// The character to keep for a typed one, 0 to discard the key.
char32_t NumericKeyFilter(char32_t character, const NumericKeys& allowed);

} // namespace kova
