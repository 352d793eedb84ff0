#include "widgets/numeric_keypad.h"

namespace kova {

const std::vector<std::vector<std::string>>& NumericKeypad::keys() {
    static const std::vector<std::vector<std::string>> layout{
        {"7", "8", "9"}, {"4", "5", "6"}, {"1", "2", "3"}, {"0", ".", "BACKSPACE"}};
    return layout;
}

Gesture NumericKeypad::touchKey(const std::string& key) {
    const Gesture reached = reach();
    if (reached != Gesture::Done)
        return reached;
    std::string touched = key;
    Keyboard(touched);
    return reached;
}

} // namespace kova
