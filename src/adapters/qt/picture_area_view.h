#pragma once
#include "adapters/qt/control_view.h"
#include "widgets/captioned_controls.h"

#include <QWidget>

namespace kova {

/// Shows the information picture.
class PictureAreaView final : public QWidget, public ModelView<PictureArea> {
  public:
    PictureAreaView(PictureArea& picture, WindowFrame& frame, QWidget& parent);
    QWidget& widget() override { return *this; }
    QAccessibleInterface* makeAccessible() override;

  protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace kova
