#include "adapters/qt/key_button.h"

namespace kova {

KeyButton::KeyButton(QWidget& board, std::string key, const QString& spoken)
    : FaceButton(board), key_(std::move(key)) {
    setObjectName(board.objectName() + '_' + QString::fromStdString(key_));
    setAccessibleName(spoken);
}

std::optional<TouchPoint> KeyButton::touchPoint() {
    if (size().isEmpty())
        return std::nullopt;
    return TouchPoint{this, QRectF(rect()).center()};
}

} // namespace kova
