#pragma once
#include "base/date_time.h"
#include "component/type_description.h"
#include "component/variant.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
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

/// The words behind a command, read as the types that it wants. Every reading throws ScenarioError for a word
/// that cannot be read so.
class Arguments {
  public:
    explicit Arguments(std::vector<std::string> words) : words_(std::move(words)) {}

    [[nodiscard]] std::size_t count() const { return words_.size(); }
    void requireCount(std::size_t least, std::size_t most) const;
    void requireCount(std::size_t exactly) const { requireCount(exactly, exactly); }

    /// The position must exist, as for all readings below.
    [[nodiscard]] const std::string& text(std::size_t position) const { return words_.at(position); }
    [[nodiscard]] std::int32_t int32(std::size_t position) const;
    /// [0, 2147483647]
    [[nodiscard]] std::int32_t natural(std::size_t position) const;
    /// One of two words, the first meaning true.
    [[nodiscard]] bool choice(std::size_t position, std::string_view yes, std::string_view no) const;
    /// YYYY-MM-DDTHH:MM:SS
    [[nodiscard]] DateTime dateTime(std::size_t position) const;

    /// The words from a position on.
    [[nodiscard]] Arguments from(std::size_t position) const;

  private:
    std::vector<std::string> words_;
};

/// A word as a value of the interface's types: numbers with a point, Booleans True and False. Throws
/// ScenarioError.
Variant valueFromWord(const std::string& word, type_description::Type type);

} // namespace kova
