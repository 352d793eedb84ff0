#pragma once
#include "adapters/qt/look.h"
#include "widgets/notices.h"

#include <QWidget>

#include <functional>

namespace kova {

/// Draws an entry as it would be sent: the ways of the money on the left, the amount large on the right.
class ReadBackView final : public QWidget {
  public:
    /// `backdrop` tells what colour lies behind it, which may change.
    ReadBackView(QWidget& parent, std::function<QColor()> backdrop);
    void show(const ReadBack::Content& content, const QRect& place, const Scale& scale);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    /// Returns what is left for the amount.
    QRectF paintWays(QPainter& painter, QRectF area) const;
    void paintAmount(QPainter& painter, const QRectF& area) const;
    ReadBack::Content content_;
    Scale scale_;
    std::function<QColor()> backdrop_;
};

} // namespace kova
