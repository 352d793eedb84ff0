#include "widgets/window.h"

#include <algorithm>

namespace kova {
namespace {

char lowered(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool sameName(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return lowered(x) == lowered(y); });
}

} // namespace

Control* Window::find(std::string_view wanted, std::optional<int> wantedIndex) {
    if (sameName(name(), wanted) && !wantedIndex)
        return this;
    const auto found = std::ranges::find_if(controls_, [&](const Control* control) {
        return sameName(control->name(), wanted) && control->index() == wantedIndex;
    });
    return found == controls_.end() ? nullptr : *found;
}

Gesture Window::moveFocus(Control& control) {
    const Gesture reached = control.reach();
    if (reached == Gesture::Hidden || reached == Gesture::Disabled)
        return reached;
    assign(focus_, &control, Property::Focus);
    control.gotFocus();
    return Gesture::Done;
}

} // namespace kova
