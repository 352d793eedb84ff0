#pragma once
#include "adapters/qt/buttons.h"
#include "adapters/qt/control_view.h"
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

    void detach() override;
    void showWords() override { nameKeys(); }

  protected:
    void layOut() override;
    void showProperty(Property property) override;

  private:
    void nameKeys();
    void showReadBack();
    void describeEntry();
    /// The height of its band above the keys, in pixels. All it can want leaves the keys more than 11 mm.
    [[nodiscard]] double readBackHeight() const;
    Connection readBackChanged_;
    ReadBackView* readBack_ = nullptr; ///< null where the pad has none
    double keysTop_ = 0;
    std::vector<std::vector<KeyButton*>> rows_;
};

/// The keys in the model's rows, and below them a row of its own for the caps-lock key and the space bar, so
/// that no key gets too narrow for a finger.
class OnScreenKeyboardView final : public QWidget, public ModelView<OnScreenKeyboard> {
  public:
    OnScreenKeyboardView(OnScreenKeyboard& keyboard, WindowFrame& frame, QWidget& parent);
    QWidget& widget() override { return *this; }
    QAccessibleInterface* makeAccessible() override;
    void showWords() override;

  protected:
    void layOut() override;
    void showProperty(Property property) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    struct Key {
        char32_t character; ///< 0 for caps lock
        double width;       ///< as a share of its row
        KeyButton* button;
    };
    void addKey(std::vector<Key>& row, char32_t character);
    void showKeys();
    void placeKeys();
    std::vector<std::vector<Key>> rows_;
};

} // namespace kova
