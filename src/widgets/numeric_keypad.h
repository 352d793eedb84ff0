#pragma once
#include "widgets/control.h"
#include "widgets/read_back.h"

#include <vector>

namespace kova {

/// A pad of number keys. It holds no text: each touched key is reported.
class NumericKeypad : public Control {
  public:
    using Control::Control;
    void accept(ControlVisitor& visitor) override;
    /// Rows of key texts from the top, three keys a row.
    static const std::vector<std::vector<std::string>>& keys();
    /// `key` may be a text that no drawn key carries (as from an external pad).
    Gesture touchKey(const std::string& key);
    /// What the key "." enters, for a rendering to show on it.
    [[nodiscard]] const std::string& decimalMark() const { return decimalMark_; }
    void setDecimalMark(const std::string& mark) { assign(decimalMark_, mark, Property::Caption); }
    /// What its keys typed, for a rendering to show above them; a pad may have none. It must outlive the pad.
    [[nodiscard]] ReadBack* readBack() const { return readBack_; }
    void setReadBack(ReadBack& readBack) { readBack_ = &readBack; }
    Signal<std::string&> Keyboard;

  private:
    ReadBack* readBack_ = nullptr;
    std::string decimalMark_ = ",";
};

} // namespace kova
