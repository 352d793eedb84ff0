#pragma once

namespace kova {

/// What the entry screen says beside its controls, so that a wrong movement is seen before and after it is
/// sent. None of it takes the focus or a touch, or changes what is sent.
struct ScreenAids {
    bool amountReadBack = true; ///< the amount and all else that would be sent, and what is missing
    bool direction = true;      ///< whether the money goes in or out, once that is known
    bool confirmation = true;   ///< a short notice of what was sent
};

/// What the decimal key of the amount enters, on the screen and on a physical keyboard.
enum class DecimalKey {
    Comma, ///< a comma, which is no decimal separator in every region
    Region ///< the region's decimal separator, once
};

} // namespace kova
