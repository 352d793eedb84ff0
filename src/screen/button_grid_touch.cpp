#include "screen/button_grid_touch.h"

#include <algorithm>
#include <cmath>

namespace kova {
namespace {

// Of a cell, which then shows that there are more.
constexpr double LeastPeek = 0.3;
constexpr double MostPeek = 0.6;

/// How many cells to show of the `most` that there is room for.
double withPeek(double most) {
    double whole = std::floor(most);
    if (most - whole < LeastPeek)
        --whole;
    return std::max(1.0, whole) + std::min(most - whole, MostPeek);
}

// Design pixels.
constexpr double Finger = 42;    // a cell's least side: 9 mm on a panel of 10 inches
constexpr double Legible = 60;   // the least width, for a caption
constexpr double Slop = 13;      // what a finger moves while it touches: 3 mm
constexpr double Bar = 4;        // which shows what part is in sight
constexpr double MostGap = 0.09; // of a cell: small cells keep their faces

} // namespace

void CellStrip::arrange(int count, double length, double least) {
    count_ = std::max(1, count);
    length_ = std::max(1.0, length);
    inSight_ = length_ / count_ >= least ? count_ : std::min<double>(count_, withPeek(length_ / least));
    panTo(first_);
}

int CellStrip::at(double pixel) const {
    return std::clamp(static_cast<int>(std::floor(first_ + pixel / cell())), 0, count_ - 1);
}

void CellStrip::panTo(double first) {
    first_ = std::clamp(first, 0.0, count_ - inSight_);
}

void CellStrip::settle() {
    panTo(first_ + inSight_ > count_ - 0.25 ? count_ : std::round(first_));
}

void CellStrip::show(int index) {
    if (index < first_)
        panTo(index);
    else if (index + 1 > first_ + inSight_)
        panTo(std::ceil(index + 1 - inSight_));
}

// A grid that was given too few cells for its buttons gets more rows. It pans along the side that grows.
void ButtonGridCells::arrange(const ButtonGrid& grid, const Size& size, const Scale& scale) {
    count_ = static_cast<int>(grid.buttons().size());
    size_ = size;
    scale_ = scale;
    const int columns = std::max(1, grid.columns());
    const int rows = std::max({1, grid.rows(), (count_ + columns - 1) / columns});
    const double bar = Bar * scale.smaller();
    const double finger = Finger * scale.mean();
    const double legible = std::max(finger, Legible * scale.smaller());
    rows_.arrange(rows, size.height, rows == 1 ? 0 : finger);
    columns_.arrange(columns, size.width - (rows_.pans() ? bar : 0), rows == 1 ? legible : 0);
    if (columns_.pans())
        rows_.arrange(rows, size.height - bar, 0);
}

void ButtonGridCells::rewind() {
    columns_.panTo(0);
    rows_.panTo(0);
}

Area ButtonGridCells::room() const {
    const double bar = Bar * scale_.smaller();
    return {0, 0, size_.width - (rows_.pans() ? bar : 0), size_.height - (columns_.pans() ? bar : 0)};
}

// Cells have fractions of pixels, so that each can be touched however many there are.
Area ButtonGridCells::cell(int index) const {
    return {columns_.start(index % columns()), rows_.start(index / columns()), columns_.cell(), rows_.cell()};
}

Area ButtonGridCells::face(int index) const {
    const Area area = cell(index);
    const double gap = std::min(FaceGap / 2 * scale_.smaller(), std::min(area.width, area.height) * MostGap);
    return area.inside(gap);
}

bool ButtonGridCells::inSight(int index) const {
    return cell(index).intersects(room());
}

int ButtonGridCells::at(const Point& point) const {
    if (point.x < 0 || point.y < 0 || point.x > size_.width || point.y > size_.height)
        return -1;
    const int index = rows_.at(point.y) * columns() + columns_.at(point.x);
    return index < count_ ? index : -1;
}

Area ButtonGridCells::barBetween(double from, double to) const {
    const double thick = Bar * scale_.smaller(); // also left free at its ends: the grid's corners are round
    const double length = (columns_.pans() ? size_.width : size_.height) - 2 * thick;
    const double start = thick + from * length;
    if (columns_.pans())
        return {start, size_.height - thick, (to - from) * length, thick};
    return {size_.width - thick, start, thick, (to - from) * length};
}

Area ButtonGridCells::bar() const {
    return barBetween(0, 1);
}

Area ButtonGridCells::barInSight() const {
    const CellStrip& strip = columns_.pans() ? columns_ : rows_;
    return barBetween(strip.first() / strip.count(), (strip.first() + strip.inSight()) / strip.count());
}

bool ButtonGridCells::meansPanning(const Point& moved) const {
    const double slop = Slop * scale_.mean();
    return (columns_.pans() && std::abs(moved.x) > slop) || (rows_.pans() && std::abs(moved.y) > slop);
}

void ButtonGridCells::panBy(const Point& distance) {
    columns_.panTo(columns_.first() - distance.x / columns_.cell());
    rows_.panTo(rows_.first() - distance.y / rows_.cell());
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

void ButtonGridTouch::arrange(const ButtonGrid& grid, const Size& size, const Scale& scale) {
    count_ = static_cast<int>(grid.buttons().size());
    if (count_ == 0)
        cells_.rewind();
    cells_.arrange(grid, size, scale);
    current_ = std::clamp(current_, 0, std::max(0, count_ - 1));
}

void ButtonGridTouch::showMarked(const ButtonGrid& grid) {
    const auto marked = std::ranges::find(grid.buttons(), true, &ButtonGrid::Button::marked);
    if (marked == grid.buttons().end())
        return;
    current_ = static_cast<int>(marked - grid.buttons().begin());
    show(current_);
}

void ButtonGridTouch::letGo() {
    pressed_ = -1;
    inside_ = false;
    panning_ = false;
}

void ButtonGridTouch::press(const Point& at) {
    letGo();
    finger_ = at;
    pressed_ = cells_.at(at);
    inside_ = pressed_ >= 0;
}

void ButtonGridTouch::move(const Point& to, bool held) {
    const Point moved = to - finger_;
    if (panning_) {
        cells_.panBy(moved);
    } else if (held && cells_.meansPanning(moved)) {
        letGo();
        panning_ = true;
    } else {
        inside_ = pressed_ >= 0 && cells_.at(to) == pressed_;
        return;
    }
    finger_ = to;
}

int ButtonGridTouch::release(const Point& at) {
    const int touched = cells_.at(at) == pressed_ ? pressed_ : -1;
    if (panning_)
        cells_.settle();
    letGo();
    return touched;
}

void ButtonGridTouch::turnWheel(double cells) {
    wheel_ += cells;
    const double whole = std::trunc(wheel_);
    wheel_ -= whole;
    cells_.panByCells(whole);
}

bool ButtonGridTouch::step(Step step) {
    switch (step) {
    case Step::Left:
        return makeCurrent(current_ - 1);
    case Step::Right:
        return makeCurrent(current_ + 1);
    case Step::Up:
        return makeCurrent(current_ - cells_.columns());
    case Step::Down:
        return makeCurrent(current_ + cells_.columns());
    case Step::First:
        return makeCurrent(0);
    case Step::Last:
        break;
    }
    return makeCurrent(count_ - 1);
}

bool ButtonGridTouch::makeCurrent(int cell) {
    if (cell < 0 || cell >= count_)
        return false;
    letGo();
    current_ = cell;
    show(cell);
    return true;
}

void ButtonGridTouch::pressKey() {
    show(current_);
    pressed_ = current_;
    inside_ = count_ > 0;
}

int ButtonGridTouch::releaseKey() {
    const int touched = pressed_;
    letGo();
    return touched;
}

} // namespace kova
