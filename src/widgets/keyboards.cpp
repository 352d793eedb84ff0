#include "widgets/keyboards.h"

#include "base/utf8.h"
#include "widgets/text_box.h"

#include <algorithm>

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

const std::vector<std::u32string>& OnScreenKeyboard::rows() {
    static const std::vector<std::u32string> layout{
        U"1234567890'+-\x08", U"qwertyuiopèü€", U"asdfghjklòàäö#", U"zxcvbnm,.ìùéß\n", U"@!?\"%&/()=*:;_ ",
    };
    return layout;
}

bool OnScreenKeyboard::hasKey(char32_t character) {
    const char32_t wanted = lowerCase(character);
    return std::ranges::any_of(rows(), [&](const auto& row) { return row.find(wanted) != row.npos; });
}

char32_t OnScreenKeyboard::shown(char32_t key) const {
    return capsLock_ ? upperCase(key) : lowerCase(key);
}

Gesture OnScreenKeyboard::toggleCapsLock() {
    const Gesture reached = reach();
    if (reached == Gesture::Done)
        assign(capsLock_, !capsLock_, Property::CapsLock);
    return reached;
}

Gesture OnScreenKeyboard::touchKey(char32_t character) {
    const Gesture reached = reach();
    if (reached == Gesture::Done && target_ != nullptr)
        target_->insertFromKeyboard(shown(character));
    return reached;
}

} // namespace kova
