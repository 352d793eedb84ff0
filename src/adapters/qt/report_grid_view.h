#pragma once
#include "adapters/qt/control_view.h"
#include "widgets/report_grid.h"

#include <QElapsedTimer>
#include <QScrollBar>
#include <QWidget>

namespace kova {

/// The list of movements: group-by area, column headers, rows, and the text of an empty list. Only the rows
/// in sight are drawn. A touch on a header sorts, a long one groups by that column; a touch on the group-by
/// area ungroups. A finger scrolls by dragging.
class ReportGridView final : public QWidget, public ModelView<ReportGrid> {
  public:
    ReportGridView(ReportGrid& grid, WindowFrame& frame, QWidget& parent);
    QWidget& widget() override { return *this; }

  protected:
    void layOut() override;
    void showProperty(Property property) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

  private:
    [[nodiscard]] QRectF groupArea() const;
    [[nodiscard]] QRectF headerArea() const;
    [[nodiscard]] QRectF listArea() const;
    [[nodiscard]] double rowHeight() const;
    /// Left edges of the columns, and the right edge of the last; the columns share the whole width.
    [[nodiscard]] std::vector<double> edges() const;
    [[nodiscard]] QString groupText() const;
    void fitScrollBar();
    void paintHeaders(QPainter& painter) const;
    void paintRows(QPainter& painter) const;
    void paintRow(QPainter& painter, const ReportGrid::Row& row, const QRectF& area,
                  const std::vector<double>& columns) const;

    QScrollBar scrollBar_{Qt::Vertical, this};
    QElapsedTimer pressed_;
    QPointF pressedAt_;
    int scrolledFrom_ = 0;
};

} // namespace kova
