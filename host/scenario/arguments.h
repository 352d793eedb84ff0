#pragma once
#include "component/type_description.h"
#include "component/variant.h"
#include "ports/database.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kova {

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
