#include "widgets/window_stack.h"

#include <algorithm>

namespace kova {

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
