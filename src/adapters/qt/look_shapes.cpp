#include "adapters/qt/look.h"

#include <QPainter>

#include <algorithm>

namespace kova::look {
namespace {

// Design pixels.
constexpr double CheckRadius = 8;
constexpr double MarkRing = 1.6;
constexpr double AccentRing = 2;
constexpr double FocusRing = 2;
constexpr double CaptionMargin = 3.1; // clear of border and mark, and no more: captions need the room
constexpr double DeepFace = 0.1;      // luminance; a face below it becomes lighter under the finger

void drawCheck(QPainter& painter, const QPointF& center, double radius, const QColor& disc) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(disc);
    painter.drawEllipse(center, radius, radius);
    painter.setPen(
        QPen(readableOn(disc, Qt::white), radius * 0.3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(
        QPolygonF({center + QPointF(-0.45, 0.05) * radius, center + QPointF(-0.1, 0.4) * radius,
                   center + QPointF(0.5, -0.35) * radius}));
}

/// Too low for a mark above the caption.
bool isLow(const QRectF& face, double unit) {
    return face.height() <= 10 * CheckRadius * unit;
}

QColor markOn(const QColor& face) {
    return isDark(face) ? QColor(Qt::white) : palette::CheckMark;
}

constexpr double Grid = 16; // the shapes below are given on a square of so many units

QColor iconColor(PushButton::Icon icon, const QColor& caption) {
    if (!isDark(caption))
        return caption;
    switch (icon) {
    case PushButton::Icon::Cancel:
        return palette::CancelIcon;
    case PushButton::Icon::Confirm:
        return palette::ConfirmIcon;
    default:
        return palette::OtherIcon;
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

QColor filling(const Face& face) {
    QColor color = face.color;
    if (face.down && luminance(color) < DeepFace)
        color = mixed(color, Qt::white, 0.2);
    else if (face.down) // its text, black or white, stays as easy to read
        color = isDark(color) ? mixed(color, Qt::black, 0.3) : mixed(color, palette::Pressed, 0.25);
    if (!face.enabled)
        color = mixed(color, palette::Disabled, 0.3);
    return color;
}

void drawFace(QPainter& painter, const QRectF& area, const Face& face) {
    const QColor fill = filling(face);
    const double line = lineWidth(face.unit);
    const double radius = std::min({FaceRadius * face.unit, area.width() / 4, area.height() / 4});
    QRectF whole = onPixels(area);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    if (!face.flat && !face.down && face.enabled) { // a soft edge below: it can be pushed in
        painter.setPen(Qt::NoPen);
        painter.setBrush(palette::Shadow);
        painter.drawRoundedRect(whole.adjusted(0, 2 * line, 0, 0), radius, radius);
        whole.adjust(0, 0, 0, -line);
    }
    // Inside what has been drawn so far.
    const auto drawRing = [&](const QColor& color, double width, Qt::PenStyle style = Qt::SolidLine) {
        painter.setPen(QPen(color, width, style));
        const QRectF middle = whole.adjusted(width / 2, width / 2, -width / 2, -width / 2);
        painter.drawRoundedRect(middle, radius, radius);
        painter.setBrush(Qt::NoBrush);
        whole.adjust(width, width, -width, -width);
    };
    painter.setBrush(fill);
    const QColor backdrop = face.backdrop.isValid() ? face.backdrop : fill;
    const bool markAlone = face.marked && standsOut(markOn(fill), backdrop);
    drawRing(markAlone ? markOn(fill) : borderOn(fill, backdrop), line,
             face.enabled ? Qt::SolidLine : Qt::DashLine);
    if (face.accented && face.enabled)
        drawRing(accentOn(fill), AccentRing * face.unit);
    if (face.marked) {
        const double thick = std::min(MarkRing * face.unit, std::min(whole.width(), whole.height()) / 6);
        drawRing(markOn(fill), thick);
        const bool small =
            isLow(area, face.unit) && area.width() < 2 * area.height(); // the caption needs the room
        const double disc =
            std::min((small ? 5 : CheckRadius) * face.unit, std::min(whole.width(), whole.height()) / 4);
        const double inside = small ? disc / 2 : disc;
        drawCheck(painter, whole.topRight() + QPointF(-inside, inside), disc, markOn(fill));
    }
    if (face.focused)
        drawRing(face.accented ? markOn(fill) : accentOn(fill), FocusRing * face.unit);
    painter.restore();
}

QRectF captionArea(const QRectF& area, const Face& face) {
    const double wanted = CaptionMargin + (face.accented ? AccentRing : 0);
    const double margin = std::min(wanted * face.unit, std::min(area.width(), area.height()) / 10);
    QRectF inside = area.adjusted(margin, margin, -margin, -margin);
    const double check = CheckRadius * 1.6 * face.unit;
    if (!isLow(area, face.unit)) // marked or not, so that a caption keeps its size
        inside.adjust(0, check, 0, -check);
    else if (face.marked && area.width() > 4 * check)
        inside.adjust(check, 0, -check, 0);
    return inside;
}

void drawMissing(QPainter& painter, const QPointF& left, double unit, const QColor& background) {
    constexpr double Gap = 5;
    const double half = (MissingWidth - Gap) / 2 * unit;
    const QPointF middle = left + QPointF(Gap * unit + half, 0);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(warningOn(background));
    painter.drawPolygon(QPolygonF{middle - QPointF(half, 0), middle - QPointF(0, half),
                                  middle + QPointF(half, 0), middle + QPointF(0, half)});
}

void drawInformation(QPainter& painter, const QRectF& area, const QColor& background) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(area.center());
    const double size = std::min(area.width(), area.height()) / 100.0;
    painter.scale(size, size);
    const QColor disc = accentOn(background);
    painter.setPen(Qt::NoPen);
    painter.setBrush(disc);
    painter.drawEllipse(QPointF(0, 0), 46, 46);
    painter.setBrush(readableOn(disc, Qt::white));
    painter.drawEllipse(QPointF(0, -21), 7, 7);
    painter.drawRoundedRect(QRectF(-6, -8, 12, 36), 4, 4);
    painter.restore();
}

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
