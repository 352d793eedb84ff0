#pragma once
#include "adapters/qt/control_view.h"
#include "adapters/qt/key_button.h"
#include "widgets/numeric_keypad.h"

#include <QWidget>

#include <vector>

namespace kova {

class NumericKeypadView final : public QWidget, public ModelView<NumericKeypad> {
  public:
    NumericKeypadView(NumericKeypad& keypad, WindowFrame& frame, QWidget& parent);
    QWidget& widget() override { return *this; }
    QAccessibleInterface* makeAccessible() override;
    std::optional<TouchPoint> touchPoint(const std::optional<std::string>& part) override;

  protected:
    void layOut() override;

  private:
    std::vector<std::vector<KeyButton*>> rows_;
};

} // namespace kova
