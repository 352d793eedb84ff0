#pragma once
#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace kova {

/// Why a line of a scenario cannot be carried out.
class ScenarioError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// The lines of a script, without their ends; a byte-order mark at the start is dropped.
std::vector<std::string> scenarioLines(std::string_view text);

/// The words of a line: separated by blanks, a word in double quotes may hold any character and the escapes
/// \" \\ \n \r \t, and # outside quotes starts a comment. None for an empty line. Throws ScenarioError.
std::vector<std::string> scenarioWords(std::string_view line);

/// `FILE:LINE: reason`; lines count from 1.
std::string located(const std::string& file, std::size_t line, const std::string& reason);

} // namespace kova
