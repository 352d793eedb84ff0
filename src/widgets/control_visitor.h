#pragma once

namespace kova {

class Window;
class PushButton;
class Label;
class GroupFrame;
class PictureArea;
class TextBox;
class DateField;
class TabControl;
class TabPage;
class ButtonGrid;
class NumericKeypad;
class OnScreenKeyboard;
class ReportGrid;

/// Tells the kinds of control apart. The overloads do nothing by default.
class ControlVisitor {
  public:
    virtual ~ControlVisitor() = default;
    virtual void visit(Window&) {}
    virtual void visit(PushButton&) {}
    virtual void visit(Label&) {}
    virtual void visit(GroupFrame&) {}
    virtual void visit(PictureArea&) {}
    virtual void visit(TextBox&) {}
    virtual void visit(DateField&) {}
    virtual void visit(TabControl&) {}
    virtual void visit(TabPage&) {}
    virtual void visit(ButtonGrid&) {}
    virtual void visit(NumericKeypad&) {}
    virtual void visit(OnScreenKeyboard&) {}
    virtual void visit(ReportGrid&) {}
};

} // namespace kova
