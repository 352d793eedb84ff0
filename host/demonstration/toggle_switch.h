#pragma once
#include <QAbstractButton>

namespace kova {

/// A switch with its caption, and below that the name of what it switches. The whole row can be touched.
class ToggleSwitch final : public QAbstractButton {
  public:
    explicit ToggleSwitch(const QString& name, QWidget* parent = nullptr);
    void setScale(double scale);
    [[nodiscard]] QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void paintTexts(QPainter& painter, const QRect& area) const;
    void paintSwitch(QPainter& painter, const QRectF& track) const;
    QString name_;
    double scale_ = 1;
};

} // namespace kova
