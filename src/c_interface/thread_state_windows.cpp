#include "c_interface/thread_state.h"

#include <windows.h>

#include <memory>

namespace kova::c_interface {

// Objects that the compiler keeps for a thread are destroyed too late here, when a thread of another module's
// ends.
ThreadState& threadState() {
    static const DWORD index = FlsAlloc([](void* state) { delete static_cast<ThreadState*>(state); });
    if (auto* const known = static_cast<ThreadState*>(FlsGetValue(index)))
        return *known;
    auto made = std::make_unique<ThreadState>();
    FlsSetValue(index, made.get());
    return *made.release();
}

} // namespace kova::c_interface
