#include "adapters/qt/control_view.h"

#include "adapters/qt/button_grid_view.h"
#include "adapters/qt/buttons.h"
#include "adapters/qt/date_field_view.h"
#include "adapters/qt/keyboard_views.h"
#include "adapters/qt/report_grid_view.h"
#include "adapters/qt/static_views.h"
#include "adapters/qt/tab_control_view.h"
#include "adapters/qt/text_box_view.h"
#include "widgets/control.h"

namespace kova {
namespace {

class Factory : public ControlVisitor {
  public:
    Factory(WindowFrame& frame, QWidget& parent) : frame_(frame), parent_(parent) {}
    void visit(PushButton& button) override { made = new PushButtonView(button, frame_, parent_); }
    void visit(Label& label) override { made = new LabelView(label, frame_, parent_); }
    void visit(GroupFrame& group) override { made = new GroupFrameView(group, frame_, parent_); }
    void visit(PictureArea& picture) override { made = new PictureAreaView(picture, frame_, parent_); }
    void visit(TextBox& box) override { made = makeTextBoxView(box, frame_, parent_); }
    void visit(DateField& field) override { made = new DateFieldView(field, frame_, parent_); }
    void visit(TabControl& tabs) override { made = new TabControlView(tabs, frame_, parent_); }
    void visit(TabPage& page) override { made = new TabPageView(page, frame_, parent_); }
    void visit(ButtonGrid& grid) override { made = new ButtonGridView(grid, frame_, parent_); }
    void visit(NumericKeypad& keypad) override { made = new NumericKeypadView(keypad, frame_, parent_); }
    void visit(OnScreenKeyboard& keyboard) override {
        made = new OnScreenKeyboardView(keyboard, frame_, parent_);
    }
    void visit(ReportGrid& grid) override { made = new ReportGridView(grid, frame_, parent_); }
    ControlView* made = nullptr;

  private:
    WindowFrame& frame_;
    QWidget& parent_;
};

} // namespace

ControlView* makeView(Control& control, WindowFrame& frame, QWidget& parent) {
    Factory factory(frame, parent);
    control.accept(factory);
    return factory.made;
}

} // namespace kova
