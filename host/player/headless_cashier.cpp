#include "player/headless_cashier.h"

#include "widgets/button_grid.h"
#include "widgets/captioned_controls.h"
#include "widgets/keyboards.h"
#include "widgets/tab_control.h"
#include "widgets/window.h"

namespace kova {

Gesture HeadlessCashier::press(PushButton& button) {
    return button.press();
}

Gesture HeadlessCashier::touch(ButtonGrid& grid, const std::string& key) {
    return grid.touch(key);
}

Gesture HeadlessCashier::touchKey(NumericKeypad& keypad, const std::string& key) {
    return keypad.touchKey(key);
}

Gesture HeadlessCashier::touchKey(OnScreenKeyboard& keyboard, char32_t character) {
    return keyboard.touchKey(character);
}

Gesture HeadlessCashier::selectTab(TabControl& tabs, int index) {
    return tabs.touchTab(index);
}

Gesture HeadlessCashier::focus(Control& control) {
    return control.window().moveFocus(control);
}

Gesture HeadlessCashier::type(Window& window, char32_t character) {
    return window.typeCharacter(character);
}

void HeadlessCashier::requestClose(Window& window) {
    window.requestClose();
}

} // namespace kova
