#include "player/control_description.h"

#include "player/trace.h"
#include "widgets/button_grid.h"
#include "widgets/captioned_controls.h"
#include "widgets/control.h"
#include "widgets/keyboards.h"
#include "widgets/tab_control.h"
#include "widgets/text_box.h"
#include "widgets/window.h"

namespace kova {
namespace {

/// Adds the attributes of a control's kind to its line.
class Attributes : public ControlVisitor {
  public:
    explicit Attributes(TraceLine& line) : line_(line) {}
    using ControlVisitor::visit;
    void visit(Window& window) override { captionAndBackground(window); }
    void visit(TabPage& page) override { captionAndBackground(page); }
    void visit(GroupFrame& frame) override { captionAndBackground(frame); }
    void visit(Label& label) override {
        line_.with("caption", label.caption()).with("foreColor", label.foreColor());
    }
    void visit(PushButton& button) override {
        line_.with("caption", button.caption())
            .with("tooltip", button.toolTip())
            .with("latched", button.latched())
            .with("backColor", button.backColor())
            .with("foreColor", button.foreColor());
    }
    void visit(TextBox& box) override {
        line_.with("text", box.text()).with("backColor", box.backColor()).with("foreColor", box.foreColor());
    }
    void visit(DateField& date) override { line_.with("text", date.text()); }
    void visit(ButtonGrid& grid) override { line_.with("backColor", grid.backColor()); }
    void visit(OnScreenKeyboard& keyboard) override { line_.with("backColor", keyboard.backColor()); }

  private:
    void captionAndBackground(const CaptionedControl& control) {
        line_.with("caption", control.caption()).with("backColor", control.backColor());
    }
    TraceLine& line_;
};

} // namespace

std::string describedControl(Control& control) {
    std::string name = "control " + control.name();
    if (control.index())
        name.append("[").append(traced(*control.index())).append("]");
    TraceLine line(name);
    line.with("visible", control.visible()).with("enabled", control.enabled()).with("rect", control.bounds());
    Attributes attributes(line);
    control.accept(attributes);
    return line.text();
}

void traceGrid(Trace& trace, const ButtonGrid& grid) {
    trace.add(TraceLine("grid " + grid.name())
                  .with("columns", grid.columns())
                  .with("rows", grid.rows())
                  .with("enabled", grid.enabled())
                  .with("backColor", grid.backColor())
                  .with("selectedColor", grid.selectedColor()));
    for (const auto& button : grid.buttons())
        trace.add(TraceLine("button")
                      .with("key", button.key)
                      .with("caption", button.caption)
                      .with("marked", button.marked)
                      .with("faceColor", button.faceColor)
                      .with("textColor", button.textColor));
}

} // namespace kova
