#include "adapters/qt/report_grid_layout.h"

#include <algorithm>
#include <cmath>

namespace kova {
namespace {

constexpr double GroupHeight = 40; // design pixels
constexpr double HeaderHeight = 38;
constexpr double RowHeight = 30;
constexpr double ScrollBarWidth = 26;
constexpr double Margin = 6;
constexpr double BorderReach = 14; // to each side

} // namespace

ReportGridLayout::ReportGridLayout(const ReportGrid& grid, const QSize& size, const Scale& designScale,
                                   bool scrollBarShown, std::size_t firstRowShown)
    : scale(designScale), margin(std::round(Margin * scale.smaller())),
      rowHeight(std::floor(RowHeight * scale.y)),
      scrollBarWidth(std::round(ScrollBarWidth * scale.smaller())),
      groupArea(0, 0, size.width(), GroupHeight * scale.y),
      headers(0, groupArea.bottom(), size.width() - (scrollBarShown ? scrollBarWidth : 0),
              HeaderHeight * scale.y),
      grid_(grid), firstRow_(firstRowShown) {
    const double footerHeight = grid.totals().empty() ? 0 : std::round(RowHeight * scale.y * 1.2);
    footer = {0, size.height() - footerHeight, double(size.width()), footerHeight};
    list = {0, headers.bottom(), headers.width(), std::max(0.0, footer.top() - headers.bottom())};
    double characters = 0;
    for (const auto& column : grid.columns())
        characters += column.width;
    edges.push_back(0);
    for (const auto& column : grid.columns())
        edges.push_back(edges.back() + headers.width() * column.width / std::max(characters, 1.0));
}

std::optional<std::size_t> ReportGridLayout::columnAt(double x) const {
    const auto right = std::ranges::upper_bound(edges, x);
    if (right == edges.begin() || right == edges.end())
        return std::nullopt;
    return static_cast<std::size_t>(right - edges.begin()) - 1;
}

std::optional<std::size_t> ReportGridLayout::borderAt(double x) const {
    for (std::size_t column = 0; column + 1 < grid_.columns().size(); ++column)
        if (grid_.columns()[column].resizable &&
            std::abs(x - edges[column + 1]) <= BorderReach * scale.smaller())
            return column;
    return std::nullopt;
}

std::optional<std::size_t> ReportGridLayout::rowAt(const QPointF& point) const {
    if (!list.contains(point))
        return std::nullopt;
    const auto number = firstRow_ + static_cast<std::size_t>((point.y() - list.top()) / rowHeight);
    return number < grid_.rows().size() ? std::optional(number) : std::nullopt;
}

QRectF ReportGridLayout::header(std::size_t column) const {
    return {edges[column], headers.top(), edges[column + 1] - edges[column], headers.height()};
}

QRectF ReportGridLayout::row(std::size_t number) const {
    return {list.left(), list.top() + static_cast<double>(number - firstRow_) * rowHeight, list.width(),
            rowHeight};
}

int ReportGridLayout::characters(double width) const {
    int all = 0;
    for (const auto& column : grid_.columns())
        all += column.width;
    return static_cast<int>(std::lround(width * all / std::max(headers.width(), 1.0)));
}

int ReportGridLayout::fullRows() const {
    return static_cast<int>(list.height() / rowHeight);
}

} // namespace kova
