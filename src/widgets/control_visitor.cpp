#include "widgets/control_visitor.h"

#include "widgets/button_grid.h"
#include "widgets/date_field.h"
#include "widgets/labels.h"
#include "widgets/numeric_keypad.h"
#include "widgets/on_screen_keyboard.h"
#include "widgets/push_button.h"
#include "widgets/report_grid.h"
#include "widgets/tab_control.h"
#include "widgets/text_box.h"
#include "widgets/window.h"

namespace kova {

void Window::accept(ControlVisitor& visitor) {
    visitor.visit(*this);
}
void PushButton::accept(ControlVisitor& visitor) {
    visitor.visit(*this);
}
void Label::accept(ControlVisitor& visitor) {
    visitor.visit(*this);
}
void GroupFrame::accept(ControlVisitor& visitor) {
    visitor.visit(*this);
}
void PictureArea::accept(ControlVisitor& visitor) {
    visitor.visit(*this);
}
void TextBox::accept(ControlVisitor& visitor) {
    visitor.visit(*this);
}
void DateField::accept(ControlVisitor& visitor) {
    visitor.visit(*this);
}
void TabControl::accept(ControlVisitor& visitor) {
    visitor.visit(*this);
}
void TabPage::accept(ControlVisitor& visitor) {
    visitor.visit(*this);
}
void ButtonGrid::accept(ControlVisitor& visitor) {
    visitor.visit(*this);
}
void NumericKeypad::accept(ControlVisitor& visitor) {
    visitor.visit(*this);
}
void OnScreenKeyboard::accept(ControlVisitor& visitor) {
    visitor.visit(*this);
}
void ReportGrid::accept(ControlVisitor& visitor) {
    visitor.visit(*this);
}

} // namespace kova
