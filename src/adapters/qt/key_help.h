#pragma once
#include <QLabel>

namespace kova {

class WindowFrame;

/// Lists over the window which keys do what there and then. It takes no focus; the next key or touch hides
/// it.
class KeyHelp final : public QLabel {
  public:
    static void showOn(WindowFrame& frame);
    static void hideOn(WindowFrame& frame);
    [[nodiscard]] static bool isShownOn(const WindowFrame& frame);

  protected:
    void mousePressEvent(QMouseEvent* event) override;

  private:
    explicit KeyHelp(WindowFrame& frame);
};

} // namespace kova
