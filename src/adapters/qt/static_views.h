#pragma once
#include "adapters/qt/control_view.h"
#include "widgets/captioned_controls.h"

#include <QLabel>
#include <QWidget>

namespace kova {

class GroupFrameView final : public QWidget, public ModelView<GroupFrame> {
  public:
    GroupFrameView(GroupFrame& group, WindowFrame& frame, QWidget& parent);
    QWidget& widget() override { return *this; }
    QAccessibleInterface* makeAccessible() override;

  protected:
    void showProperty(Property property) override;
    void showNeed() override;
    void paintEvent(QPaintEvent* event) override;
    [[nodiscard]] bool drawnEnabled() const override { return true; } // Qt would disable the controls inside
};

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
    void showNeed() override;
    void paintEvent(QPaintEvent* event) override;

  private:
    [[nodiscard]] QFont fullFont() const;
    [[nodiscard]] bool severalLines() const;
    [[nodiscard]] int roomToTheRight(const QRect& place) const;
};

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
