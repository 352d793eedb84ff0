#pragma once
#include <QComboBox>

namespace kova {

/// A drop-down list drawn like the window's other fields, with rows for fingers.
class ChoiceBox final : public QComboBox {
  public:
    explicit ChoiceBox(QWidget* parent = nullptr);

  protected:
    void paintEvent(QPaintEvent* event) override;
    /// Scrolling the page must not change a choice.
    void wheelEvent(QWheelEvent* event) override;
};

} // namespace kova
