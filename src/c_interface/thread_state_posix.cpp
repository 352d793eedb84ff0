#include "c_interface/thread_state.h"

namespace kova::c_interface {

ThreadState& threadState() {
    thread_local ThreadState state;
    return state;
}

} // namespace kova::c_interface
