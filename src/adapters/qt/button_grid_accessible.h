#pragma once

namespace kova {

/// Tells assistive technology that a button grid consists of buttons, which it can name and touch. Calling it
/// again is no error.
void makeButtonGridsAccessible();

} // namespace kova
