#pragma once
#include <cstdint>
#include <string>
#include <vector>

namespace kova::c_interface {

/// What one thread of the host's has of this interface.
struct ThreadState {
    std::int32_t errorNumber = 0;
    std::string errorWords, sqlState; ///< of the last call that failed
    std::string text;                 ///< that was handed out last
    std::vector<std::string> answers; ///< of the last call by name or id
    std::string wordsOfFailure;       ///< of the handler that is about to fail
};

/// Of the calling thread; goes with it.
ThreadState& threadState();

} // namespace kova::c_interface
