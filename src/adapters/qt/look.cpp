#include "adapters/qt/look.h"

#include "adapters/qt/caption.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QHash>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace kova::look {
namespace {

constexpr double PixelsPerPoint = 96.0 / 72.0;
constexpr double CornerRadius = 5; // design pixels, as those below
constexpr double CheckRadius = 8;
// A text colour that a scheme fixes stays as long as it can be made out at all; what replaces it, and every
// pair of our own, has the 4.5 to 1 that WCAG 2.1 asks of text (1.4.3).
constexpr double LeastOfAScheme = 3;
constexpr double DeepFace = 0.1; // luminance; a face below it becomes lighter under the finger

double luminance(const QColor& color) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

// Condensed DejaVu runs as wide as Tahoma, for which captions and widths were chosen.
QString installedFamily(const QString& wanted) {
    for (const QString& one : {wanted, QString("DejaVu Sans Condensed"), QString("Noto Sans")})
        if (QFontDatabase::hasFamily(one))
            return one;
    return "DejaVu Sans";
}

// Asking the font database takes longer than drawing the text does.
QString family(const QString& wanted) {
    static QHash<QString, QString> known;
    auto found = known.find(wanted);
    if (found == known.end())
        found = known.insert(wanted, installedFamily(wanted));
    return *found;
}

int flags(const TextStyle& style) {
    return static_cast<int>(style.alignment) | (style.wrapped ? Qt::TextWordWrap : Qt::TextSingleLine);
}

bool fits(const QString& text, const QFont& font, const QSizeF& room, const TextStyle& style) {
    const QRectF unlimitedHeight(0, 0, room.width(), 1e6);
    const QRectF needed = QFontMetricsF(font).boundingRect(unlimitedHeight, flags(style), text);
    return needed.width() <= room.width() + 0.5 && needed.height() <= room.height() + 0.5;
}

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
    return isDark(face) ? QColor(255, 255, 255) : QColor(16, 42, 67);
}

} // namespace

QColor toQt(Color color) {
    return {color.red, color.green, color.blue};
}

Qt::Alignment toQt(Alignment alignment) {
    switch (alignment) {
    case Alignment::Center:
        return Qt::AlignHCenter;
    case Alignment::Right:
        return Qt::AlignRight;
    case Alignment::Left:
        break;
    }
    return Qt::AlignLeft;
}

bool isDark(const QColor& color) {
    return luminance(color) < 0.25;
}

QColor mixed(const QColor& first, const QColor& second, double share) {
    const auto part = [share](float a, float b) {
        return static_cast<float>(static_cast<double>(a) * (1 - share) + static_cast<double>(b) * share);
    };
    return QColor::fromRgbF(part(first.redF(), second.redF()), part(first.greenF(), second.greenF()),
                            part(first.blueF(), second.blueF()));
}

double contrast(const QColor& a, const QColor& b) {
    const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
    return (lighter + 0.05) / (darker + 0.05);
}

QColor readableOn(const QColor& background, const QColor& wanted) {
    if (contrast(background, wanted) >= LeastOfAScheme)
        return wanted;
    return inkOn(background);
}

QColor inkOn(const QColor& background) {
    const QColor black(Qt::black);
    const QColor white(Qt::white);
    return contrast(background, black) > contrast(background, white) ? black : white;
}

QColor borderOn(const QColor& background) {
    return isDark(background) ? mixed(background, Qt::white, 0.35)
                              : mixed(background, QColor(40, 55, 75), 0.35);
}

QColor accentOn(const QColor& background) {
    return isDark(background) ? QColor(255, 214, 102) : QColor(15, 98, 172);
}

QFont font(const Font& design, const Scale& scale) {
    QFont result(family(QString::fromStdString(design.face)));
    result.setPixelSize(
        std::max(6, static_cast<int>(std::lround(design.points * PixelsPerPoint * scale.smaller()))));
    result.setBold(design.bold);
    return result;
}

QColor filling(const Face& face) {
    QColor color = face.color;
    if (face.down && luminance(color) < DeepFace)
        color = mixed(color, Qt::white, 0.2);
    else if (face.down) // its text, black or white, stays as easy to read
        color = isDark(color) ? mixed(color, Qt::black, 0.3) : mixed(color, QColor(30, 60, 100), 0.25);
    if (!face.enabled)
        color = mixed(color, QColor(150, 155, 160), 0.3);
    return color;
}

void drawFace(QPainter& painter, const QRectF& area, const Face& face) {
    const QColor fill = filling(face);
    const double line = std::max(1.0, face.unit);
    const double radius = std::min({CornerRadius * face.unit, area.width() / 4, area.height() / 4});
    QRectF shape = area.adjusted(line / 2, line / 2, -line / 2, -line / 2);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    if (!face.flat && !face.down && face.enabled) { // a soft edge below: it can be pushed in
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(0, 0, 0, 45));
        painter.drawRoundedRect(shape.translated(0, line * 0.9).adjusted(0, line, 0, 0), radius, radius);
        shape.adjust(0, 0, 0, -line);
    }
    Qt::PenStyle outline = face.enabled ? Qt::SolidLine : Qt::DashLine;
    painter.setPen(QPen(borderOn(fill), line, outline));
    painter.setBrush(fill);
    painter.drawRoundedRect(shape, radius, radius);
    if (face.marked) {
        const double thick = std::min(line * 3, std::min(shape.width(), shape.height()) / 6);
        const double inset = thick / 2;
        painter.setPen(QPen(markOn(fill), thick));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(shape.adjusted(inset, inset, -inset, -inset), radius, radius);
        const bool small = isLow(area, face.unit) && area.width() < 2 * area.height(); // all for the caption
        const double disc =
            std::min((small ? 5 : CheckRadius) * face.unit, std::min(shape.width(), shape.height()) / 4);
        const double inside = small ? disc / 2 : disc + thick;
        drawCheck(painter, shape.topRight() + QPointF(-inside, inside), disc, markOn(fill));
    }
    if (face.focused) {
        painter.setPen(QPen(accentOn(fill), line * 2));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(shape.adjusted(line, line, -line, -line), radius, radius);
    }
    painter.restore();
}

QRectF captionArea(const QRectF& area, const Face& face) {
    const double margin = std::min(4 * face.unit, std::min(area.width(), area.height()) / 10);
    QRectF inside = area.adjusted(margin, margin, -margin, -margin);
    const double check = CheckRadius * 1.6 * face.unit;
    if (!isLow(area, face.unit)) // marked or not, so that a caption keeps its size
        inside.adjust(0, check, 0, -check);
    else if (face.marked && area.width() > 4 * check)
        inside.adjust(check, 0, -check, 0);
    return inside;
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

QFont fitted(const QString& text, QFont font, const QSizeF& room, const TextStyle& style) {
    int pixels = font.pixelSize();
    while (pixels > style.smallestPixels && !fits(text, font, room, style))
        font.setPixelSize(--pixels);
    return font;
}

void drawText(QPainter& painter, const QRectF& area, const QString& text, const QFont& font,
              const TextStyle& style) {
    const QFont size = fitted(text, font, area.size(), style);
    painter.setFont(size);
    if (fits(text, size, area.size(), style))
        painter.drawText(area, flags(style), text);
    else
        drawCaption(painter, area, cutCaption({text, area.size()}, size), style.alignment);
}

} // namespace kova::look
