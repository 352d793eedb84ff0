#include "adapters/qt/face_button.h"

#include "adapters/qt/caption.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

namespace kova {
namespace {

bool presses(const QKeyEvent& event) {
    const int key = event.key();
    return key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter;
}

} // namespace

FaceButton::FaceButton(QWidget& parent) : QAbstractButton(&parent) {
    setFocusPolicy(Qt::NoFocus);
}

void FaceButton::setLooks(const Looks& looks) {
    looks_ = looks;
    update();
}

QRectF FaceButton::face() const {
    return QRectF(rect()).adjusted(looks_.inset, looks_.inset, -looks_.inset, -looks_.inset);
}

void FaceButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    look::Face face = looks_.face;
    face.down = isDown();
    face.enabled = isEnabled();
    face.focused = hasFocus();
    const QRectF outline = this->face();
    look::drawFace(painter, outline, face);
    const QColor fill = look::filling(face);
    const QColor text = look::readableOn(fill, looks_.text);
    const QColor ink = face.enabled ? text : look::mixed(text, fill, 0.55);
    const QRectF area = drawPicture(painter, look::captionArea(outline, face), ink);
    painter.setPen(ink);
    if (!looks_.wrapped) {
        look::drawText(painter, area, this->text(), looks_.font, {.wrapped = false});
        return;
    }
    const auto caption = look::setCaptions({{this->text(), area.size()}}, looks_.font, looks_.face.unit,
                                           look::CaptionSizes::Own);
    look::drawCaption(painter, area, caption.front(), Qt::AlignCenter);
    wholeCaption_ = caption.front().whole;
}

/// Returns what is left for the caption.
QRectF FaceButton::drawPicture(QPainter& painter, const QRectF& area, const QColor& color) const {
    if (!looks_.picture)
        return area;
    const double size = std::min({looks_.pictureSize, area.width(), area.height()});
    QRectF place(0, 0, size, size);
    place.moveCenter(area.center());
    if (!text().isEmpty())
        place.moveLeft(area.left());
    looks_.picture(painter, place, color);
    return area.adjusted(size * 1.25, 0, 0, 0);
}

void FaceButton::keyPressEvent(QKeyEvent* event) {
    if (presses(*event) && !event->isAutoRepeat())
        setDown(true);
    else
        event->ignore();
}

void FaceButton::keyReleaseEvent(QKeyEvent* event) {
    if (presses(*event) && !event->isAutoRepeat() && isDown()) {
        setDown(false); // the click alone would not draw it anew
        click();
    } else {
        event->ignore();
    }
}

bool FaceButton::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip && toolTip().isEmpty() && !wholeCaption_) {
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), text(), this);
        return true;
    }
    return QAbstractButton::event(event);
}

} // namespace kova
