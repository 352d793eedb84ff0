#pragma once
#include "com/com_headers.h"

namespace kova::automation {

/// Whom the class is registered for.
enum class Hive { Machine, User };

/// Writes the class, its name and its type library into the registry, in the view of this module's own word
/// size. Returns an error code of registration when it has no right to.
HRESULT registerServer(Hive hive);
/// Takes away all that `registerServer` wrote. What is not there is no error.
HRESULT unregisterServer(Hive hive);

} // namespace kova::automation
