#include "text_paper.h"

#include <algorithm>
#include <map>

namespace kova::test {
namespace {

/// The colour of most pixels there.
QColor mostOf(const QImage& picture, const QRect& place) {
    std::map<QRgb, int> counted;
    for (int y = place.top(); y <= place.bottom(); ++y)
        for (int x = place.left(); x <= place.right(); ++x)
            ++counted[picture.pixel(x, y)];
    return std::ranges::max_element(counted, {}, [](const auto& one) { return one.second; })->first;
}

} // namespace

std::string TextPaper::words() const {
    QStringList all;
    for (const Text& text : texts)
        all << text.words;
    return all.join('|').toStdString();
}

int TextPaper::metric(PaintDeviceMetric which) const {
    switch (which) {
    case PdmWidth:
        return picture_.width();
    case PdmHeight:
        return picture_.height();
    case PdmDepth:
        return picture_.depth();
    case PdmDevicePixelRatio:
        return 1;
    case PdmDevicePixelRatioScaled:
        return static_cast<int>(devicePixelRatioFScale());
    default:
        return 96; // dots per inch
    }
}

void TextPaper::drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) {
    if (mode == PolylineMode)
        ready().drawPolyline(points, count);
    else
        ready().drawPolygon(points, count);
}

void TextPaper::drawTextItem(const QPointF& at, const QTextItem& item) {
    const QRectF place = transform_.mapRect(
        QRectF(at.x(), at.y() - item.ascent(), item.width(), item.ascent() + item.descent()));
    const QRect seen = place.toRect() & picture_.rect();
    const bool clipped = !systemClip().isEmpty() && !systemClip().intersects(seen);
    if (!item.text().trimmed().isEmpty() && !seen.isEmpty() && !clipped)
        texts.push_back({item.text(), painter()->pen().color(), mostOf(picture_, seen), place});
}

QPainter& TextPaper::ready() {
    inner_.resetTransform();
    if (!systemClip().isEmpty())
        inner_.setClipRegion(systemClip());
    inner_.setTransform(transform_);
    inner_.setPen(painter()->pen());
    inner_.setBrush(painter()->brush());
    return inner_;
}

} // namespace kova::test
