#pragma once
#include "adapters/qt/control_view.h"
#include "adapters/qt/report_grid_painter.h"
#include "widgets/report_grid.h"

#include <QScrollBar>
#include <QTimer>
#include <QWidget>

namespace kova {

/// The list of movements: group-by area, column headers, rows, sums, and the text of an empty list.
///
/// A touch on a header sorts; a long one, or a drag into the group-by area, groups by that column; the border
/// between two headers moves. A touch on the group-by area ungroups, on a group's header collapses it, on a
/// row selects it; a long touch on the rows, or a right click, opens a menu. A finger scrolls by dragging.
class ReportGridView final : public QWidget, public ModelView<ReportGrid> {
  public:
    ReportGridView(ReportGrid& grid, WindowFrame& frame, QWidget& parent);
    QWidget& widget() override { return *this; }
    QAccessibleInterface* makeAccessible() override;

    // For assistive technology. Row -1 has the column headers.
    struct CellPlace {
        int row, column;
    };
    [[nodiscard]] const ReportGrid* shownGrid() const { return model(); } ///< null when detached
    [[nodiscard]] QRectF cell(int row, int column) const;                 ///< empty when out of sight
    [[nodiscard]] CellPlace cellAt(const QPointF& point) const;           ///< row -2 for none
    void touchCell(int row, int column);

  protected:
    void layOut() override;
    void showProperty(Property property) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

  private:
    /// What a press has become so far. A finger that moves away from where it began drags, and no longer
    /// touches; a long touch is finished before the finger goes up.
    enum class Press { None, Touch, Drag, Finished };
    [[nodiscard]] ReportGridLayout layout() const;
    void fitScrollBar();
    void onLongTouch();
    void finishTouch(const QPointF& at, ReportGrid::Extent extent);
    void openMenu(const QPoint& at);
    void copySelection();
    void saveList();
    void showSaved(const QString& file, const QString& failure);

    QScrollBar scrollBar_{Qt::Vertical, this};
    std::vector<double> needs_; ///< widths of the columns
    QTimer longTouch_;
    Press press_ = Press::None;
    ReportGridTouch touch_;
    QPointF pressedAt_;
    int scrolledFrom_ = 0;
};

} // namespace kova
