#pragma once
#include "widgets/control.h"

namespace kova {

/// Editable text with a caret. Texts are UTF-8; caret positions are byte offsets on character boundaries.
class TextBox : public ControlOfKind<TextBox> {
  public:
    enum class Lines { Single, Multiple };
    TextBox(Place place, Lines lines, Font font, Alignment alignment = Alignment::Left)
        : ControlOfKind(std::move(place)), lines_(lines), font_(std::move(font)), alignment_(alignment) {}

    [[nodiscard]] bool multiLine() const { return lines_ == Lines::Multiple; }
    [[nodiscard]] const Font& font() const { return font_; }
    [[nodiscard]] Alignment alignment() const { return alignment_; } ///< of a single line
    [[nodiscard]] const std::string& text() const { return text_; }
    /// Puts the caret at the end.
    void setText(const std::string& text);
    [[nodiscard]] bool locked() const { return locked_; } ///< shown but not editable
    void setLocked(bool locked) { assign(locked_, locked, Property::Locked); }
    /// Whether it is only looked at: no gesture does anything to it, not even a touch.
    [[nodiscard]] bool inert() const { return inert_; }
    void setInert(bool inert) { assign(inert_, inert, Property::Locked); }
    /// Whether it stands where there is no field: nothing of it is drawn, but a touch counts.
    [[nodiscard]] bool standsIn() const { return standsIn_; }
    /// To be called before the window has a view.
    void setStandsIn(bool standsIn) { standsIn_ = standsIn; }
    /// Whether the tabulator key stops here; a touch gives it the focus either way.
    [[nodiscard]] bool tabStop() const { return tabStop_; }
    void setTabStop(bool stop) { tabStop_ = stop; }
    [[nodiscard]] Color backColor() const { return backColor_; }
    void setBackColor(Color color) { assign(backColor_, color, Property::BackColor); }
    [[nodiscard]] Color foreColor() const { return foreColor_; }
    void setForeColor(Color color) { assign(foreColor_, color, Property::ForeColor); }
    [[nodiscard]] Gesture reach() const override;
    [[nodiscard]] bool takesFocus() const override { return !inert_; }

    /// A character key: the filter is asked, then the text is edited at the caret. 8 deletes backwards, 10
    /// and 13 break the line where there are several; other control characters change nothing.
    Gesture typeCharacter(char32_t character) override;
    /// A key of the on-screen keyboard: like typing, but the box need not be able to take the focus.
    void insertFromKeyboard(char32_t character);
    /// Replaces the whole text as pasting does, past the filter.
    Gesture paste(const std::string& text);
    /// Asks the filter alone: the character to keep instead, 0 to drop the key.
    [[nodiscard]] char32_t filter(char32_t character) const;
    /// What a toolkit's own editor made of a key or paste; `start` and `end` bound the selection.
    void adoptEdit(const std::string& text, std::size_t start, std::size_t end);
    void select(std::size_t start, std::size_t end);
    [[nodiscard]] std::size_t selectionStart() const { return selectionStart_; }
    [[nodiscard]] std::size_t selectionEnd() const { return selectionEnd_; }

    Signal<char32_t&> keyPress; ///< before a character is taken; a handler may replace it, 0 drops it

  private:
    void edit(char32_t character);
    Lines lines_;
    Font font_;
    Alignment alignment_;
    std::string text_;
    std::size_t selectionStart_ = 0, selectionEnd_ = 0;
    bool locked_ = false;
    bool inert_ = false;
    bool standsIn_ = false;
    bool tabStop_ = true;
    Color backColor_ = colors::White, foreColor_ = colors::Black;
};

/// A day as text in the user's short-date form; typing may leave any text in it.
class DateField : public ControlOfKind<DateField> {
  public:
    using ControlOfKind::ControlOfKind;
    [[nodiscard]] const std::string& text() const { return text_; }
    void setText(const std::string& text) { assign(text_, text, Property::Text); }
    Gesture paste(const std::string& text);
    Gesture typeCharacter(char32_t character) override;
    /// Where a rendering may offer the day before, today and the day after, on the field's parent; nowhere
    /// while it is empty. Set before it is drawn.
    [[nodiscard]] const Rect& stepsPlace() const { return stepsPlace_; }
    void setStepsPlace(const Rect& place) { stepsPlace_ = place; }

  private:
    std::string text_;
    Rect stepsPlace_;
};

} // namespace kova
