#pragma once
#include <QString>

#include <string>
#include <string_view>

namespace kova {

/// A model's text is UTF-8 with any line breaks and counts bytes; a toolkit's editor has UTF-16 with one unit
/// a line break. These carry texts and positions across; a position inside a character gives its start.
class TextPositions {
  public:
    enum class Breaks { Kept, Joined }; ///< whether "\r\n" and "\r" are one line break in the editor
    TextPositions(std::string_view text, Breaks breaks) : text_(text), breaks_(breaks) {}

    [[nodiscard]] QString editorText() const;
    [[nodiscard]] int toEditor(std::size_t byte) const;
    [[nodiscard]] std::size_t toModel(int unit) const;

  private:
    struct Step {
        std::size_t bytes;
        int units;
    };
    [[nodiscard]] Step stepAt(std::size_t byte) const;
    std::string_view text_;
    Breaks breaks_;
};

} // namespace kova
