#pragma once
#include "adapters/qt/accessible_views.h"
#include "adapters/qt/event_loop.h"
#include "adapters/qt/look.h"
#include "widgets/control.h"

#include <QPointF>
#include <QRect>
#include <QString>

#include <algorithm>
#include <optional>
#include <string>

class QPainter;
class QWidget;

namespace kova {

class WindowFrame;
class Wording;

/// The drawing of one control. It observes the model and hands gestures to it; it decides nothing. Once
/// detached it no longer knows its model. Its widget is deleted with the frame's, when no handler runs, so
/// that a view may be used after it ran a handler.
class ControlView : public AccessibleView {
  public:
    ControlView(Control& control, WindowFrame& frame);
    ControlView(const ControlView&) = delete;
    ControlView& operator=(const ControlView&) = delete;

    virtual QWidget& widget() = 0;
    /// What has the keyboard when the control has the focus.
    virtual QWidget& keyboardWidget() { return widget(); }
    /// The tabulator key: whether the focus went on to another part of this control.
    virtual bool moveFocusInside(bool) { return false; }
    /// Brings the whole view in line with its model, after making and whenever the scale changed.
    void showAll();
    /// Another control was moved, shown or hidden.
    virtual void neighbourMoved() {}
    /// Whether a gesture would reach its model.
    [[nodiscard]] bool reachable() const { return isReachable(control_); }
    [[nodiscard]] const Wording& words() const;
    /// Whether people's touches and keys do nothing to it.
    [[nodiscard]] virtual bool resting() const { return false; }
    /// What it is called may have changed: its caption, a label around it, or the language.
    void updateSpokenName();
    /// Says something of it to assistive technology, besides what is missing.
    void describe(const QString& description);
    /// The language of the view's own words may have changed.
    virtual void showWords() { updateSpokenName(); }
    QAccessibleInterface* makeAccessible() override { return nullptr; }
    virtual void detach();

  protected:
    /// Places the widget; a view places its inner parts and sizes its fonts here too.
    virtual void layOut();
    /// One property of the model changed.
    virtual void showProperty(Property property);
    virtual void showNeed();
    [[nodiscard]] virtual bool drawnEnabled() const;
    [[nodiscard]] virtual bool drawnVisible() const;
    [[nodiscard]] Control* control() const { return control_; }
    [[nodiscard]] WindowFrame& frame() const { return frame_; }
    [[nodiscard]] const Scale& scale() const;
    /// Pixels of a design length; of a line, which has one at least.
    [[nodiscard]] int pixels(double design) const;
    [[nodiscard]] int linePixels(double design) const {
        return static_cast<int>(look::lineWidth(design * scale().smaller()));
    }
    /// The rounded board that cells or keys lie on; leaves the painter smooth and without a pen.
    void paintBoard(QPainter& painter, Color color, double radius);
    /// What lies behind the control: the background of its frame, page or window.
    [[nodiscard]] QColor backdrop() const;
    void run(const std::function<void()>& handler) const;
    /// Names the widget for scripts and for assistive technology.
    void nameWidget();
    virtual void showSpokenName(const QString& name);

  private:
    void describeNeed();
    Control* control_;
    WindowFrame& frame_;
    Connection changed_, needChanged_;
    QString described_;
    bool showsRefused_ = false;
};

/// A view that knows its model's kind.
template <class Model>
class ModelView : public ControlView {
  public:
    ModelView(Model& model, WindowFrame& frame) : ControlView(model, frame), model_(&model) {}
    void detach() override {
        model_ = nullptr;
        ControlView::detach();
    }

  protected:
    /// Null when detached.
    [[nodiscard]] Model* model() const { return model_; }
    /// Hands a gesture to the model, which may unload the window; without one, nothing happens.
    template <class Gesture>
    void act(Gesture gesture) {
        if (Model* const target = model_)
            run([&] { gesture(*target); });
    }

  private:
    Model* model_;
};

/// Makes the view of a control inside `parent`, whose widget then owns it.
ControlView* makeView(Control& control, WindowFrame& frame, QWidget& parent);

} // namespace kova
