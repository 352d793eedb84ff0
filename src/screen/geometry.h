#pragma once
#include "widgets/units.h"

#include <cmath>

namespace kova {

/// On a screen: pixels, with fractions.
struct Point {
    double x = 0, y = 0;
    friend Point operator-(const Point& a, const Point& b) { return {a.x - b.x, a.y - b.y}; }
};

struct Size {
    double width = 0, height = 0;
};

struct Area {
    double left = 0, top = 0, width = 0, height = 0;
    [[nodiscard]] double right() const { return left + width; }
    [[nodiscard]] double bottom() const { return top + height; }
    /// Smaller by so much on each side.
    [[nodiscard]] Area inside(double margin) const {
        return {left + margin, top + margin, width - margin - margin, height - margin - margin};
    }
    [[nodiscard]] bool intersects(const Area& other) const {
        return left < other.right() && other.left < right() && top < other.bottom() && other.top < bottom();
    }
};

/// Positions and sizes of controls are designed for this surface.
constexpr double TwipsPerPixel = 15;
constexpr Size DesignSurface{15195 / TwipsPerPixel, 8955 / TwipsPerPixel};
constexpr double designPixels(Twips length) {
    return length.count / TwipsPerPixel;
}

/// What lies between two faces at least, in design pixels: 1.5 mm on a panel of 10 inches.
constexpr double FaceGap = 7;

/// Pixels per design pixel. Lengths that are no positions, fonts among them, take the smaller; a finger's the
/// mean, since a panel turned upright has neither larger nor smaller ones.
struct Scale {
    double x = 1, y = 1;
    [[nodiscard]] double smaller() const { return x < y ? x : y; }
    [[nodiscard]] double mean() const { return std::sqrt(x * y); }
    friend bool operator==(const Scale&, const Scale&) = default;
};

} // namespace kova
