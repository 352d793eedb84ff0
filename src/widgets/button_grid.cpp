#include "widgets/button_grid.h"

#include <algorithm>

namespace kova {

void ButtonGrid::clearButtons() {
    if (buttons_.empty())
        return;
    buttons_.clear();
    changed(Property::Buttons);
}

void ButtonGrid::addButton(const std::string& key, const std::string& caption, Color face, Color text,
                           const std::string& picture) {
    buttons_.push_back({key, caption, face, text, picture});
    changed(Property::Buttons);
}

void ButtonGrid::clearSelection() {
    bool any = false;
    for (auto& button : buttons_)
        any |= std::exchange(button.marked, false);
    if (any)
        changed(Property::Marks);
}

void ButtonGrid::selectButton(const std::string& key, bool marked) {
    const auto button = std::ranges::find(buttons_, key, &Button::key);
    if (button == buttons_.end() || button->marked == marked)
        return;
    button->marked = marked;
    changed(Property::Marks);
}

const ButtonGrid::Button* ButtonGrid::find(const std::string& key) const {
    const auto button = std::ranges::find(buttons_, key, &Button::key);
    return button == buttons_.end() ? nullptr : &*button;
}

Gesture ButtonGrid::touch(const std::string& key) {
    const Gesture reached = reach();
    if (reached != Gesture::Done)
        return reached;
    // The handler may rebuild the grid that the key came from.
    const std::string touched = key; // NOLINT(performance-unnecessary-copy-initialization)
    buttonClick(touched);
    return reached;
}

} // namespace kova
