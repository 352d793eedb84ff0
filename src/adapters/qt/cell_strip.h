#pragma once

namespace kova {

/// Equal cells in a row or column. All of them share the length while none gets smaller than is of use;
/// otherwise some and about half of another are in sight, and the strip is panned along them.
class CellStrip {
  public:
    /// `length` in pixels, `least` of a cell too. Keeps its place as far as there are cells.
    void arrange(int count, double length, double least);

    [[nodiscard]] int count() const { return count_; }
    [[nodiscard]] bool pans() const { return inSight_ < count_; }
    [[nodiscard]] double cell() const { return length_ / inSight_; } ///< pixels
    [[nodiscard]] double start(int index) const { return (index - first_) * cell(); }
    /// The cell at a pixel in sight.
    [[nodiscard]] int at(double pixel) const;
    [[nodiscard]] double first() const { return first_; } ///< cells out of sight before those shown
    [[nodiscard]] double inSight() const { return inSight_; }

    void panTo(double first);
    /// Rests on a whole cell, or at the end.
    void settle();
    /// Brings all of a cell in sight, by as little as it takes.
    void show(int index);

  private:
    int count_ = 1;
    double length_ = 1;
    double inSight_ = 1;
    double first_ = 0;
};

} // namespace kova
