#pragma once
#include "player/cashier.h"

#include <memory>
#include <optional>

class QWidget;

namespace kova {

class QtUserInterface;
class Recording;
class SteppedEventLoop;
struct TouchPoint;

/// A cashier in front of real windows: touches are mouse events at the place where the widget is drawn, keys
/// are key events to the widget that has the keyboard.
class QtCashier final : public Cashier {
  public:
    /// What is seen meanwhile goes to `recording`, if there is one.
    QtCashier(SteppedEventLoop& loop, QtUserInterface& userInterface, Recording* recording = nullptr)
        : loop_(loop), userInterface_(userInterface), recording_(recording) {}

    Gesture press(PushButton& button) override;
    Gesture touch(ButtonGrid& grid, const std::string& key) override;
    Gesture touchKey(NumericKeypad& keypad, const std::string& key) override;
    Gesture touchKey(OnScreenKeyboard& keyboard, char32_t character) override;
    Gesture selectTab(TabControl& tabs, int index) override;
    Gesture focus(Control& control) override;
    Gesture type(Window& window, char32_t character) override;
    void requestClose(Window& window) override;
    void wait(std::chrono::milliseconds time) override;
    void screenshot(Window& window, const std::string& file) override;

  private:
    template <class WithoutDrawing>
    Gesture touchPart(Control& control, const std::optional<std::string>& part, WithoutDrawing touchModel);
    Gesture typeToWindow(Window& window, char32_t character);
    template <class Body>
    void carryOut(Body body);
    void record(std::chrono::milliseconds time, const TouchPoint* finger = nullptr);
    SteppedEventLoop& loop_;
    QtUserInterface& userInterface_;
    Recording* recording_;
};

} // namespace kova
