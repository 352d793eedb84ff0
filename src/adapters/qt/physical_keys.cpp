#include "adapters/qt/physical_keys.h"

#include "adapters/qt/key_help.h"
#include "adapters/qt/window_frame.h"
#include "widgets/button_grid.h"
#include "widgets/captioned_controls.h"
#include "widgets/control.h"
#include "widgets/text_box.h"

#include <QApplication>
#include <QKeyEvent>

namespace kova {
namespace {

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
    if (window.focus() != nullptr && window.focus()->reach() == Gesture::Done)
        window.focus()->accept(found);
    return found.kind;
}

bool press(const WindowFrame& frame, PushButton* button) {
    if (!isReachable(button))
        return false;
    frame.loop().runHandler([&] { button->press(); });
    return true;
}

bool close(const WindowFrame& frame) {
    for (PushButton* button : frame.model()->keyTargets().close)
        if (press(frame, button))
            return true;
    return false;
}

bool typeIntoEntry(const WindowFrame& frame, const QKeyEvent& event) {
    TextBox* const entry = frame.model()->keyTargets().entry;
    ControlView* const view = entry == nullptr ? nullptr : frame.view(*entry);
    if (view == nullptr || !isReachable(entry))
        return false;
    frame.loop().runHandler([&] { entry->window().moveFocus(*entry); });
    QKeyEvent copy(event.type(), event.key(), event.modifiers(), event.text());
    QApplication::sendEvent(&view->keyboardWidget(), &copy);
    return true;
}

/// F2 and on, then the same with Shift.
bool touchByFunctionKey(const WindowFrame& frame, const QKeyEvent& event) {
    ButtonGrid* const grid = frame.model()->keyTargets().functionKeys;
    constexpr int keysOfARow = Qt::Key_F12 - Qt::Key_F2 + 1;
    const int number = event.key() - Qt::Key_F2 + (event.modifiers() == Qt::ShiftModifier ? keysOfARow : 0);
    if (!isReachable(grid) || number >= static_cast<int>(grid->buttons().size()))
        return false;
    const std::string key = grid->buttons()[static_cast<std::size_t>(number)].key;
    frame.loop().runHandler([&] { grid->touch(key); });
    return true;
}

bool isAmountKey(const QKeyEvent& event) {
    const QString text = event.text();
    return text.size() == 1 &&
           (text.front() == ',' || text.front() == '.' || (text.front() >= '0' && text.front() <= '9'));
}

} // namespace

void PhysicalKeys::watchSpeed(const QKeyEvent& event) {
    const bool quick = event.timestamp() > 0 && event.timestamp() - last_ <= ScannerMilliseconds;
    quickKeys_ = quick ? quickKeys_ + 1 : 0;
    last_ = event.timestamp();
}

bool PhysicalKeys::take(WindowFrame& frame, const QKeyEvent& event) {
    if (!event.spontaneous() || frame.model()->takesKeys())
        return false;
    if (KeyHelp::isShownOn(frame)) {
        KeyHelp::hideOn(frame);
        return true;
    }
    watchSpeed(event);
    const bool plain = (event.modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier)) == 0;
    const Focus focus = focusOf(*frame.model());
    if (!plain)
        return false;
    if (event.key() == Qt::Key_F1) {
        KeyHelp::showOn(frame);
        return true;
    }
    if (event.key() >= Qt::Key_F2 && event.key() <= Qt::Key_F12)
        return !event.isAutoRepeat() && touchByFunctionKey(frame, event);
    if (event.key() == Qt::Key_Escape)
        return !event.isAutoRepeat() && close(frame);
    if (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter) {
        const bool scanned = quickKeys_ >= ScannerKeys;
        quickKeys_ = 0;
        if (focus == Focus::Note || (focus == Focus::Button && !scanned))
            return false;
        return scanned || event.isAutoRepeat() || press(frame, frame.model()->keyTargets().confirm);
    }
    return focus != Focus::Line && focus != Focus::Note && isAmountKey(event) && typeIntoEntry(frame, event);
}

} // namespace kova
