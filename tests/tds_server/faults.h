#pragma once
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kova::test {

/// What the server does to a query whose text contains a piece.
struct Fault {
    enum class Kind {
        Fail,       ///< refuses it with `number` and `message`
        HangUp,     ///< hangs up without an answer
        BreakOff,   ///< hangs up in the middle of the row that follows `afterRows` others
        Stall,      ///< answers only when the client gives up
        StallLate,  ///< the same behind `afterRows` rows
        FailLate,   ///< refuses it with `number` and `message` behind `afterRows` rows, or behind the result
        StallDeadly ///< answers never
    };
    std::string piece;
    Kind kind = Kind::Fail;
    std::size_t afterRows = 0;
    std::int32_t number = 0;
    std::string message = {};
    int times = 1'000'000; ///< how many queries it meets
};

} // namespace kova::test
