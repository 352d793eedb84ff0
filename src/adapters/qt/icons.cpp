#include "adapters/qt/icons.h"

#include "adapters/qt/look.h"

#include <QPainter>

namespace kova::look {
namespace {

constexpr double Grid = 16; // the shapes below are given on a square of so many units

QColor iconColor(PushButton::Icon icon, const QColor& caption) {
    if (!isDark(caption))
        return caption;
    switch (icon) {
    case PushButton::Icon::Cancel:
        return {178, 34, 44};
    case PushButton::Icon::Confirm:
        return {24, 122, 62};
    default:
        return {60, 74, 92};
    }
}

/// A cross.
void drawCancel(QPainter& painter) {
    painter.drawLine(QPointF(3, 3), QPointF(13, 13));
    painter.drawLine(QPointF(13, 3), QPointF(3, 13));
}

/// A tick.
void drawConfirm(QPainter& painter) {
    painter.drawPolyline(QPolygonF({{2.5, 8.5}, {6.5, 12.5}, {13.5, 4}}));
}

/// A bin with its lid.
void drawClear(QPainter& painter) {
    painter.drawLine(QPointF(2, 4), QPointF(14, 4));
    painter.drawPolyline(QPolygonF({{5.8, 3.8}, {6.2, 1.8}, {9.8, 1.8}, {10.2, 3.8}}));
    painter.drawPolyline(QPolygonF({{3.4, 4.2}, {4.4, 14.4}, {11.6, 14.4}, {12.6, 4.2}}));
    for (const double x : {6.4, 9.6})
        painter.drawLine(QPointF(x, 7), QPointF(x, 11.8));
}

} // namespace

void drawIcon(QPainter& painter, const QRectF& area, PushButton::Icon icon, const QColor& caption) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(area.topLeft());
    painter.scale(area.width() / Grid, area.height() / Grid);
    const double stroke = icon == PushButton::Icon::Clear ? 1.4 : 2.6;
    painter.setPen(QPen(iconColor(icon, caption), stroke, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    switch (icon) {
    case PushButton::Icon::Cancel:
        drawCancel(painter);
        break;
    case PushButton::Icon::Confirm:
        drawConfirm(painter);
        break;
    case PushButton::Icon::Clear:
        drawClear(painter);
        break;
    case PushButton::Icon::None:
        break;
    }
    painter.restore();
}

} // namespace kova::look
