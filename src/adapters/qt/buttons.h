#pragma once
#include "adapters/qt/control_view.h"
#include "adapters/qt/look.h"
#include "widgets/captioned_controls.h"

#include <QAbstractButton>
#include <QElapsedTimer>

#include <functional>
#include <string>

class QTouchEvent;

namespace kova {

/// A real button drawn with this rendering's look: feedback when the finger goes down, `clicked` when it goes
/// up inside. It knows no model; a view sets its looks.
class FaceButton : public QAbstractButton {
  public:
    struct Looks {
        look::Face face;
        QColor text;
        QFont font;
        bool wrapped = true;
        /// Draws a picture beside the caption in the colour given; may be empty.
        std::function<void(QPainter&, const QRectF&, const QColor&)> picture = {};
        double pictureSize = 0;                ///< pixels
        QMarginsF inset = {};                  ///< pixels around the face that look empty and take touches
        std::function<QColor()> backdrop = {}; ///< what lies behind; may be empty
    };
    explicit FaceButton(QWidget& parent);
    void setLooks(const Looks& looks);
    /// What is drawn of it, within its own rectangle.
    [[nodiscard]] QRectF face() const;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    bool event(QEvent* event) override;
    void nextCheckState() override {} ///< what is held down is the model's business

  private:
    QRectF drawPicture(QPainter& painter, const QRectF& area, const QColor& color) const;
    Looks looks_;
    bool wholeCaption_ = true;
};

/// One key of a drawn keypad or keyboard. It never takes the focus from the text that it types into. It takes
/// touches itself, so that a quick typist's next finger may come down before the last one is up.
class KeyButton final : public FaceButton, public AccessibleView {
  public:
    /// `key` tells it from the others of the board; `spoken` is what assistive technology calls it.
    KeyButton(QWidget& board, std::string key, const QString& spoken);
    [[nodiscard]] const std::string& key() const { return key_; }
    QAccessibleInterface* makeAccessible() override { return makeAccessibleButton(*this); }

  protected:
    bool event(QEvent* event) override;

  private:
    bool takeTouch(const QTouchEvent& event);
    std::string key_;
};

class PushButtonView final : public FaceButton, public ModelView<PushButton> {
  public:
    PushButtonView(PushButton& button, WindowFrame& frame, QWidget& parent);
    QWidget& widget() override { return *this; }
    QAccessibleInterface* makeAccessible() override;
    [[nodiscard]] bool resting() const override;

  protected:
    bool event(QEvent* event) override;
    void layOut() override;
    void showProperty(Property property) override;

  private:
    void showLooks();
    [[nodiscard]] QMarginsF inset() const; ///< of the face, in pixels
    QElapsedTimer rested_;                 ///< since the model began to rest
};

} // namespace kova
