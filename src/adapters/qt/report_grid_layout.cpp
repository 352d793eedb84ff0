#include "adapters/qt/report_grid_layout.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace kova {
namespace {

constexpr double GroupHeight = 40; // design pixels
constexpr double HeaderHeight = 38;
constexpr double RowHeight = 30;
constexpr double ScrollBarWidth = 26;
constexpr double Margin = 6;
constexpr double BorderReach = 14; // to each side
constexpr double ToolsWidth = 300;

/// Takes from the widest what is too much for all, so that the others keep what they need.
void shrinkWidest(std::vector<double>& widths, double room) {
    std::vector<double> ascending = widths;
    std::ranges::sort(ascending);
    double widest = 0;
    for (std::size_t i = 0; i < ascending.size(); ++i) {
        widest = room / static_cast<double>(ascending.size() - i);
        if (ascending[i] > widest)
            break;
        room -= ascending[i];
        widest = ascending[i];
    }
    for (double& width : widths)
        width = std::min(width, widest);
}

} // namespace

ReportGridLayout::ReportGridLayout(const ReportGrid& grid, const QSize& size, const Scale& designScale,
                                   const std::vector<double>& needs, std::size_t firstRowShown, int covered)
    : scale(designScale), margin(std::round(Margin * scale.smaller())),
      rowHeight(std::floor(RowHeight * scale.y)),
      scrollBarWidth(std::round(ScrollBarWidth * scale.smaller())),
      groupArea(0, 0, size.width() - std::round(ToolsWidth * scale.x), std::round(GroupHeight * scale.y)),
      tools(groupArea.right(), 0, size.width() - groupArea.width(), groupArea.height()),
      headers(0, groupArea.bottom(), size.width() - scrollBarWidth, HeaderHeight * scale.y), grid_(grid),
      firstRow_(firstRowShown) {
    const bool cutShort = grid.brokenOff() && !grid.rows().empty();
    const bool nothing = grid.totals().empty() && grid.searched().empty() && !cutShort;
    const double footerHeight = nothing ? 0 : std::round(RowHeight * scale.y * 1.2);
    footer = {0, size.height() - footerHeight, double(size.width()), footerHeight};
    list = {0, headers.bottom(), headers.width(), std::max(0.0, footer.top() - covered - headers.bottom())};
    placeColumns(needs);
}

/// Columns that nobody resized get what they need and an equal share of the rest.
void ReportGridLayout::placeColumns(std::vector<double> needs) {
    const auto& columns = grid_.columns();
    const bool untouched =
        needs.size() == columns.size() && std::ranges::all_of(columns, [&](const auto& column) {
            return column.width == columns.front().width;
        });
    const double needed = std::accumulate(needs.begin(), needs.end(), 0.0);
    if (needed > headers.width())
        shrinkWidest(needs, headers.width());
    const double spare =
        std::max(0.0, headers.width() - needed) / std::max(static_cast<double>(columns.size()), 1.0);
    std::vector<double> shares;
    for (std::size_t i = 0; i < columns.size(); ++i)
        shares.push_back(untouched ? needs[i] + spare : columns[i].width);
    const double all = std::accumulate(shares.begin(), shares.end(), 0.0);
    edges.push_back(0);
    for (const double share : shares)
        edges.push_back(edges.back() + headers.width() * share / std::max(all, 1.0));
}

std::vector<int> ReportGridLayout::widths() const {
    std::vector<int> result;
    for (std::size_t i = 0; i + 1 < edges.size(); ++i)
        result.push_back(characters(edges[i + 1] - edges[i]));
    return result;
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
