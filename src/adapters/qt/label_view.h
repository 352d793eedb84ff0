#pragma once
#include "adapters/qt/control_view.h"
#include "widgets/captioned_controls.h"

#include <QLabel>

namespace kova {

/// Text on whatever lies behind. One line runs on beyond its bounds while nothing else is there; where there
/// is height for several lines it is wrapped and made smaller until all of it shows.
class LabelView final : public QLabel, public ModelView<Label> {
  public:
    LabelView(Label& label, WindowFrame& frame, QWidget& parent);
    QWidget& widget() override { return *this; }
    void neighbourMoved() override;

  protected:
    void layOut() override;
    void showProperty(Property property) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    [[nodiscard]] QFont fullFont() const;
    [[nodiscard]] bool severalLines() const;
    [[nodiscard]] int roomToTheRight(const QRect& place) const;
};

} // namespace kova
