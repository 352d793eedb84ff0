#pragma once
#include "widgets/control.h"

#include <chrono>
#include <memory>
#include <string>

namespace kova {

class ButtonGrid;
class EventLoop;
class NumericKeypad;
class OnScreenKeyboard;
class PushButton;
class TabControl;
class UserInterface;
struct HostOptions;
struct RegionalSettings;

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

/// One user interface for a script, with a cashier who works on it.
class Stage {
  public:
    virtual ~Stage() = default;
    virtual EventLoop& eventLoop() = 0;
    virtual UserInterface& userInterface() = 0;
    virtual Cashier& cashier() = 0;
};

/// Widget models alone, on virtual time.
std::unique_ptr<Stage> makeHeadlessStage();
/// Real windows, whose time passes in the cashier's waits alone. Only in builds with Qt. The settings outlive
/// the stage. Takes from the options the size of the windows, the screen's without it, and the folder for
/// pictures.
std::unique_ptr<Stage> makeQtStage(const RegionalSettings& regional, const HostOptions& options);

} // namespace kova
