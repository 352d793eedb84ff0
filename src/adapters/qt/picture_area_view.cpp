#include "adapters/qt/picture_area_view.h"

#include <QPainter>

#include <algorithm>

namespace kova {

PictureAreaView::PictureAreaView(PictureArea& picture, WindowFrame& frame, QWidget& parent)
    : QWidget(&parent), ModelView(picture, frame) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    nameWidget(*this, {});
}

void PictureAreaView::paintEvent(QPaintEvent*) {
    if (model() == nullptr)
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(QRectF(rect()).center());
    const double size = std::min(width(), height()) / 100.0;
    painter.scale(size, size);
    const QColor disc = look::accentOn(backdrop());
    painter.setPen(Qt::NoPen);
    painter.setBrush(disc);
    painter.drawEllipse(QPointF(0, 0), 46, 46);
    painter.setBrush(look::readableOn(disc, Qt::white));
    painter.drawEllipse(QPointF(0, -21), 7, 7);
    painter.drawRoundedRect(QRectF(-6, -8, 12, 36), 4, 4);
}

} // namespace kova
