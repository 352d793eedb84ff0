#pragma once
#include "widgets/control.h"

namespace kova {

/// A day as text in the user's short-date form; typing may leave any text in it.
class DateField : public Control {
  public:
    using Control::Control;
    void accept(ControlVisitor& visitor) override;
    [[nodiscard]] const std::string& text() const { return text_; }
    void setText(const std::string& text) { assign(text_, text, Property::Text); }
    Gesture paste(const std::string& text);
    Gesture typeCharacter(char32_t character) override;

  private:
    std::string text_;
};

} // namespace kova
