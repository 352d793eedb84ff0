#pragma once
#include "widgets/window.h"

#include <map>

namespace kova::test {

/// What a picture shows of a control, and the tabulator key finds, beside what scenarios print of it.
std::string look(Control& control);

/// A window as a toolkit shows it that draws a control at each of its announcements, and at no other time.
class Drawn {
  public:
    explicit Drawn(Window& window);
    /// Fails for each control that looks otherwise than it was drawn.
    void expectUpToDate();

  private:
    Window& window_;
    std::map<Control*, std::string> looks_; ///< as drawn last
    std::vector<Connection> connections_;
};

} // namespace kova::test
