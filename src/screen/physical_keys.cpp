#include "screen/physical_keys.h"

#include "screen/spoken_name.h"
#include "widgets/button_grid.h"
#include "widgets/captioned_controls.h"
#include "widgets/keyboards.h"
#include "widgets/tab_control.h"
#include "widgets/text_box.h"
#include "widgets/window.h"

#include <algorithm>
#include <utility>

namespace kova {
namespace {

using namespace std::chrono_literals;

// A scanner ends what it types with Enter, which must not send a bar code as an amount.
constexpr auto ScannerPause = 30ms; // at most, from key to key
constexpr int ScannerKeys = 6;      // at least, before its Enter

constexpr int FirstOfGrid = 2; // F2: F1 is for help
constexpr std::size_t KeysOfGrid = 11;

enum class Focus { Elsewhere, Button, Line, Note };

class FocusKind : public ControlVisitor {
  public:
    void visit(PushButton&) override { kind = Focus::Button; }
    void visit(TextBox& box) override { kind = box.multiLine() ? Focus::Note : Focus::Line; }
    void visit(DateField&) override { kind = Focus::Line; }
    Focus kind = Focus::Elsewhere;
};

Focus focusOf(const Window& window) {
    FocusKind found;
    if (isReachable(window.focus()))
        window.focus()->accept(found);
    return found.kind;
}

PushButton* closeButton(const Window& window) {
    const auto& buttons = window.keyTargets().close;
    const auto found = std::ranges::find_if(buttons, isReachable);
    return found == buttons.end() ? nullptr : *found;
}

KeyMeaning pressIfReachable(PushButton* button) {
    if (!isReachable(button))
        return key_meaning::Ordinary{};
    return key_meaning::Press{*button};
}

/// The grid's buttons from F2 on, then the same keys with Shift.
KeyMeaning meaningOfFunctionKey(const Window& window, const KeyStroke& stroke) {
    ButtonGrid* const grid = window.keyTargets().functionKeys;
    const auto index =
        static_cast<std::size_t>(stroke.number - FirstOfGrid) + (stroke.shift ? KeysOfGrid : 0);
    if (stroke.repeated || !isReachable(grid) || index >= grid->buttons().size())
        return key_meaning::Ordinary{};
    return key_meaning::Touch{*grid, grid->buttons()[index].key};
}

bool isOfAmounts(char32_t character) {
    return character == ',' || character == '.' || (character >= '0' && character <= '9');
}

class TakesTabulator : public ControlVisitor {
  public:
    void visit(PushButton&) override { takes = true; }
    void visit(DateField&) override { takes = true; }
    void visit(TabControl&) override { takes = true; }
    void visit(TextBox& box) override { takes = box.tabStop(); }
    void visit(ButtonGrid& grid) override { takes = !grid.buttons().empty(); }
    void visit(ReportGrid&) override { takes = true; }
    bool takes = false;
};

bool isTabStop(Control& control) {
    TakesTabulator visitor;
    control.accept(visitor);
    return visitor.takes && isReachable(&control);
}

/// What the arrow keys choose in, and what the decimal key enters.
class PartsOfWindow : public ControlVisitor {
  public:
    explicit PartsOfWindow(const Wording& words) : words_(words) {}
    void visit(NumericKeypad& keypad) override { decimalMark = keypad.decimalMark(); }
    void visit(ButtonGrid& grid) override {
        if (isReachable(&grid) && !grid.buttons().empty())
            grids += (grids.empty() ? "" : ", ") + spokenNameOf(grid, words_);
    }
    void visit(ReportGrid& grid) override {
        if (isReachable(&grid))
            list = spokenNameOf(grid, words_);
    }
    std::string grids;
    std::string list;
    std::string decimalMark = ",";

