#include "widgets/text_box.h"

#include "base/utf8.h"
#include "widgets/window.h"

namespace kova {
namespace {

constexpr char32_t Backspace = 8;
constexpr char32_t LineFeed = 10;
constexpr char32_t CarriageReturn = 13;
constexpr char32_t FirstPrintable = 32;
constexpr char32_t Delete = 127;

} // namespace

void TextBox::setText(const std::string& text) {
    selectionStart_ = selectionEnd_ = text.size();
    assign(text_, text, Property::Text);
}

Gesture TextBox::reach() const {
    const Gesture reached = Control::reach();
    return reached == Gesture::Done && (locked_ || inert_) ? Gesture::Locked : reached;
}

Gesture TextBox::typeCharacter(char32_t character) {
    const Gesture reached = reach();
    if (reached == Gesture::Done)
        edit(filter(character));
    return reached;
}

void TextBox::insertFromKeyboard(char32_t character) {
    if (!locked_)
        edit(filter(character));
}

Gesture TextBox::paste(const std::string& text) {
    const Gesture reached = reach();
    if (reached == Gesture::Done)
        setText(text);
    return reached;
}

char32_t TextBox::filter(char32_t character) const {
    keyPress(character);
    return character;
}

void TextBox::adoptEdit(const std::string& text, std::size_t start, std::size_t end) {
    selectionStart_ = start;
    selectionEnd_ = end;
    assign(text_, text, Property::Text);
}

void TextBox::select(std::size_t start, std::size_t end) {
    selectionStart_ = std::min(start, text_.size());
    selectionEnd_ = std::min(std::max(start, end), text_.size());
}

void TextBox::edit(char32_t character) {
    std::string text = text_;
    std::size_t start = selectionStart_;
    std::size_t end = selectionEnd_;
    std::string inserted;
    if (character == Backspace) {
        if (start == end)
            start = previousCharacter(text, start);
    } else if (character == LineFeed || character == CarriageReturn) {
        if (!multiLine())
            return;
        inserted = "\n";
    } else if (character < FirstPrintable || character == Delete) {
        return;
    } else {
        appendUtf8(inserted, character);
    }
    text.replace(start, end - start, inserted);
    selectionStart_ = selectionEnd_ = start + inserted.size();
    assign(text_, text, Property::Text);
}

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
