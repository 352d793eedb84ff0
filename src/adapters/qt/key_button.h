#pragma once
#include "adapters/qt/control_view.h"
#include "adapters/qt/face_button.h"

#include <string>

class QTouchEvent;

namespace kova {

/// One key of a drawn keypad or keyboard. It never takes the focus from the text that it types into. It takes
/// touches itself, so that a quick typist's next finger may come down before the last one is up.
class KeyButton final : public FaceButton {
  public:
    /// `key` names the key among its fellows; `spoken` is what assistive technology calls it.
    KeyButton(QWidget& board, std::string key, const QString& spoken);
    [[nodiscard]] const std::string& key() const { return key_; }
    [[nodiscard]] std::optional<TouchPoint> touchPoint();

  protected:
    bool event(QEvent* event) override;

  private:
    bool takeTouch(const QTouchEvent& event);
    std::string key_;
};

} // namespace kova
