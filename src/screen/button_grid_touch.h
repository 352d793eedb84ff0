#pragma once
#include "screen/geometry.h"
#include "widgets/button_grid.h"

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
    /// Moves to the nearest whole cell, or to the end.
    void settle();
    /// Brings all of a cell in sight, by as little as it takes.
    void show(int index);

  private:
    int count_ = 1;
    double length_ = 1;
    double inSight_ = 1;
    double first_ = 0;
};

/// Where the cells of a grid are, in pixels of its widget, and which of them are in sight.
class ButtonGridCells {
  public:
    /// Keeps its place as far as there are cells.
    void arrange(const ButtonGrid& grid, const Size& size, const Scale& scale);
    /// To the first cells.
    void rewind();

    [[nodiscard]] int columns() const { return columns_.count(); }
    [[nodiscard]] bool pans() const { return columns_.pans() || rows_.pans(); }
    [[nodiscard]] Area room() const;          ///< of the cells in sight
    [[nodiscard]] Area cell(int index) const; ///< what takes touches
    [[nodiscard]] Area face(int index) const; ///< what is drawn of it
    [[nodiscard]] bool inSight(int index) const;
    /// -1 where no button is.
    [[nodiscard]] int at(const Point& point) const;
    /// The bar beside the cells, of which a part stands for those in sight.
    [[nodiscard]] Area bar() const;
    [[nodiscard]] Area barInSight() const;

    /// Whether a finger that moved so far means to pan.
    [[nodiscard]] bool meansPanning(const Point& moved) const;
    /// Moves the cells by pixels, as a finger does.
    void panBy(const Point& distance);
    void panByCells(double cells);
    /// Moves to the nearest whole cell, or to the end.
    void settle();
    /// Brings all of a cell in sight.
    void show(int index);

  private:
    [[nodiscard]] Area barBetween(double from, double to) const;
    CellStrip columns_, rows_;
    int count_ = 0; ///< buttons
    Size size_;
    Scale scale_;
};

/// What a finger, the wheel and the keyboard do to a grid of touch buttons. A touch counts when the finger
/// goes up in the cell where it came down; one that moves away from it pans the grid, where there are more
/// cells than have room. Cells are numbered as their buttons; -1 stands for none.
class ButtonGridTouch {
  public:
    [[nodiscard]] const ButtonGridCells& cells() const { return cells_; }
    [[nodiscard]] int down() const { return inside_ ? pressed_ : -1; } ///< to be drawn under the finger
    [[nodiscard]] bool panning() const { return panning_; }
    [[nodiscard]] int current() const { return current_; } ///< that the keyboard touches

    /// The grid has another size, or other buttons.
    void arrange(const ButtonGrid& grid, const Size& size, const Scale& scale);
    /// Brings a cell in sight.
    void show(int cell) { cells_.show(cell); }
    /// Brings the first marked button in sight, if there is one, and makes it the current one.
    void showMarked(const ButtonGrid& grid);

    void press(const Point& at);
    void move(const Point& to, bool held);
    /// Gives the cell that has been touched.
    int release(const Point& at);
    /// What is pressed will not be touched, and nothing is panned any more.
    void letGo();
    /// Pans by cells; fractions add up.
    void turnWheel(double cells);

    enum class Step { Left, Right, Up, Down, First, Last };
    /// Whether there is a cell that way, which is then the current one.
    bool step(Step step);
    bool makeCurrent(int cell);
    void pressKey();
    int releaseKey(); ///< gives the cell that has been touched

  private:
    ButtonGridCells cells_;
    int count_ = 0;       ///< buttons
    int pressed_ = -1;    ///< the cell that the finger came down in
    bool inside_ = false; ///< the finger is in it
    Point finger_;        ///< where it was last, or came down
    bool panning_ = false;
    double wheel_ = 0; ///< turned, but by less than a cell
    int current_ = 0;
};

} // namespace kova
