#pragma once
#include "com/com_headers.h"
#include "com/com_pointer.h"

#include <string>

namespace kova::automation {

/// The file that this code runs from.
std::wstring moduleFile();

/// The description of a type in the type library that the module holds; empty when it cannot be read.
com::Pointer<ITypeInfo> typeInfo(const GUID& id);

/// Everything that a host holds of this module counts; with nothing left it may be unloaded.
class HeldByHost {
  public:
    HeldByHost();
    HeldByHost(const HeldByHost&) = delete;
    HeldByHost& operator=(const HeldByHost&) = delete;
    ~HeldByHost();
    static bool any();
};

} // namespace kova::automation
