#pragma once
#include "widgets/control.h"
#include "widgets/notices.h"

#include <vector>

namespace kova {

/// A pad of number keys. It holds no text: each touched key is reported.
class NumericKeypad : public ControlOfKind<NumericKeypad> {
  public:
    using ControlOfKind::ControlOfKind;
    /// Rows of key texts from the top, three keys a row.
    static const std::vector<std::vector<std::string>>& keys();
    /// `key` may be a text that no drawn key carries (as from an external pad).
    Gesture touchKey(const std::string& key);
    /// What the key "." enters, for a rendering to show on it.
    [[nodiscard]] const std::string& decimalMark() const { return decimalMark_; }
    void setDecimalMark(const std::string& mark) { assign(decimalMark_, mark, Property::Caption); }
    /// Whether the key "BACKSPACE" takes the whole entry or, as at first, its last character; for a
    /// rendering, too.
    [[nodiscard]] bool takesAll() const { return takesAll_; }
    void setTakesAll(bool all) { assign(takesAll_, all, Property::Caption); }
    /// What its keys typed, for a rendering to show above them; a pad may have none. It must outlive the pad.
    [[nodiscard]] ReadBack* readBack() const { return readBack_; }
    void setReadBack(ReadBack& readBack) { readBack_ = &readBack; }
    Signal<std::string&> Keyboard;

  private:
    ReadBack* readBack_ = nullptr;
    std::string decimalMark_ = ",";
    bool takesAll_ = false;
};

class TextBox;

/// A keyboard that types into a bound text box. Caps lock is on at the start.
class OnScreenKeyboard : public ControlOfKind<OnScreenKeyboard> {
  public:
    using ControlOfKind::ControlOfKind;
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
