#pragma once
#include "adapters/qt/control_view.h"
#include "widgets/report_grid.h"

#include <QWidget>

namespace kova {

/// The list of movements: group-by area, column headers, and the text of an empty list.
class ReportGridView final : public QWidget, public ModelView<ReportGrid> {
  public:
    ReportGridView(ReportGrid& grid, WindowFrame& frame, QWidget& parent);
    QWidget& widget() override { return *this; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void paintGroupArea(QPainter& painter, const QRectF& area) const;
    void paintHeaders(QPainter& painter, const QRectF& area) const;
};

} // namespace kova
