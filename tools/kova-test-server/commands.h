#pragma once
#include <string>

namespace kova::tds {

class TdsServer;

/// Carries out one line of what is asked of a running server, in the words that `commandsHelp` lists; an
/// empty line or a comment behind # asks for nothing. False for `quit`. Throws ScenarioError for a line that
/// cannot be carried out.
bool carryOut(const std::string& line, TdsServer& server);

/// The commands, a line each.
std::string_view commandsHelp();

} // namespace kova::tds
