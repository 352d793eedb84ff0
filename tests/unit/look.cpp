#include "look.h"

#include "player/trace.h"
#include "test_world.h"

#include <gtest/gtest.h>

namespace kova::test {
namespace {

class Look : public ControlVisitor {
  public:
    explicit Look(TraceLine& line) : line_(line) {}
    using ControlVisitor::visit;
    void visit(Label& label) override { written(label); }
    void visit(PushButton& button) override {
        font("font", button.font());
        line_.with("icon", static_cast<int>(button.icon())).with("ownColors", button.ownColors());
    }
    void visit(TextBox& box) override {
        written(box);
        line_.with("multiLine", box.multiLine()).with("locked", box.locked());
    }
    void visit(ReportGrid& list) override {
        font("headers", list.headerFont());
        font("rows", list.rowFont());
        const auto& menu = list.menuTexts();
        line_.then(menu.copy).then(menu.selectAll).then(menu.save).then(list.brokenOffText());
    }
    void visit(ButtonGrid& grid) override {
        line_.with("wrapped", grid.captionsWrapped()).with("equalFonts", grid.equalFonts());
    }
    void visit(NumericKeypad& pad) override { line_.with("decimalMark", pad.decimalMark()); }

  protected:
    TraceLine& line_;

  private:
    void font(std::string_view name, const Font& font) {
        line_.with(name, font.face).then(font.points).then(font.bold);
    }
    void written(const auto& control) {
        font("font", control.font());
        line_.with("alignment", static_cast<int>(control.alignment()));
    }
};

/// And what changes while a window is used, which no trace prints.
class LookAndContents : public Look {
  public:
    using Look::Look, Look::visit;
    void visit(ReportGrid& list) override {
        Look::visit(list);
        for (const auto& column : list.columns())
            line_.then(column.caption).then(column.width);
        for (const auto& row : list.rows())
            line_.then(row.record).then(row.group);
        for (const std::size_t record : list.selectedRecords())
            line_.with("selected", static_cast<int>(record));
        line_.then(list.written(list.totals())).then(list.emptyText()).then(list.groupHint());
        line_.then(static_cast<int>(list.sortDirection())).then(list.brokenOff());
    }
    void visit(ButtonGrid& grid) override {
        Look::visit(grid);
        line_.then(grid.columns()).then(grid.rows());
        for (const auto& button : grid.buttons())
            line_.then(button.key).then(button.caption).then(button.marked);
    }
    void visit(TabControl& tabs) override { line_.then(tabs.selected()); }
    void visit(OnScreenKeyboard& keyboard) override { line_.then(keyboard.capsLock()); }
};

template <class Visitor>
TraceLine printed(Control& control) {
    TraceLine line(describedControl(control));
    Visitor visitor(line);
    control.accept(visitor);
    return line;
}

} // namespace

std::string look(Control& control) {
    TraceLine line = printed<Look>(control);
    if (const auto* const box = dynamic_cast<TextBox*>(&control))
        line.with("tabStop", box->tabStop());
    if (const auto* const grid = dynamic_cast<ButtonGrid*>(&control))
        line.with("animated", grid->animated());
    return line.text();
}

Drawn::Drawn(Window& window) : window_(window) {
    for (Control* const control : window.controls()) {
        const auto draw = [&drawn = looks_[control], control] {
            drawn = printed<LookAndContents>(*control).text();
        };
        draw();
        connections_.push_back(control->changed.connect([draw](Property) { draw(); }));
    }
}

void Drawn::expectUpToDate() {
    for (const auto& [control, drawn] : looks_)
        EXPECT_EQ(printed<LookAndContents>(*control).text(), drawn)
            << "a change without announcement in " << window_.name();
}

} // namespace kova::test
