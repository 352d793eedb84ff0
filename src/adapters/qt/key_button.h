#pragma once
#include "adapters/qt/control_view.h"
#include "adapters/qt/face_button.h"

#include <functional>
#include <string>

namespace kova {

/// One key of a drawn keypad or keyboard. It never takes the focus from the text that it types into.
class KeyButton final : public FaceButton {
  public:
    /// `key` names the key among its fellows; `spoken` is what assistive technology calls it.
    KeyButton(QWidget& board, std::string key, const QString& spoken);
    [[nodiscard]] const std::string& key() const { return key_; }
    [[nodiscard]] std::optional<TouchPoint> touchPoint();

  private:
    std::string key_;
};

} // namespace kova
