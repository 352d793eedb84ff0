#include "adapters/qt/backdrop.h"

#include "adapters/qt/look.h"
#include "widgets/captioned_controls.h"
#include "widgets/control.h"
#include "widgets/tab_control.h"
#include "widgets/window.h"

#include <optional>

namespace kova {
namespace {

class BackgroundOf : public ControlVisitor {
  public:
    void visit(Window& window) override { color = look::toQt(window.backColor()); }
    void visit(TabPage& page) override { color = look::toQt(page.backColor()); }
    void visit(GroupFrame& frame) override { color = look::toQt(frame.backColor()); }
    std::optional<QColor> color;
};

} // namespace

QColor backdropOf(const Control& control) {
    BackgroundOf background;
    for (Control* parent = control.parent(); parent != nullptr && !background.color;
         parent = parent->parent())
        parent->accept(background);
    return background.color.value_or(QColor(Qt::white));
}

} // namespace kova
