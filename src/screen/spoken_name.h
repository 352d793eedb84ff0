#pragma once
#include "base/signal.h"
#include "services/texts.h"
#include "widgets/button_grid.h"
#include "widgets/keyboards.h"
#include "widgets/notices.h"
#include "widgets/report_grid.h"

#include <optional>
#include <string>

namespace kova {

class Control;

/// The words of the drawing itself, in the component's language.
class Wording {
  public:
    std::string operator()(Word word) const { return std::string(inWords(word, languageId_)); }
    void setLanguage(std::int32_t id) {
        if (std::exchange(languageId_, id) != id)
            changed();
    }
    [[nodiscard]] std::int32_t languageId() const { return languageId_; }
    Signal<> changed;

  private:
    std::int32_t languageId_ = 0;
};

// What assistive technology calls things.

/// The name given to a control and its own words; else the labels beside and above it, as a person reads
/// them; else the frame, page or window that it stands on. Hidden labels name nothing.
std::string spokenNameOf(Control& control, const Wording& words);
std::string spokenNameOf(const ButtonGrid::Button& button);
/// A list's cell, or the header of its column for no row. A group's header says all of it in its first cell.
std::string spokenCell(const ReportGrid& grid, std::optional<std::size_t> row, std::size_t column);
/// What is to be said besides of a list: that it is empty or cut short; else how long it is, and its order.
std::string spokenDescription(const ReportGrid& grid, const Wording& words);
/// Of a cell, or of a column's header for no row: whether the list is sorted by it, or the group is
/// collapsed.
std::string spokenDescription(const ReportGrid& grid, std::optional<std::size_t> row, std::size_t column,
                              const Wording& words);
std::string spokenText(const ReadBack::Content& content);
/// A key of the on-screen keyboard, by its character; caps lock has none.
std::string spokenKey(std::optional<char32_t> character, const Wording& words);
inline constexpr std::string_view PadClearKey = "BACKSPACE";
inline constexpr std::string_view PadDecimalKey = ".";
/// A key of the keypad, of which not all do what their texts say.
std::string spokenKey(const NumericKeypad& keypad, const std::string& text, const Wording& words);

} // namespace kova
