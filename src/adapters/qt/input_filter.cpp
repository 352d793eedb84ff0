#include "adapters/qt/input_filter.h"

#include "adapters/qt/button_grid_view.h"
#include "adapters/qt/key_help.h"
#include "adapters/qt/window_frame.h"
#include "base/overloaded.h"
#include "widgets/button_grid.h"
#include "widgets/captioned_controls.h"
#include "widgets/text_box.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QPointerEvent>

#include <algorithm>

namespace kova {
namespace {

bool isInput(QEvent::Type type) {
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletRelease:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
    case QEvent::InputMethod:
    case QEvent::ContextMenu:
    case QEvent::DragEnter:
    case QEvent::Drop:
        return true;
    default:
        return false;
    }
}

bool isKey(QEvent::Type type) {
    return type == QEvent::KeyPress || type == QEvent::KeyRelease || type == QEvent::InputMethod;
}

bool comesDown(const QEvent& event) {
    return event.type() == QEvent::MouseButtonPress || event.type() == QEvent::MouseButtonDblClick ||
           event.type() == QEvent::TouchBegin;
}

/// A button, a key, or a cell of a grid.
bool canBeTouched(const QObject& target) {
    const auto* view = dynamic_cast<const ControlView*>(&target);
    return static_cast<const QWidget&>(target).isEnabled() && (view == nullptr || !view->resting()) &&
           (qobject_cast<const QAbstractButton*>(&target) != nullptr ||
            dynamic_cast<const ButtonGridView*>(&target) != nullptr);
}

bool isTabulator(const QEvent& event) {
    if (event.type() != QEvent::KeyPress)
        return false;
    const auto& key = static_cast<const QKeyEvent&>(event);
    return (key.key() == Qt::Key_Tab || key.key() == Qt::Key_Backtab) &&
           (key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) == 0;
}

/// A copy has no time: it is made as soon as the key is heard of.
std::chrono::milliseconds timeOf(const QKeyEvent& event) {
    using namespace std::chrono;
    if (event.spontaneous())
        return milliseconds(event.timestamp());
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch());
}

KeyStroke strokeOf(const QKeyEvent& event) {
    KeyStroke stroke;
    if (event.key() == Qt::Key_Escape)
        stroke.key = KeyStroke::Key::Escape;
    else if (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter)
        stroke.key = KeyStroke::Key::Enter;
    else if (event.key() >= Qt::Key_F1 && event.key() <= Qt::Key_F12)
        stroke.key = KeyStroke::Key::Function;
    stroke.number = event.key() - Qt::Key_F1 + 1;
    if (const QString text = event.text(); text.size() == 1)
        stroke.character = text.front().unicode();
    stroke.shift = event.modifiers().testFlag(Qt::ShiftModifier);
    stroke.command = (event.modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier)) != 0;
    stroke.repeated = event.isAutoRepeat();
    stroke.time = timeOf(event);
    return stroke;
}

void typeInto(TextBox& entry, const WindowFrame& frame, const QKeyEvent& event) {
    frame.loop().runHandler([&] { entry.window().moveFocus(entry); });
    if (ControlView* const view = frame.view(entry)) {
        QKeyEvent copy(event.type(), event.key(), event.modifiers(), event.text());
        QApplication::sendEvent(&view->keyboardWidget(), &copy);
    }
}

} // namespace

InputFilter::InputFilter(const std::vector<WindowFrame*>& frames) : frames_(frames) {
    qApp->installEventFilter(this);
}

bool InputFilter::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress && watched->isWindowType())
        keyOfWindow_ = event;
    const bool givesKeyboard = event->type() == QEvent::FocusIn &&
                               static_cast<QFocusEvent*>(event)->reason() == Qt::OtherFocusReason;
    if ((!givesKeyboard && !isInput(event->type())) || !watched->isWidgetType())
        return false;
    const QWidget* const top = static_cast<QWidget*>(watched)->window();
    const auto found = std::ranges::find_if(frames_, [top](const auto* one) { return one == top; });
    if (found == frames_.end() || (*found)->model() == nullptr)
        return false;
    WindowFrame& frame = **found;
    if (givesKeyboard) {
        frame.keyboardGiven(static_cast<QWidget&>(*watched));
        return false;
    }
    if (frame.model()->blocked() || swallowsBounce(*watched, *event))
        return true;
    if (touched && comesDown(*event) && canBeTouched(*watched))
        touched();
    if (event->type() == QEvent::KeyPress && takeKey(frame, static_cast<QKeyEvent&>(*event)))
        return true;
    if (isTabulator(*event)) {
        const auto& key = static_cast<QKeyEvent&>(*event);
        frame.moveFocus(key.key() == Qt::Key_Tab && !key.modifiers().testFlag(Qt::ShiftModifier));
        return true;
    }
    if (!frame.model()->takesKeys() || !isKey(event->type()))
        return false;
    frame.takeKey(*event);
    return true;
}

bool InputFilter::swallowsBounce(const QObject& target, const QEvent& event) {
    BounceFilter::Phase phase{};
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::TouchBegin:
        phase = BounceFilter::Phase::Down;
        break;
    case QEvent::MouseButtonRelease:
    case QEvent::TouchEnd:
        phase = BounceFilter::Phase::Up;
        break;
    default:
        return false;
    }
    const auto& pointer = static_cast<const QPointerEvent&>(event);
    if (pointer.pointCount() == 0)
        return false;
    const QPointF place = pointer.points().first().globalPosition();
    return bounces_.swallows(
        phase, {&target, {place.x(), place.y()}, std::chrono::milliseconds(pointer.timestamp())});
}

bool InputFilter::takeKey(WindowFrame& frame, const QKeyEvent& event) {
    if ((!event.spontaneous() && &event != keyOfWindow_) || frame.model()->takesKeys())
        return false;
    if (hideKeyHelp(frame))
        return true;
    return carryOut(keys_.meaning(*frame.model(), strokeOf(event)), frame, event);
}

bool InputFilter::carryOut(const KeyMeaning& meaning, WindowFrame& frame, const QKeyEvent& event) {
    std::visit(Overloaded{[](key_meaning::Ordinary) {}, [](key_meaning::Dropped) {},
                          [&](key_meaning::ShowHelp) { showKeyHelp(frame); },
                          [&](const key_meaning::Press& key) {
                              const ControlView* const view = frame.view(key.button);
                              if (view == nullptr || !view->resting())
                                  frame.loop().runHandler([&] { key.button.press(); });
                          },
                          [&](const key_meaning::Touch& key) {
                              frame.loop().runHandler([&] { key.grid.touch(key.key); });
                          },
                          [&](const key_meaning::Enter& key) { typeInto(key.entry, frame, event); }},
               meaning);
    return !std::holds_alternative<key_meaning::Ordinary>(meaning);
}

} // namespace kova
