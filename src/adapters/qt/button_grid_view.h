#pragma once
#include "adapters/qt/button_grid_cells.h"
#include "adapters/qt/control_view.h"
#include "widgets/button_grid.h"

#include <QWidget>

namespace kova {

/// A grid of touch buttons, painted as one widget however many there are. A touch counts when the finger goes
/// up in the cell where it came down. Cells keep the size of a fingertip: a grid with more of them than have
/// room is panned by finger, wheel or arrow keys, and brings what gets marked into sight.
class ButtonGridView final : public QWidget, public ModelView<ButtonGrid> {
  public:
    ButtonGridView(ButtonGrid& grid, WindowFrame& frame, QWidget& parent);
    QWidget& widget() override { return *this; }
    [[nodiscard]] bool takesTab() const override { return cellCount() > 0; }
    /// Brings the button into sight.
    std::optional<TouchPoint> touchPoint(const std::optional<std::string>& part) override;

    QAccessibleInterface* makeAccessible() override;

    // For assistive technology.
    [[nodiscard]] int cellCount() const;
    [[nodiscard]] const ButtonGrid::Button* cellButton(int index) const;
    [[nodiscard]] QRectF cell(int index) const { return cells_.cell(index); }
    [[nodiscard]] QRectF face(int index) const { return cells_.face(index); } ///< what is drawn of it
    [[nodiscard]] bool inSight(int index) const { return cells_.inSight(index); }
    [[nodiscard]] int cellAt(const QPointF& point) const { return cells_.at(point); } ///< -1 for none
    [[nodiscard]] int currentCell() const { return current_; } ///< that the keyboard touches
    void touchCell(int index);

  protected:
    void layOut() override;
    void showProperty(Property property) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool event(QEvent* event) override;

  private:
    void arrange();
    void show(int index);
    void showMarked();
    void setDown(bool down);
    void letGo(); ///< go of what is pressed
    void moveCurrent(int to);

    [[nodiscard]] QRectF picturePlace(int index) const; ///< empty without a picture
    [[nodiscard]] QRectF captionRoom(int index) const;
    const std::vector<look::Caption>& captions();
    void paintCell(QPainter& painter, int index);
    void paintFocus(QPainter& painter, int index) const;
    void paintPosition(QPainter& painter) const;

    ButtonGridCells cells_;
    std::vector<look::Caption> captions_; ///< empty until drawn
    std::vector<bool> toldMarks_;         ///< to assistive technology
    int pressed_ = -1;                    ///< the cell that the finger came down in
    bool down_ = false;                   ///< the finger is in it
    QPointF finger_;                      ///< where it was last, or came down
    bool panning_ = false;
    double wheel_ = 0; ///< turned, but by less than a cell
    int current_ = 0;
};

} // namespace kova
