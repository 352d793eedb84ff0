#pragma once
#include "widgets/window.h"

#include <map>
#include <set>

namespace kova::test {

/// What a picture shows of a control, and the tabulator key finds, beside what scenarios print of it.
std::string look(Control& control);

/// A window as something that draws a control at each of its announcements would show it.
class Drawn {
  public:
    explicit Drawn(Window& window);
    /// Fails for each control that looks otherwise than it did and announced nothing.
    void expectUpToDate();

  private:
    Window& window_;
    std::map<Control*, std::string> looks_;
    std::set<Control*> announced_;
    std::vector<Connection> connections_;
};

} // namespace kova::test
