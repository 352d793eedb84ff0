#include "widgets/window.h"

#include "base/ascii_text.h"

#include <algorithm>

namespace kova {

Control* Window::find(std::string_view wanted, std::optional<int> wantedIndex) {
    if (equalIgnoringCase(name(), wanted) && !wantedIndex)
        return this;
    const auto found = std::ranges::find_if(controls_, [&](const Control* control) {
        return equalIgnoringCase(control->name(), wanted) && control->index() == wantedIndex;
    });
    return found == controls_.end() ? nullptr : *found;
}

Gesture Window::moveFocus(Control& control) {
    const Gesture reached = control.reach();
    if (reached == Gesture::Hidden || reached == Gesture::Disabled || !control.takesFocus())
        return reached;
    assign(focus_, &control, Property::Focus);
    control.gotFocus();
    return Gesture::Done;
}

Gesture Window::typeCharacter(char32_t character) {
    if (!takesKeys_)
        return focus_ == nullptr ? Gesture::Done : focus_->typeCharacter(character);
    const Gesture reached = reach();
    if (reached == Gesture::Done)
        keyPress(character);
    return reached;
}

void WindowStack::show(Window& window, bool modal) {
    std::erase(windows_, &window);
    windows_.push_back(&window);
    window.setModal(modal);
    updateBlocked();
    window.setVisible(true);
    window.activated();
}

void WindowStack::remove(Window& window) {
    const bool wasActive = active() == &window;
    if (std::erase(windows_, &window) == 0)
        return;
    updateBlocked();
    window.setVisible(false);
    if (wasActive && active() != nullptr)
        active()->activated();
}

void WindowStack::updateBlocked() {
    bool blocked = false;
    for (auto window = windows_.rbegin(); window != windows_.rend(); ++window) {
        (*window)->setBlocked(blocked);
        blocked = blocked || (*window)->modal();
    }
}

} // namespace kova
