#pragma once
#include "adapters/qt/control_view.h"
#include "adapters/qt/display.h"
#include "adapters/qt/event_loop.h"
#include "adapters/qt/look.h"
#include "ports/regional_settings.h"
#include "screen/spoken_name.h"
#include "widgets/window.h"

#include <QWidget>
#include <QWindow>

#include <functional>
#include <map>
#include <memory>
#include <vector>

namespace kova {

class PageNoticeView;

/// Where a window stands, the host's or one of Qt's; all there is of its screen when Qt does not know.
QRect areaOf(const QWindow& window);

/// The top-level widget of one window: draws its background, holds the views of its controls and scales them
/// all with the client area. The model decides when it is visible and where the focus is; the title bar's
/// close button only asks the model.
class WindowFrame final : public QWidget, public AccessibleView {
  public:
    /// `surface` is what the largest window, the design surface, measures in pixels; as much as there is of
    /// the screen when it is empty. `hostWindow` is the one
    /// that it stands in front of when none of Qt's is active; 0 for none.
    WindowFrame(Window& window, QtEventLoop& loop, const RegionalSettings& regional, Wording& words,
                const QSize& surface, WId hostWindow);
    ~WindowFrame() override;
    QAccessibleInterface* makeAccessible() override;

    /// Forgets the models at once; later events come to nothing.
    void detach();
    /// Null when detached.
    [[nodiscard]] Window* model() const { return window_; }
    /// Null for a control that is not of this window.
    [[nodiscard]] ControlView* view(const Control& control) const;

    [[nodiscard]] QtEventLoop& loop() const { return loop_; }
    [[nodiscard]] const RegionalSettings& regional() const { return regional_; }
    [[nodiscard]] const Wording& words() const { return words_; }
    [[nodiscard]] const Scale& scale() const { return scale_; }
    /// Where a control is drawn, relative to what its parent is drawn on.
    [[nodiscard]] QRect pixels(const Control& control) const;
    /// The same of any place on `parent`, which may be the window itself.
    [[nodiscard]] QRect pixels(const Control& parent, const Rect& bounds) const;

    /// The host's windows, which a modal frame blocks from when it is shown; null otherwise. For who waits
    /// for it.
    [[nodiscard]] std::unique_ptr<HostWindows> takeHostWindows() { return std::move(hostWindows_); }

    /// Gives the keyboard to the control that has the model's focus, as soon as it can take it.
    void followFocus();
    /// The tabulator key: the next control, in order of creation, that can be reached.
    void moveFocus(bool forward);
    /// The toolkit gave a widget of this frame the keyboard by itself, as it does for assistive technology: a
    /// gesture like a touch.
    void keyboardGiven(const QWidget& keyboard);
    void neighbourMoved();
    /// A caption changed that may name other controls.
    void neighbourRenamed();
    /// A key on its way to one of the widgets, for a window that takes all keys itself.
    void takeKey(const QEvent& event);

  protected:
    void closeEvent(QCloseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    bool focusNextPrevChild(bool) override { return false; } // Qt must not move the focus on its own account

  private:
    void makeViews();
    void layOut();
    void showProperty(Property property);
    void showWords();
    void showOrHide();
    void comeToFront();
    /// Null when there is none.
    QWindow* windowBelow();
    void moveToPlace(QWindow* below);
    void frameChanged();
    void stayInRoom();
    [[nodiscard]] bool fillsScreen() const;
    /// Where its client area may be, in front of `below`, which may be null.
    [[nodiscard]] QRect room(const QWindow* below) const;
    [[nodiscard]] QSize initialSize(const QRect& room) const;
    /// Where on the screen; empty for nothing.
    [[nodiscard]] QRect keptInSight() const;

    Window* window_;
    QtEventLoop& loop_;
    const RegionalSettings& regional_;
    const Wording& words_;
    QSize surface_;
    QSize laidOut_; ///< what the controls were placed for
    QMargins edge_; ///< the window manager's
    WId hostWindow_;
    std::unique_ptr<QWindow> hostWindowHandle_; ///< while this may stand in front of it
    Scale scale_;
    std::map<const Control*, ControlView*> views_; ///< each owned by its parent widget
    PageNoticeView* notice_ = nullptr;             ///< null where the window has none
    std::vector<Connection> connections_;
    std::unique_ptr<HostWindows> hostWindows_;
    bool complete_ = false; ///< all views are made
};

} // namespace kova
