#pragma once
#include <string>

namespace kova {

/// Folder of the file (shared library or program) that this code was linked into, absolute and without a
/// separator at its end; "." when the system cannot tell.
std::string ownFolder();

} // namespace kova
