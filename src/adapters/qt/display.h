#pragma once
#include <QString>

namespace kova {

/// Throws Error when Qt would end the process instead of making an application: the display that it would
/// use cannot be opened. Opens and closes it to see. What Qt draws on without a display, and what cannot be
/// tried, is no error.
void requireDisplay();

/// A font family to draw with when none that the design knows is installed.
QString standInFamily();

} // namespace kova
