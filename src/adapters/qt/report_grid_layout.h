#pragma once
#include "adapters/qt/look.h"
#include "widgets/report_grid.h"

#include <QPointF>
#include <QRectF>
#include <QSize>

#include <optional>
#include <vector>

namespace kova {

/// Where the parts of a list are drawn, in pixels, and what lies under a finger.
struct ReportGridLayout {
    /// `needs` are the widths that the columns' texts need, in pixels; `firstRow` is the row at the top of
    /// the list area; `covered` are pixels below the rows that are needed for something else.
    ReportGridLayout(const ReportGrid& grid, const QSize& size, const Scale& designScale,
                     const std::vector<double>& needs, std::size_t firstRowShown, int covered);

    [[nodiscard]] std::optional<std::size_t> columnAt(double x) const;
    /// The column whose right border, if it can be moved, is within reach of a finger.
    [[nodiscard]] std::optional<std::size_t> borderAt(double x) const;
    /// Existing rows only.
    [[nodiscard]] std::optional<std::size_t> rowAt(const QPointF& point) const;
    [[nodiscard]] QRectF header(std::size_t column) const;
    [[nodiscard]] QRectF row(std::size_t number) const;
    /// Characters of a column that is so many pixels wide.
    [[nodiscard]] int characters(double width) const;
    /// As drawn, in characters.
    [[nodiscard]] std::vector<int> widths() const;
    [[nodiscard]] int fullRows() const;

    Scale scale;
    double margin, rowHeight, scrollBarWidth;
    /// The tools stand beside the group-by area. The footer is empty with nothing to say. Headers and rows
    /// leave the scroll bar's place free, also while it is not needed, so that columns stay where they are.
    QRectF groupArea, tools, headers, list, footer;
    std::vector<double> edges; ///< left edges of the columns, and the right edge of the last

  private:
    void placeColumns(std::vector<double> needs);
    const ReportGrid& grid_;
    std::size_t firstRow_;
};

} // namespace kova
