#include "adapters/qt/button_grid_cells.h"

#include <algorithm>
#include <cmath>

namespace kova {
namespace {

// Design pixels.
constexpr double Gap = 3.5;      // half of what lies between two faces
constexpr double Finger = 42;    // a cell's least side: 9 mm on a panel of 10 inches
constexpr double Legible = 60;   // the least width, for a caption
constexpr double Slop = 13;      // what a finger moves while it touches: 3 mm
constexpr double Bar = 4;        // which shows what part is in sight
constexpr double MostGap = 0.09; // of a cell: small cells keep their faces

} // namespace

// A grid that was given too few cells for its buttons gets more rows. It pans along the side that grows.
void ButtonGridCells::arrange(const ButtonGrid& grid, const QSizeF& size, const Scale& scale) {
    count_ = static_cast<int>(grid.buttons().size());
    size_ = size;
    scale_ = scale;
    const int columns = std::max(1, grid.columns());
    const int rows = std::max({1, grid.rows(), (count_ + columns - 1) / columns});
    const double bar = Bar * scale.smaller();
    const double finger = Finger * scale.mean();
    const double legible = std::max(finger, Legible * scale.smaller());
    rows_.arrange(rows, size.height(), rows == 1 ? 0 : finger);
    columns_.arrange(columns, size.width() - (rows_.pans() ? bar : 0), rows == 1 ? legible : 0);
    if (columns_.pans())
        rows_.arrange(rows, size.height() - bar, 0);
}

void ButtonGridCells::rewind() {
    columns_.panTo(0);
    rows_.panTo(0);
}

QRectF ButtonGridCells::room() const {
    const double bar = Bar * scale_.smaller();
    return {0, 0, size_.width() - (rows_.pans() ? bar : 0), size_.height() - (columns_.pans() ? bar : 0)};
}

// Cells have fractions of pixels, so that each can be touched however many there are.
QRectF ButtonGridCells::cell(int index) const {
    return {columns_.start(index % columns()), rows_.start(index / columns()), columns_.cell(), rows_.cell()};
}

QRectF ButtonGridCells::face(int index) const {
    const QRectF area = cell(index);
    const double gap = std::min(Gap * scale_.smaller(), std::min(area.width(), area.height()) * MostGap);
    return area.adjusted(gap, gap, -gap, -gap);
}

bool ButtonGridCells::inSight(int index) const {
    return cell(index).intersects(room());
}

int ButtonGridCells::at(const QPointF& point) const {
    if (!QRectF(QPointF(), size_).contains(point))
        return -1;
    const int index = rows_.at(point.y()) * columns() + columns_.at(point.x());
    return index < count_ ? index : -1;
}

QRectF ButtonGridCells::barBetween(double from, double to) const {
    const double thick = Bar * scale_.smaller(); // also left free at its ends: the grid's corners are round
    const double length = (columns_.pans() ? size_.width() : size_.height()) - 2 * thick;
    const double start = thick + from * length;
    if (columns_.pans())
        return {start, size_.height() - thick, (to - from) * length, thick};
    return {size_.width() - thick, start, thick, (to - from) * length};
}

QRectF ButtonGridCells::bar() const {
    return barBetween(0, 1);
}

QRectF ButtonGridCells::barInSight() const {
    const CellStrip& strip = columns_.pans() ? columns_ : rows_;
    return barBetween(strip.first() / strip.count(), (strip.first() + strip.inSight()) / strip.count());
}

bool ButtonGridCells::meansPanning(const QPointF& moved) const {
    const double slop = Slop * scale_.mean();
    return (columns_.pans() && std::abs(moved.x()) > slop) || (rows_.pans() && std::abs(moved.y()) > slop);
}

void ButtonGridCells::panBy(const QPointF& distance) {
    columns_.panTo(columns_.first() - distance.x() / columns_.cell());
    rows_.panTo(rows_.first() - distance.y() / rows_.cell());
}

void ButtonGridCells::panByCells(double cells) {
    panBy({cells * columns_.cell(), cells * rows_.cell()});
    settle();
}

void ButtonGridCells::settle() {
    columns_.settle();
    rows_.settle();
}

void ButtonGridCells::show(int index) {
    columns_.show(index % columns());
    rows_.show(index / columns());
}

} // namespace kova
