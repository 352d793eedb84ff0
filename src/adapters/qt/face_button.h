#pragma once
#include "adapters/qt/look.h"

#include <QAbstractButton>

#include <functional>

namespace kova {

/// A real button drawn with this rendering's look: feedback when the finger goes down, `clicked` when it goes
/// up inside. It says nothing of models; a view sets its looks.
class FaceButton : public QAbstractButton {
  public:
    struct Looks {
        look::Face face;
        QColor text;
        QFont font;
        bool wrapped = true;
        /// Draws a picture beside the caption in the colour given; may be empty.
        std::function<void(QPainter&, const QRectF&, const QColor&)> picture = {};
        double pictureSize = 0; ///< pixels
        double inset = 0;       ///< pixels around the face that look empty and take touches
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

} // namespace kova
