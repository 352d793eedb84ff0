#pragma once
#include "adapters/qt/control_view.h"
#include "widgets/captioned_controls.h"

#include <QWidget>

namespace kova {

class GroupFrameView final : public QWidget, public ModelView<GroupFrame> {
  public:
    GroupFrameView(GroupFrame& group, WindowFrame& frame, QWidget& parent);
    QWidget& widget() override { return *this; }
    QAccessibleInterface* makeAccessible() override;

  protected:
    void showProperty(Property property) override;
    void paintEvent(QPaintEvent* event) override;
    [[nodiscard]] bool drawnEnabled() const override { return true; } // Qt would disable the controls inside
};

} // namespace kova
