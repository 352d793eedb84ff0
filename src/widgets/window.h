#pragma once
#include "widgets/control.h"

#include <string_view>
#include <vector>

namespace kova {

class ButtonGrid;
class PageNotice;
class PushButton;
class TextBox;

/// What the keys of a physical keyboard stand for in a window, besides typing at the focus. Each may be
/// missing, and does nothing while its control cannot be reached.
struct KeyTargets {
    TextBox* entry = nullptr;           ///< digits and the decimal separator
    PushButton* confirm = nullptr;      ///< Enter
    std::vector<PushButton*> close;     ///< Escape: the first that can be reached
    ButtonGrid* functionKeys = nullptr; ///< F2 and on
};

/// How urgent a window's message is; for sounds and assistive technology, it changes no picture.
enum class Severity : std::int32_t { None = 0, Critical = 16, Information = 64 };

/// A window's model: title, background and the controls in it. Not visible until shown. It owns no control
/// and draws nothing; `WindowStack` decides which window is the active one.
class Window : public ControlOfKind<Window, CaptionedControl> {
  public:
    Window(std::string name, std::string title, const Rect& bounds)
        : ControlOfKind({nullptr, std::move(name), bounds}, std::move(title), colors::White) {
        setVisible(false);
    }

    /// Controls in order of creation, which is the order of tabbing.
    [[nodiscard]] const std::vector<Control*>& controls() const { return controls_; }
    /// Letter case aside; the window's own name gives the window. Null when there is none.
    [[nodiscard]] Control* find(std::string_view name, std::optional<int> index = std::nullopt);

    [[nodiscard]] bool modal() const { return modal_; }
    void setModal(bool modal) { modal_ = modal; }
    /// Whether a modal window lies above it, so that it receives no input.
    [[nodiscard]] bool blocked() const { return blocked_; }
    void setBlocked(bool blocked) { assign(blocked_, blocked, Property::Enabled); }

    [[nodiscard]] Control* focus() const { return focus_; }
    /// The gesture that gives a control the keyboard; a locked text box takes it too, an inert one does not.
    Gesture moveFocus(Control& control);
    /// Where the focus is to be when the window is shown first; says nothing.
    void setInitialFocus(Control& control) { focus_ = &control; }

    /// Whether the window takes every key of the physical keyboard itself, so that no control sees one.
    [[nodiscard]] bool takesKeys() const { return takesKeys_; }
    void setTakesKeys(bool takes) { takesKeys_ = takes; }
    /// A character key: for the window itself, or for the control with the focus, which need not exist.
    Gesture typeCharacter(char32_t character) override;
    Signal<char32_t> keyPress; ///< a character that the window takes itself

    /// For a rendering with a physical keyboard.
    [[nodiscard]] const KeyTargets& keyTargets() const { return keyTargets_; }
    void setKeyTargets(KeyTargets targets) { keyTargets_ = std::move(targets); }

    /// Shown over the window's controls; a window may have none. It must outlive the window's view.
    [[nodiscard]] PageNotice* notice() const { return notice_; }
    void setNotice(PageNotice& notice) { notice_ = &notice; }

    /// Where its lists are saved without asking; empty where a person is to choose. UTF-8.
    [[nodiscard]] const std::string& saveFolder() const { return saveFolder_; }
    void setSaveFolder(std::string folder) { saveFolder_ = std::move(folder); }

    /// The operating system's request to close, as by the title bar or a log-off.
    void requestClose() { closeRequested(); }

    [[nodiscard]] Severity severity() const { return severity_; }
    void setSeverity(Severity severity) { severity_ = severity; }

    /// A control of another window that this one should not cover where it is shown next; null for none. It
    /// must live until then.
    [[nodiscard]] const Control* keptInSight() const { return keptInSight_; }
    void keepInSight(const Control* control) { keptInSight_ = control; }

    Signal<> activated; ///< it has come to the front as the active window
    Signal<> closeRequested;

  private:
    friend class Control;
    void adopt(Control& control) { controls_.push_back(&control); }
    std::vector<Control*> controls_;
    Control* focus_ = nullptr;
    KeyTargets keyTargets_;
    PageNotice* notice_ = nullptr;
    const Control* keptInSight_ = nullptr;
    std::string saveFolder_;
    bool modal_ = false;
    bool blocked_ = false;
    bool takesKeys_ = false;
    Severity severity_ = Severity::None;
};

/// The windows on the screen, from back to front; the last is the active one.
class WindowStack {
  public:
    /// Makes the window visible, in front, and activates it. One that is there already comes to the front.
    void show(Window& window, bool modal);
    /// Takes the window off the screen; the one below becomes active. A window that is not shown is no error.
    void remove(Window& window);
    [[nodiscard]] Window* active() const { return windows_.empty() ? nullptr : windows_.back(); }
    [[nodiscard]] const std::vector<Window*>& windows() const { return windows_; }

  private:
    void updateBlocked();
    std::vector<Window*> windows_;
};

} // namespace kova
