#include "adapters/qt/cell_strip.h"

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

} // namespace kova
