#pragma once

namespace kova {

/// From now on the toolkit asks each view what it is to assistive technology. Calling it again is no error.
void makeViewsAccessible();

} // namespace kova
