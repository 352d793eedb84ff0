#include "widgets/date_field.h"

#include "base/utf8.h"

namespace kova {

Gesture DateField::paste(const std::string& text) {
    const Gesture reached = reach();
    if (reached == Gesture::Done)
        setText(text);
    return reached;
}

Gesture DateField::typeCharacter(char32_t character) {
    const Gesture reached = reach();
    if (reached != Gesture::Done)
        return reached;
    std::string edited = text_;
    if (character == 8)
        edited.erase(previousCharacter(edited, edited.size()));
    else if (character >= 32 && character != 127)
        appendUtf8(edited, character);
    setText(edited);
    return reached;
}

} // namespace kova
