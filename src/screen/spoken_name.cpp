#include "screen/spoken_name.h"

#include "base/utf8.h"
#include "screen/physical_keys.h"
#include "widgets/captioned_controls.h"
#include "widgets/tab_control.h"
#include "widgets/window.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace kova {
namespace {

constexpr int NearAbove = 300; // twips between a title and what it stands above
constexpr int NearBeside = 2000;

class OwnWords : public ControlVisitor {
  public:
    explicit OwnWords(const Wording& wording) : wording_(wording) {}
    void visit(Label& label) override { words = label.caption(); }
    void visit(GroupFrame& frame) override { words = frame.caption(); }
    void visit(TabPage& page) override { words = page.caption(); }
    void visit(PushButton& button) override {
        if (const std::string& text = button.caption().empty() ? button.toolTip() : button.caption();
            !text.empty())
            words = text;
    }
    void visit(NumericKeypad&) override { words = wording_(Word::Keypad); }
    void visit(OnScreenKeyboard&) override { words = wording_(Word::Keyboard); }
    std::optional<std::string> words;

  private:
    const Wording& wording_;
};

class LabelText : public ControlVisitor {
  public:
    void visit(Label& label) override { text = label.caption(); }
    std::string text;
};

class SurroundingText : public ControlVisitor {
  public:
    void visit(GroupFrame& frame) override { text = frame.caption(); }
    void visit(TabPage& page) override { text = page.caption(); }
    void visit(Window& window) override { text = window.caption(); }
    std::string text;
};

/// How far a label is from standing right above a control, as its title does; a column's title may stand far
/// above. Of two titles in a row the one that begins where the control does is nearer.
std::optional<int> distanceAbove(const Rect& label, const Rect& control) {
    const int distance = (control.top - label.bottom()).count;
    const bool overlaps = label.left < control.right() && control.left < label.right();
    const bool column = label.left == control.left && label.width == control.width;
    if (!overlaps || label.top >= control.top || (distance > NearAbove && !column))
        return std::nullopt;
    return distance + std::abs((label.left - control.left).count);
}

/// How far a label stands to the left of a control of one line.
std::optional<int> distanceBeside(const Rect& label, const Rect& control) {
    const int distance = (control.left - label.right()).count;
    const int middle = label.top.count + label.height.count / 2;
    const bool oneLine = control.height.count < 2 * label.height.count;
    if (!oneLine || distance < 0 || distance > NearBeside || middle < control.top.count ||
        middle > control.bottom().count)
        return std::nullopt;
    return distance;
}

template <class Distance>
std::string nearestLabel(const Control& control, const std::vector<Control*>& all, Distance distance) {
    std::string nearest;
    std::optional<int> least;
    for (Control* other : all) {
        if (other == &control || other->parent() != control.parent() || !other->visible())
            continue;
        const auto apart = distance(other->bounds(), control.bounds());
        if (!apart || (least && *least <= *apart))
            continue;
        LabelText label;
        other->accept(label);
        if (label.text.empty())
            continue;
        least = apart;
        nearest = label.text;
    }
    return nearest;
}

std::string wordsAround(const Control& control) {
    Control* root = control.parent();
    while (root != nullptr && root->parent() != nullptr)
        root = root->parent();
    if (root == nullptr)
        return {};
    const auto& all = root->window().controls();
    const std::string beside = nearestLabel(control, all, distanceBeside);
    const std::string above = nearestLabel(control, all, distanceAbove);
    if (!beside.empty() || !above.empty())
        return beside + (beside.empty() || above.empty() ? "" : " ") + above;
    SurroundingText surrounding;
    for (Control* parent = control.parent(); parent != nullptr && surrounding.text.empty();
         parent = parent->parent())
        parent->accept(surrounding);
    return surrounding.text;
}

std::string rowsAndOrder(const ReportGrid& grid, const Wording& words) {
    std::string text = std::to_string(grid.rows().size());
    if (!grid.searched().empty())
        text = std::to_string(grid.order().size()) + " " + words(Word::OfLimit) + " " +
               std::to_string(grid.recordCount());
    text += " " + words(Word::Rows);
    if (const auto column = grid.sortColumn())
        text += ", " + grid.columns()[*column].caption + " " +
                spokenDescription(grid, std::nullopt, *column, words);
    return text;
}

} // namespace

