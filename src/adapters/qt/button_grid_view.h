#pragma once
#include "adapters/qt/control_view.h"
#include "widgets/button_grid.h"

#include <QWidget>

namespace kova {

/// A grid of touch buttons, painted as one widget however many there are. A touch counts when the finger goes
/// up in the cell where it came down.
class ButtonGridView final : public QWidget, public ModelView<ButtonGrid> {
  public:
    ButtonGridView(ButtonGrid& grid, WindowFrame& frame, QWidget& parent);
    QWidget& widget() override { return *this; }
    std::optional<TouchPoint> touchPoint(const std::optional<std::string>& part) override;

    QAccessibleInterface* makeAccessible() override;

    // For assistive technology.
    [[nodiscard]] int cellCount() const;
    [[nodiscard]] const ButtonGrid::Button* cellButton(int index) const;
    [[nodiscard]] QRectF cell(int index) const;           ///< what takes touches
    [[nodiscard]] QRectF face(int index) const;           ///< what is drawn of it
    [[nodiscard]] int cellAt(const QPointF& point) const; ///< -1 for none
    void touchCell(int index);

  protected:
    void showProperty(Property property) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    bool event(QEvent* event) override;

  private:
    struct Arrangement {
        int columns, rows;
    };
    [[nodiscard]] Arrangement arrangement() const;
    [[nodiscard]] QFont commonFont() const;
    void paintCell(QPainter& painter, int index, const QFont& font) const;
    void setDown(bool down);

    int pressed_ = -1;  ///< the cell that the finger came down in
    bool down_ = false; ///< the finger is in it
};

} // namespace kova
