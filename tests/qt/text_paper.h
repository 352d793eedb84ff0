#pragma once
#include <QImage>
#include <QPaintEngine>
#include <QPainter>
#include <QWidget>

#include <algorithm>
#include <map>

namespace kova::test {

/// Keeps each text that is painted on it, and draws all else into a picture.
class TextPaper final : public QImage, private QPaintEngine {
  public:
    struct Text {
        QString words;
        QColor ink, behind; ///< as of then: another control may cover both
        QRectF place;
        int pixels; ///< of the font
    };
    explicit TextPaper(const QSize& pixels)
        : QImage(pixels, Format_RGB32), QPaintEngine(AllFeatures), picture_(pixels, Format_RGB32) {}
    /// With what a window shows.
    explicit TextPaper(QWidget& window) : TextPaper(window.size()) { window.render(this); }
    std::vector<Text> texts;
    [[nodiscard]] const QImage& picture() const { return picture_; }
    [[nodiscard]] QPaintEngine* paintEngine() const override { return const_cast<TextPaper*>(this); }

  private:
    bool begin(QPaintDevice*) override { return inner_.begin(&picture_); }
    bool end() override { return inner_.end(); }
    [[nodiscard]] Type type() const override { return User; }
    void updateState(const QPaintEngineState& now) override { transform_ = now.transform(); }
    void drawPath(const QPainterPath& path) override { ready().drawPath(path); }
    void drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) override {
        mode == PolylineMode ? ready().drawPolyline(points, count) : ready().drawPolygon(points, count);
    }
    void drawPixmap(const QRectF& at, const QPixmap& pixmap, const QRectF& part) override {
        ready().drawPixmap(at, pixmap, part);
    }
    void drawTextItem(const QPointF& at, const QTextItem& item) override {
        const QRectF place = transform_.mapRect(
            QRectF(at.x(), at.y() - item.ascent(), item.width(), item.ascent() + item.descent()));
        const QRect seen = place.toRect() & picture_.rect();
        const bool clipped = !systemClip().isEmpty() && !systemClip().intersects(seen);
        if (!item.text().trimmed().isEmpty() && !seen.isEmpty() && !clipped)
            texts.push_back({item.text().replace(QChar::Nbsp, u' '), painter()->pen().color(), mostOf(seen),
                             place, item.font().pixelSize()});
    }
    QPainter& ready() {
        inner_.resetTransform();
        if (!systemClip().isEmpty())
            inner_.setClipRegion(systemClip());
        inner_.setTransform(transform_);
        inner_.setPen(painter()->pen());
        inner_.setBrush(painter()->brush());
        return inner_;
    }
    /// The colour of most pixels there.
    [[nodiscard]] QColor mostOf(const QRect& place) const {
        std::map<QRgb, int> counted;
        for (int y = place.top(); y <= place.bottom(); ++y)
            for (int x = place.left(); x <= place.right(); ++x)
                ++counted[picture_.pixel(x, y)];
        return std::ranges::max_element(counted, {}, [](const auto& one) { return one.second; })->first;
    }

    QImage picture_;
    QTransform transform_; ///< onto the whole paper
    QPainter inner_;
};

} // namespace kova::test
