#pragma once
#include "adapters/qt/cell_strip.h"
#include "adapters/qt/look.h"
#include "widgets/button_grid.h"

#include <QPointF>
#include <QRectF>
#include <QSizeF>

namespace kova {

/// Where the cells of a grid are, in pixels of its widget, and which of them are in sight.
class ButtonGridCells {
  public:
    /// Keeps its place as far as there are cells.
    void arrange(const ButtonGrid& grid, const QSizeF& size, const Scale& scale);
    /// To the first cells.
    void rewind();

    [[nodiscard]] int columns() const { return columns_.count(); }
    [[nodiscard]] bool pans() const { return columns_.pans() || rows_.pans(); }
    [[nodiscard]] QRectF room() const;          ///< of the cells in sight
    [[nodiscard]] QRectF cell(int index) const; ///< what takes touches
    [[nodiscard]] QRectF face(int index) const; ///< what is drawn of it
    [[nodiscard]] bool inSight(int index) const;
    /// -1 where no button is.
    [[nodiscard]] int at(const QPointF& point) const;
    /// The bar beside the cells, of which a part stands for those in sight.
    [[nodiscard]] QRectF bar() const;
    [[nodiscard]] QRectF barInSight() const;

    /// Whether a finger that moved so far means to pan.
    [[nodiscard]] bool meansPanning(const QPointF& moved) const;
    /// Moves the cells by pixels, as a finger does.
    void panBy(const QPointF& distance);
    void panByCells(double cells);
    /// Rests on a whole cell, or at the end.
    void settle();
    /// Brings all of a cell in sight.
    void show(int index);

  private:
    [[nodiscard]] QRectF barBetween(double from, double to) const;
    CellStrip columns_, rows_;
    int count_ = 0; ///< buttons
    QSizeF size_;
    Scale scale_;
};

} // namespace kova
