#include "widgets/control.h"

#include "widgets/window.h"

namespace kova {

Control::Control(Place place) : place_(std::move(place)) {
    if (place_.parent != nullptr)
        window().adopt(*this);
}

Window& Control::window() {
    Control* control = this;
    while (control->parent() != nullptr)
        control = control->parent();
    return static_cast<Window&>(*control); // only a window has no parent
}

void Control::setLeft(Twips left) {
    Rect changedBounds = bounds();
    changedBounds.left = left;
    setBounds(changedBounds);
}

void Control::setTop(Twips top) {
    Rect changedBounds = bounds();
    changedBounds.top = top;
    setBounds(changedBounds);
}

void Control::setWidth(Twips width) {
    Rect changedBounds = bounds();
    changedBounds.width = width;
    setBounds(changedBounds);
}

void Control::setHeight(Twips height) {
    Rect changedBounds = bounds();
    changedBounds.height = height;
    setBounds(changedBounds);
}

bool Control::shown() const {
    for (const Control* control = this; control != nullptr; control = control->parent()) {
        if (!control->visible())
            return false;
        if (control->parent() != nullptr && !control->parent()->showsChild(*control))
            return false;
    }
    return true;
}

Gesture Control::reach() const {
    if (!shown())
        return Gesture::Hidden;
    const Control* root = this;
    while (root->parent() != nullptr)
        root = root->parent();
    if (!enabled() || static_cast<const Window*>(root)->blocked())
        return Gesture::Disabled;
    return Gesture::Done;
}

Gesture Control::typeCharacter(char32_t) {
    return reach();
}

} // namespace kova
