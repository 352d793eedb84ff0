#include "player/headless_cashier.h"

#include "widgets/button_grid.h"
#include "widgets/captioned_controls.h"
#include "widgets/keyboards.h"
#include "widgets/tab_control.h"
#include "widgets/window.h"

namespace kova {
namespace {

class HeadlessStage final : public Stage {
  public:
    EventLoop& eventLoop() override { return loop_; }
    UserInterface& userInterface() override { return userInterface_; }
    Cashier& cashier() override { return cashier_; }

  private:
    HeadlessEventLoop loop_;
    HeadlessUserInterface userInterface_{[](Window&) {}}; // a script plays its modal loops itself
    HeadlessCashier cashier_{loop_};
};

} // namespace

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

std::unique_ptr<Stage> makeHeadlessStage() {
    return std::make_unique<HeadlessStage>();
}

} // namespace kova
