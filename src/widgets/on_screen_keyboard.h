#pragma once
#include "widgets/control.h"

#include <vector>

namespace kova {

class TextBox;

/// A keyboard that types into a bound text box. Caps lock is on at the start.
class OnScreenKeyboard : public Control {
  public:
    using Control::Control;
    void accept(ControlVisitor& visitor) override;
    /// Rows of characters from the top, in lower case; 8 is backspace, 10 the line break, 32 the space bar.
    static const std::vector<std::u32string>& rows();
    static bool hasKey(char32_t character); ///< in either letter case
    /// The box must outlive the binding; null unbinds.
    void bind(TextBox* target) { target_ = target; }
    [[nodiscard]] bool capsLock() const { return capsLock_; }
    Gesture toggleCapsLock();
    [[nodiscard]] char32_t shown(char32_t key) const; ///< the key's character under the present caps lock
    [[nodiscard]] Color backColor() const { return backColor_; }
    void setBackColor(Color color) { assign(backColor_, color, Property::BackColor); }
    /// Touches the key that carries this character in either letter case, which must exist.
    Gesture touchKey(char32_t character);

  private:
    TextBox* target_ = nullptr;
    bool capsLock_ = true;
    Color backColor_ = colors::ButtonFace;
};

} // namespace kova
