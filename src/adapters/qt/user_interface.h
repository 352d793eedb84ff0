#pragma once
#include "adapters/qt/control_view.h"
#include "adapters/qt/display.h"
#include "adapters/qt/event_loop.h"
#include "adapters/qt/waiting.h"
#include "adapters/qt/window_frame.h"
#include "ports/regional_settings.h"
#include "ports/user_interface.h"

#include <QPointer>
#include <QSize>

#include <functional>
#include <memory>
#include <string>
#include <vector>

class QMessageBox;
class QScreen;

namespace kova {

class InputFilter;

/// Windows on the screen. Each model that is presented gets a top-level widget, which goes with its view.
class QtUserInterface final : public UserInterface {
  public:
    /// `loop` and `regional` must outlive it, and it all views. `surface` is what the largest window measures
    /// in pixels; as much as the screen when it is empty.
    QtUserInterface(QtEventLoop& loop, const RegionalSettings& regional, const QSize& surface = {});
    QtUserInterface(const QtUserInterface&) = delete;
    QtUserInterface& operator=(const QtUserInterface&) = delete;
    ~QtUserInterface() override;

    std::unique_ptr<WindowView> present(Window& window) override;
    void runModal(Window& window) override;
    MessageAnswer messageBox(const PlatformMessage& message) override;
    void await(const Awaited& awaited, const std::function<void()>& work) override;
    void setLanguage(std::int32_t id) override { words_.setLanguage(id); }

    /// The host's window that windows stand in front of which are presented from now on; 0 for none.
    void setHostWindow(WId window) { hostWindow_ = window; }
    /// Called when a finger comes down on a button, a key or a cell.
    void onTouch(std::function<void()> touched);
    [[nodiscard]] QtEventLoop& loop() const { return loop_; }
    [[nodiscard]] bool showsWindow() const;
    /// The widget that draws the window; null when nothing does.
    [[nodiscard]] WindowFrame* frame(const Window& window) const;
    /// Null when nothing draws the control.
    [[nodiscard]] ControlView* view(Control& control) const;

  private:
    class FrameView;
    void retire(WindowFrame& frame);
    void fillMessageBox(QMessageBox& box, const PlatformMessage& message) const;
    void nameAnswers(const QMessageBox& box) const;
    [[nodiscard]] QColor backColor() const;
    [[nodiscard]] QSize surface() const; ///< empty where it is the screen's
    [[nodiscard]] Scale scaleOf(const QScreen& screen) const;
    [[nodiscard]] WindowFrame* frameInSight() const;
    [[nodiscard]] SignBeside signBeside(const std::function<QString(std::chrono::seconds)>& text) const;
    [[nodiscard]] std::unique_ptr<WaitingSign> waitingSign(const QString& text) const;
    [[nodiscard]] bool tooLate(const QWidget& target, QtEventLoop::Milliseconds age) const;

    QtEventLoop& loop_;
    const RegionalSettings& regional_;
    Wording words_;
    QSize surface_;
    WId hostWindow_ = 0;
    std::vector<WindowFrame*> frames_; ///< from the oldest to the newest
    std::unique_ptr<InputFilter> filter_;
    InputGate gate_;
    WorkThread workThread_; ///< of queries
};

} // namespace kova
