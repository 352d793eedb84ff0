#include "player/trace.h"

#include "widgets/button_grid.h"
#include "widgets/captioned_controls.h"
#include "widgets/control.h"
#include "widgets/keyboards.h"
#include "widgets/tab_control.h"
#include "widgets/text_box.h"
#include "widgets/window.h"

#include <array>
#include <charconv>
#include <cmath>

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

std::string traced(std::string_view text) {
    std::string result = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\')
            (result += '\\') += c;
        else if (c == '\n')
            result += "\\n";
        else if (c == '\r')
            result += "\\r";
        else if (c == '\t')
            result += "\\t";
        else
            result += c;
    }
    return result + '"';
}

std::string traced(double number) {
    // An exponent only where writing the digits out would hide more than it shows.
    const double size = std::fabs(number);
    const bool writtenOut = size == 0 || (size >= 1e-6 && size < 1e21);
    const auto format = writtenOut ? std::chars_format::fixed : std::chars_format::scientific;
    std::array<char, 64> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, format).ptr;
    return {buffer.data(), end};
}

std::string traced(const Rect& rect) {
    return traced(rect.left.count) + "," + traced(rect.top.count) + "," + traced(rect.width.count) + "," +
           traced(rect.height.count);
}

std::string traced(Color color) {
    return traced(color.toInteger());
}

std::string tracedVariant(const Variant& value) {
    return std::visit(
        [](const auto& held) -> std::string {
            using Held = std::decay_t<decltype(held)>;
            if constexpr (std::is_arithmetic_v<Held> || std::same_as<Held, std::string>)
                return traced(held);
            else
                return {};
        },
        value);
}

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
