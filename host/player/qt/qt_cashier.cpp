#include "player/qt/qt_cashier.h"

#include "adapters/qt/user_interface.h"
#include "adapters/qt/window_frame.h"
#include "adapters/system/machine.h"
#include "base/error.h"
#include "base/utf8.h"
#include "host_options.h"
#include "player/qt/gestures.h"
#include "player/qt/pointing.h"
#include "player/qt/recording.h"
#include "player/qt/stepped_event_loop.h"
#include "widgets/button_grid.h"
#include "widgets/captioned_controls.h"
#include "widgets/keyboards.h"
#include "widgets/tab_control.h"

#include <QApplication>
#include <QCloseEvent>
#include <QPixmap>

namespace kova {
namespace {

constexpr std::chrono::milliseconds FingerDown(100), AfterGesture(120); // in a recording

/// The screen's without it.
QSize surfaceOf(const HostOptions& options) {
    return options.size ? QSize(options.size->width, options.size->height) : QSize();
}

class QtStage final : public Stage {
  public:
    QtStage(const RegionalSettings& regional, const HostOptions& options)
        : userInterface_(loop_, regional, surfaceOf(options)),
          recording_(options.pictures ? std::make_unique<Recording>(*options.pictures) : nullptr) {}
    EventLoop& eventLoop() override { return loop_; }
    UserInterface& userInterface() override { return userInterface_; }
    Cashier& cashier() override { return cashier_; }

  private:
    SteppedEventLoop loop_;
    QtUserInterface userInterface_;
    std::unique_ptr<Recording> recording_;
    QtCashier cashier_{loop_, userInterface_, recording_.get()};
};

} // namespace

void QtCashier::record(std::chrono::milliseconds time, const TouchPoint* finger) {
    if (recording_ != nullptr)
        recording_->add(time, finger == nullptr
                                  ? std::nullopt
                                  : std::optional(finger->widget->mapToGlobal(finger->point.toPoint())));
}

/// One gesture: afterwards what it left waiting is handled and a handler's failure is thrown on.
template <class Body>
void QtCashier::carryOut(Body body) {
    QtEventLoop::Caller caller(loop_);
    body();
    loop_.settle();
    if (recording_ != nullptr)
        loop_.advance(FingerDown + AfterGesture); // what fades by itself is to fade on film too
    record(AfterGesture);
    caller.rethrow();
}

template <class WithoutDrawing>
Gesture QtCashier::touchPart(Control& control, const std::optional<std::string>& part,
                             WithoutDrawing touchModel) {
    const Gesture reached = control.reach();
    if (reached != Gesture::Done)
        return reached;
    const auto place = touchPoint(userInterface_, control, part);
    if (!place)
        return touchModel();
    carryOut([&] { touchAt(*place->widget, place->point, [&] { record(FingerDown, &*place); }); });
    return reached;
}

Gesture QtCashier::press(PushButton& button) {
    return touchPart(button, {}, [&] { return button.press(); });
}

Gesture QtCashier::touch(ButtonGrid& grid, const std::string& key) {
    return touchPart(grid, key, [&] { return grid.touch(key); });
}

Gesture QtCashier::touchKey(NumericKeypad& keypad, const std::string& key) {
    return touchPart(keypad, key, [&] { return keypad.touchKey(key); });
}

Gesture QtCashier::touchKey(OnScreenKeyboard& keyboard, char32_t character) {
    return touchPart(keyboard, toUtf8(std::u32string(1, character)),
                     [&] { return keyboard.touchKey(character); });
}

Gesture QtCashier::selectTab(TabControl& tabs, int index) {
    return touchPart(tabs, std::to_string(index), [&] { return tabs.touchTab(index); });
}

Gesture QtCashier::focus(Control& control) {
    Gesture reached = Gesture::Done;
    if (const auto place = touchPoint(userInterface_, control))
        record(FingerDown, &*place);
    carryOut([&] { reached = control.window().moveFocus(control); });
    return reached;
}

Gesture QtCashier::type(Window& window, char32_t character) {
    if (window.takesKeys())
        return typeToWindow(window, character);
    Control* const focused = window.focus();
    if (focused == nullptr)
        return Gesture::Done;
    const Gesture reached = focused->reach();
    if (reached != Gesture::Done || character == U'\t') // the tabulator would move the focus
        return reached;
    ControlView* const view = userInterface_.view(*focused);
    if (view == nullptr)
        return focused->typeCharacter(character);
    carryOut([&] { typeInto(view->keyboardWidget(), character); });
    return reached;
}

/// At a widget of the window, wherever the focus is: the window has to take the key before it.
Gesture QtCashier::typeToWindow(Window& window, char32_t character) {
    const Gesture reached = window.reach();
    if (reached != Gesture::Done || character == U'\t')
        return reached;
    WindowFrame* const frame = userInterface_.frame(window);
    if (frame == nullptr)
        return window.typeCharacter(character);
    ControlView* const view = window.focus() == nullptr ? nullptr : userInterface_.view(*window.focus());
    QWidget& target = view == nullptr ? *frame : view->keyboardWidget();
    carryOut([&] { typeInto(target, character); });
    return reached;
}

void QtCashier::requestClose(Window& window) {
    WindowFrame* const frame = userInterface_.frame(window);
    if (frame == nullptr) {
        window.requestClose();
        return;
    }
    carryOut([&] {
        QCloseEvent event;
        QApplication::sendEvent(frame, &event);
    });
}

void QtCashier::wait(std::chrono::milliseconds time) {
    record(time);
    loop_.advance(time);
    loop_.settle();
}

void QtCashier::screenshot(Window& window, const std::string& file) {
    WindowFrame* const frame = userInterface_.frame(window);
    if (frame == nullptr)
        return;
    carryOut([] {});
    if (!frame->grab().save(QString::fromStdString(file), "PNG"))
        throw Error(PathAccessError, "Cannot write " + file);
}

std::unique_ptr<Stage> makeQtStage(const RegionalSettings& regional, const HostOptions& options) {
    // A script needs no screen: without one the windows are drawn into memory.
    if (!hasScreen() && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    return std::make_unique<QtStage>(regional, options);
}

} // namespace kova
