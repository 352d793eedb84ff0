#pragma once
#include "adapters/qt/report_grid_layout.h"

#include "screen/spoken_name.h"

#include <QPainter>

namespace kova {

/// Row -1 has the column headers.
struct ReportGridPlace {
    int row, column;
    friend bool operator==(const ReportGridPlace&, const ReportGridPlace&) = default;
};

/// What a finger or a key is doing to a list, to be seen while it does.
struct ReportGridTouch {
    std::optional<ReportGridPlace> focus; ///< which the keys have reached
    std::optional<std::size_t> pressedHeader;
    std::optional<std::size_t> draggedHeader; ///< on its way to the group-by area
    std::optional<std::size_t> movedBorder;
    QPointF at;
};

/// The widths that the captions, and the first and last texts, of the columns need, in pixels.
std::vector<double> neededWidths(const ReportGrid& grid, const Scale& scale);

/// Draws a list; of its rows only those in sight.
class ReportGridPainter {
  public:
    ReportGridPainter(QPainter& painter, const ReportGrid& grid, const ReportGridLayout& layout,
                      const Wording& words);
    void paint(std::size_t firstRow, const ReportGridTouch& touch, bool enabled);

  private:
    void paintGroupArea(bool target);
    void paintHeaders(const ReportGridTouch& touch);
    void paintDragged(const ReportGridTouch& touch);
    void paintRows(std::size_t firstRow);
    void paintRecord(std::size_t record, const QRectF& area);
    void paintGroup(const ReportGrid::Group& group, const QRectF& area);
    void paintAmount(std::size_t record, const QRectF& cell);
    void paintFooter();
    void paintFocus(const ReportGridPlace& place);
    /// A cell's text with the letters marked that are searched for; given the text's left edge.
    void writeCell(double left, const QRectF& cell, const QString& words);
    void write(const QRectF& area, const QString& words, const QFont& textFont,
               Qt::Alignment side = Qt::AlignLeft);
    [[nodiscard]] QFont font(const Font& design, bool bold) const;

    QPainter& painter_;
    const ReportGrid& grid_;
    const ReportGridLayout& layout_;
    const Wording& words_;
    QFont rowFont_;
    QFontMetricsF metrics_;
    QColor ink_; ///< of what is listed
};

} // namespace kova
