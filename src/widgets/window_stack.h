#pragma once
#include "widgets/window.h"

#include <vector>

namespace kova {

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
