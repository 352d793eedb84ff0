#pragma once
#include "adapters/qt/control_view.h"
#include "screen/button_grid_touch.h"
#include "widgets/button_grid.h"

#include <QWidget>

namespace kova {

/// A grid of touch buttons, painted as one widget however many there are.
class ButtonGridView final : public QWidget, public ModelView<ButtonGrid> {
  public:
    ButtonGridView(ButtonGrid& grid, WindowFrame& frame, QWidget& parent);
    QWidget& widget() override { return *this; }
    QAccessibleInterface* makeAccessible() override;

    // For assistive technology.
    [[nodiscard]] int cellCount() const;
    [[nodiscard]] const ButtonGrid::Button* cellButton(int index) const;
    [[nodiscard]] const ButtonGridCells& cells() const { return touch_.cells(); }
    [[nodiscard]] QRectF face(int index) const { return look::toQt(cells().face(index)); }
    [[nodiscard]] int currentCell() const { return touch_.current(); } ///< that the keyboard touches
    void touchCell(int index);
    void scrollTo(int index); ///< until the cell is in sight

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
    void showMarked();
    /// Draws the cells that came under the finger, or no longer are there.
    void showDown();
    void tellCurrent(); ///< to assistive technology

    [[nodiscard]] QRectF picturePlace(int index) const; ///< empty without a picture
    [[nodiscard]] QRectF captionRoom(int index) const;
    const std::vector<look::Caption>& captions();
    void paintCell(QPainter& painter, int index);
    void paintFocus(QPainter& painter, int index) const;
    void paintPosition(QPainter& painter) const;
    void paintRefused(QPainter& painter) const;

    ButtonGridTouch touch_;
    std::vector<look::Caption> captions_; ///< empty until drawn
    ToldButtons told_;                    ///< to assistive technology
    int shownDown_ = -1;                  ///< the cell that is drawn under the finger
};

} // namespace kova
