#pragma once
#include "widgets/control.h"

#include <chrono>
#include <string>

namespace kova {

class ButtonGrid;
class NumericKeypad;
class OnScreenKeyboard;
class PushButton;
class TabControl;

/// A cashier's hands on one user interface: each operation is one gesture and returns when its event has been
/// handled, nested modal windows included. A gesture that could not reach its control did nothing and says
/// why.
class Cashier {
  public:
    virtual ~Cashier() = default;
    virtual Gesture press(PushButton& button) = 0;
    /// The grid must have a button with that key.
    virtual Gesture touch(ButtonGrid& grid, const std::string& key) = 0;
    virtual Gesture touchKey(NumericKeypad& keypad, const std::string& key) = 0;
    /// The keyboard must have a key for the character.
    virtual Gesture touchKey(OnScreenKeyboard& keyboard, char32_t character) = 0;
    virtual Gesture selectTab(TabControl& tabs, int index) = 0;
    virtual Gesture focus(Control& control) = 0;
    /// Types one character at the window's focus, which need not exist.
    virtual Gesture type(Window& window, char32_t character) = 0;
    virtual void requestClose(Window& window) = 0;
    /// Lets time pass; timers that fall due tick in order.
    virtual void wait(std::chrono::milliseconds time) = 0;
    /// Writes a PNG of the window where it is drawn, and nothing elsewhere. Throws Error when the file cannot
    /// be written.
    virtual void screenshot(Window& window, const std::string& file) = 0;
};

} // namespace kova
