#pragma once
#include "platform/database.h"

#include <string>
#include <string_view>
#include <vector>

namespace kova::test {

/// A call of sp_executesql, taken apart.
struct ExecuteCall {
    std::string text;
    std::string declaration;     ///< such as "@P1 date"
    std::vector<DateTime> dates; ///< the parameters, of which this server knows dates alone
};

/// Reads the body of a call, behind its headers. Throws std::runtime_error for anything that the component's
/// driver does not send.
ExecuteCall readExecuteCall(std::string_view body);

} // namespace kova::test
