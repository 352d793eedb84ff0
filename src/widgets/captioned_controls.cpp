#include "widgets/captioned_controls.h"

namespace kova {

Gesture PushButton::press() {
    const Gesture reached = reach();
    if (reached == Gesture::Done)
        pressed(); // may destroy this button
    return reached;
}

Gesture PushButton::typeCharacter(char32_t character) {
    return character == ' ' || character == '\n' || character == '\r' ? press() : reach();
}

} // namespace kova
