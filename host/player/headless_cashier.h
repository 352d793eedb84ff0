#pragma once
#include "adapters/headless/headless.h"
#include "player/cashier.h"

namespace kova {

/// A cashier without a screen: each gesture goes straight to the model, and waiting is virtual.
class HeadlessCashier final : public Cashier {
  public:
    /// The loop outlives the cashier.
    explicit HeadlessCashier(HeadlessEventLoop& loop) : loop_(loop) {}
    Gesture press(PushButton& button) override;
    Gesture touch(ButtonGrid& grid, const std::string& key) override;
    Gesture touchKey(NumericKeypad& keypad, const std::string& key) override;
    Gesture touchKey(OnScreenKeyboard& keyboard, char32_t character) override;
    Gesture selectTab(TabControl& tabs, int index) override;
    Gesture focus(Control& control) override;
    Gesture type(Window& window, char32_t character) override;
    void requestClose(Window& window) override;
    void wait(std::chrono::milliseconds time) override { loop_.advance(time); }
    void screenshot(Window&, const std::string&) override {}

  private:
    HeadlessEventLoop& loop_;
};

} // namespace kova
