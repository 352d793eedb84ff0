#pragma once
#include <string>

namespace kova {

/// Prints what a type library freezes, as Windows' loader reads it in that file. Whether it could be read.
bool listLibrary(const std::wstring& file);

} // namespace kova
