#pragma once
#include <QImage>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>
#include <QWidget>

namespace kova::test {

/// Keeps each text that is painted on it, and draws all else into a picture.
class TextPaper final : public QPaintDevice, private QPaintEngine {
  public:
    struct Text {
        QString words;
        QColor ink, behind; ///< as of then: another control may cover both
        QRectF place;
    };
    explicit TextPaper(const QSize& pixels)
        : QPaintEngine(AllFeatures), picture_(pixels, QImage::Format_RGB32) {}
    /// With what a window shows.
    explicit TextPaper(QWidget& window) : TextPaper(window.size()) { window.render(this); }

    std::vector<Text> texts;
    /// All of them, in the order painted.
    [[nodiscard]] std::string words() const;
    [[nodiscard]] QPaintEngine* paintEngine() const override { return const_cast<TextPaper*>(this); }

  private:
    [[nodiscard]] int metric(PaintDeviceMetric which) const override;
    bool begin(QPaintDevice*) override { return inner_.begin(&picture_); }
    bool end() override { return inner_.end(); }
    [[nodiscard]] Type type() const override { return User; }
    void updateState(const QPaintEngineState& now) override { transform_ = now.transform(); }
    void drawPath(const QPainterPath& path) override { ready().drawPath(path); }
    void drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) override;
    void drawPixmap(const QRectF& at, const QPixmap& pixmap, const QRectF& part) override {
        ready().drawPixmap(at, pixmap, part);
    }
    void drawTextItem(const QPointF& at, const QTextItem& item) override;
    QPainter& ready();

    QImage picture_;
    QTransform transform_; ///< onto the whole paper
    QPainter inner_;
};

} // namespace kova::test