std::string spokenNameOf(Control& control, const Wording& words) {
    OwnWords own(words);
    control.accept(own);
    const std::string& given = control.spokenName();
    if (given.empty())
        return own.words ? *own.words : wordsAround(control);
    return given + (own.words ? " " + *own.words : "");
}

std::string spokenNameOf(const ButtonGrid::Button& button) {
    return button.caption.empty() ? button.key : button.caption;
}

std::string spokenCell(const ReportGrid& grid, std::optional<std::size_t> row, std::size_t column) {
    if (!row)
        return grid.columns()[column].caption;
    const ReportGrid::Row& shown = grid.rows()[*row];
    if (shown.record != ReportGrid::Row::None)
        return grid.shown(static_cast<std::size_t>(shown.record), column);
    if (column > 0)
        return {};
    const ReportGrid::Group& group = grid.group(shown);
    const std::string sums = grid.written(group.sums);
    return grid.columns()[group.column].caption + ": " + group.value + " (" + std::to_string(group.count) +
           ")" + (sums.empty() ? "" : " ") + sums;
}

std::string spokenDescription(const ReportGrid& grid, const Wording& words) {
    const std::string text = grid.brokenOff()          ? grid.brokenOffText()
                             : grid.recordCount() == 0 ? grid.emptyText()
                                                       : rowsAndOrder(grid, words);
    return text + (grid.stale() ? ", " + words(Word::ListOfOther) : "");
}

std::string spokenDescription(const ReportGrid& grid, std::optional<std::size_t> row, std::size_t column,
                              const Wording& words) {
    if (!row) {
        if (grid.sortColumn() != column || grid.sortDirection() == ReportGrid::Direction::AsLoaded)
            return {};
        return words(grid.sortDirection() == ReportGrid::Direction::Ascending ? Word::Ascending
                                                                              : Word::Descending);
    }
    const ReportGrid::Row& shown = grid.rows()[*row];
    if (shown.group == ReportGrid::Row::None || column > 0)
        return {};
    return words(grid.group(shown).collapsed ? Word::Collapsed : Word::Expanded);
}

std::string spokenText(const ReadBack::Content& content) {
    std::string text = content.amount;
    const auto say = [&](const std::string& words) {
        text += (text.empty() || words.empty() ? "" : ", ") + words;
    };
    for (const ReadBack::Way& way : content.ways)
        say(way.text);
    const auto sayPart = [&](const ReadBack::Part& part) {
        say(part.text.empty() ? part.missing : part.text);
    };
    if (content.amount.empty() || content.currency.text.empty())
        sayPart(content.currency);
    for (const ReadBack::Line& line : content.lines)
        std::ranges::for_each(line, sayPart);
    say(content.hint);
    return text;
}

std::string spokenKey(std::optional<char32_t> character, const Wording& words) {
    if (!character)
        return words(Word::CapsLock);
    switch (*character) {
    case key_character::Backspace:
        return words(Word::Backspace);
    case key_character::LineBreak:
        return words(Word::Enter);
    case key_character::Space:
        return words(Word::Space);
    default:
        return toUtf8(std::u32string(1, *character));
    }
}

std::string spokenKey(const NumericKeypad& keypad, const std::string& text, const Wording& words) {
    if (text == PadClearKey)
        return words(keypad.takesAll() ? Word::Clear : Word::LastDigit);
    if (text != PadDecimalKey)
        return text;
    const std::string& decimalMark = keypad.decimalMark();
    return decimalMark == "," ? words(Word::Comma) : decimalMark == "." ? words(Word::Point) : decimalMark;
}

} // namespace kova
