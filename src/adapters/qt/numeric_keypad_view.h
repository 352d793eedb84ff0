#pragma once
#include "adapters/qt/control_view.h"
#include "adapters/qt/key_button.h"
#include "widgets/keyboards.h"

#include <QWidget>

#include <vector>

namespace kova {

class ReadBackView;

class NumericKeypadView final : public QWidget, public ModelView<NumericKeypad> {
  public:
    NumericKeypadView(NumericKeypad& keypad, WindowFrame& frame, QWidget& parent);
    QWidget& widget() override { return *this; }
    QAccessibleInterface* makeAccessible() override;
    std::optional<TouchPoint> touchPoint(const std::optional<std::string>& part) override;

    void detach() override;
    void showWords() override { nameKeys(); }

  protected:
    void layOut() override;
    void showProperty(Property property) override;

  private:
    void nameKeys();
    void showReadBack();
    /// The height of its band above the keys, in pixels; 0 when it is not wanted.
    [[nodiscard]] double readBackHeight() const;
    Connection readBackChanged_;
    ReadBackView* readBack_ = nullptr; ///< null where the pad has none
    double keysTop_ = 0;
    std::vector<std::vector<KeyButton*>> rows_;
};

} // namespace kova
