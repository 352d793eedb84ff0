#include "adapters/qt/key_button.h"

#include <QTouchEvent>

namespace kova {

KeyButton::KeyButton(QWidget& board, std::string key, const QString& spoken)
    : FaceButton(board), key_(std::move(key)) {
    setObjectName(board.objectName() + '_' + QString::fromStdString(key_));
    setAccessibleName(spoken);
    setAttribute(Qt::WA_AcceptTouchEvents);
}

bool KeyButton::event(QEvent* event) {
    switch (event->type()) {
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TouchCancel:
        return takeTouch(static_cast<QTouchEvent&>(*event));
    default:
        return FaceButton::event(event);
    }
}

bool KeyButton::takeTouch(const QTouchEvent& event) {
    if (!isEnabled())
        return false;
    const bool inside = event.pointCount() > 0 && QRectF(rect()).contains(event.points().first().position());
    const bool wasDown = isDown();
    setDown(inside && event.type() != QEvent::TouchEnd && event.type() != QEvent::TouchCancel);
    if (event.type() == QEvent::TouchEnd && wasDown && inside)
        click(); // which alone would not draw the key anew
    return true;
}

std::optional<TouchPoint> KeyButton::touchPoint() {
    if (size().isEmpty())
        return std::nullopt;
    return TouchPoint{this, QRectF(rect()).center()};
}

} // namespace kova