  private:
    const Wording& words_;
};

void addFunctionKeys(std::vector<KeyHelpLine>& lines, const ButtonGrid& grid) {
    const auto& buttons = grid.buttons();
    for (std::size_t i = 0; i < std::min(buttons.size(), KeysOfGrid); ++i) {
        const std::string key = "F" + std::to_string(i + FirstOfGrid);
        KeyHelpLine& line = lines.emplace_back(KeyHelpLine{key, buttons[i].caption, {}, {}});
        if (i + KeysOfGrid < buttons.size()) {
            line.shiftedKey = "⇧ " + key;
            line.shiftedMeaning = buttons[i + KeysOfGrid].caption;
        }
    }
}

} // namespace

void PhysicalKeys::watchSpeed(std::chrono::milliseconds time) {
    const bool quick = time > 0ms && time >= last_ && time - last_ <= ScannerPause;
    quickKeys_ = quick ? quickKeys_ + 1 : 0;
    last_ = time;
}

KeyMeaning PhysicalKeys::meaning(const Window& window, const KeyStroke& stroke) {
    watchSpeed(stroke.time);
    if (stroke.command)
        return key_meaning::Ordinary{};
    switch (stroke.key) {
    case KeyStroke::Key::Function:
        if (stroke.number == 1)
            return key_meaning::ShowHelp{};
        return meaningOfFunctionKey(window, stroke);
    case KeyStroke::Key::Escape:
        return pressIfReachable(stroke.repeated ? nullptr : closeButton(window));
    case KeyStroke::Key::Enter:
        return meaningOfEnter(window, stroke.repeated);
    case KeyStroke::Key::Other:
        break;
    }
    const Focus focus = focusOf(window);
    TextBox* const entry = window.keyTargets().entry;
    if (focus == Focus::Line || focus == Focus::Note || !isOfAmounts(stroke.character) || !isReachable(entry))
        return key_meaning::Ordinary{};
    return key_meaning::Enter{*entry};
}

KeyMeaning PhysicalKeys::meaningOfEnter(const Window& window, bool repeated) {
    const bool scanned = std::exchange(quickKeys_, 0) >= ScannerKeys;
    const Focus focus = focusOf(window);
    if (focus == Focus::Note || (focus == Focus::Button && !scanned))
        return key_meaning::Ordinary{};
    if (scanned || repeated)
        return key_meaning::Dropped{};
    return pressIfReachable(window.keyTargets().confirm);
}

Control* nextTabStop(const Window& window, bool forward) {
    std::vector<Control*> stops;
    for (Control* control : window.controls())
        if (control == window.focus() || isTabStop(*control))
            stops.push_back(control);
    if (stops.empty())
        return nullptr;
    const auto count = static_cast<std::ptrdiff_t>(stops.size());
    const auto present = std::ranges::find(stops, window.focus());
    std::ptrdiff_t next = forward ? 0 : count - 1;
    if (present != stops.end())
        next = (present - stops.begin() + (forward ? 1 : count - 1)) % count;
    return stops[static_cast<std::size_t>(next)];
}

Control* firstTabStop(const Window& window, const Control& part) {
    for (Control* control : window.controls())
        for (const Control* above = control; above != nullptr; above = above->parent())
            if (above == &part && isTabStop(*control))
                return control;
    return nullptr;
}

std::vector<KeyHelpLine> keyHelp(const Window& window, const Wording& words) {
    const KeyTargets& targets = window.keyTargets();
    PartsOfWindow parts(words);
    for (Control* control : window.controls())
        control->accept(parts);
    std::vector<KeyHelpLine> lines;
    const auto add = [&](const std::string& key, std::string meaning) {
        lines.push_back({key, std::move(meaning), {}, {}});
    };
    add("F1", words(Word::Keys));
    if (isReachable(targets.entry))
        add("0 … 9  " + parts.decimalMark, spokenNameOf(*targets.entry, words));
    if (isReachable(targets.confirm))
        add("↵", targets.confirm->caption());
    if (const PushButton* const button = closeButton(window))
        add("Esc", button->caption());
    add("⇥", words(Word::NextField));
    if (!parts.grids.empty())
        add("← ↑ ↓ →  ␣", parts.grids);
    if (!parts.list.empty()) {
        add("← ↑ ↓ →  ↵", parts.list);
        add("A … Z", words(Word::SearchList));
    }
    if (isReachable(targets.functionKeys))
        addFunctionKeys(lines, *targets.functionKeys);
    return lines;
}

} // namespace kova
