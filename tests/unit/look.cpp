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

  private:
    void font(std::string_view name, const Font& font) {
        line_.with(name, font.face).then(font.points).then(font.bold);
    }
    void written(const auto& control) {
        font("font", control.font());
        line_.with("alignment", static_cast<int>(control.alignment()));
    }
    TraceLine& line_;
};

/// What changes while a window is used, and no trace prints.
class Contents : public ControlVisitor {
  public:
    explicit Contents(TraceLine& line) : line_(line) {}
    using ControlVisitor::visit;
    void visit(ReportGrid& list) override {
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
        line_.then(grid.columns()).then(grid.rows());
        for (const auto& button : grid.buttons())
            line_.then(button.key).then(button.caption).then(button.marked);
    }
    void visit(TabControl& tabs) override { line_.then(tabs.selected()); }
    void visit(OnScreenKeyboard& keyboard) override { line_.then(keyboard.capsLock()); }

  private:
    TraceLine& line_;
};

std::string lookAndContents(Control& control) {
    TraceLine line(describedControl(control));
    Look look(line);
    control.accept(look);
    Contents contents(line);
    control.accept(contents);
    return line.text();
}

} // namespace

std::string look(Control& control) {
    TraceLine line(describedControl(control));
    Look look(line);
    control.accept(look);
    if (const auto* const box = dynamic_cast<TextBox*>(&control))
        line.with("tabStop", box->tabStop());
    if (const auto* const grid = dynamic_cast<ButtonGrid*>(&control))
        line.with("animated", grid->animated());
    return line.text();
}

Drawn::Drawn(Window& window) : window_(window) {
    for (Control* const control : window.controls()) {
        const auto draw = [&drawn = looks_[control], control] { drawn = lookAndContents(*control); };
        draw();
        connections_.push_back(control->changed.connect([draw](Property) { draw(); }));
    }
}

void Drawn::expectUpToDate() {
    for (const auto& [control, drawn] : looks_)
        EXPECT_EQ(lookAndContents(*control), drawn) << "a change without announcement in " << window_.name();
}

} // namespace kova::test
