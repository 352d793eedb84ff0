#pragma once
#include "widgets/control.h"

#include <vector>

namespace kova {

/// A pad of number keys. It holds no text: each touched key is reported.
class NumericKeypad : public Control {
  public:
    using Control::Control;
    void accept(ControlVisitor& visitor) override;
    /// Rows of key texts from the top, four keys a row.
    static const std::vector<std::vector<std::string>>& keys();
    /// `key` may be a text that no drawn key carries (as from an external pad).
    Gesture touchKey(const std::string& key);
    Signal<std::string&> Keyboard;
};

} // namespace kova
