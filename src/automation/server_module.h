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
    HeldByHost() { count(1); }
    HeldByHost(const HeldByHost&) = delete;
    HeldByHost& operator=(const HeldByHost&) = delete;
    ~HeldByHost() { count(-1); }
    static bool any();
    /// One more, or less.
    static void count(long difference);
};

} // namespace kova::automation
