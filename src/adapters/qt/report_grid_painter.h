#pragma once
#include "adapters/qt/report_grid_layout.h"

#include <QPainter>

namespace kova {

/// What a finger is doing to a list, to be seen while it does.
struct ReportGridTouch {
    std::optional<std::size_t> pressedHeader;
    std::optional<std::size_t> draggedHeader; ///< on its way to the group-by area
    std::optional<std::size_t> movedBorder;
    QPointF at;
};

/// The widths that the captions and the first texts of the columns need, in pixels.
std::vector<double> neededWidths(const ReportGrid& grid, const Scale& scale);

/// Draws a list; of its rows only those in sight.
class ReportGridPainter {
  public:
    ReportGridPainter(QPainter& painter, const ReportGrid& grid, const ReportGridLayout& layout)
        : painter_(painter), grid_(grid), layout_(layout) {}
    void paint(std::size_t firstRow, const ReportGridTouch& touch, bool enabled);

  private:
    void paintGroupArea(bool target);
    void paintHeaders(const ReportGridTouch& touch);
    void paintDragged(const ReportGridTouch& touch);
    void paintRows(std::size_t firstRow);
    void paintRecord(std::size_t record, const QRectF& area);
    void paintGroup(const ReportGrid::Group& group, const QRectF& area);
    void paintFooter();
    void write(const QRectF& area, const QString& words, const QFont& textFont,
               Qt::Alignment side = Qt::AlignLeft);
    [[nodiscard]] QFont font(const Font& design, bool bold) const;

    QPainter& painter_;
    const ReportGrid& grid_;
    const ReportGridLayout& layout_;
};

} // namespace kova
