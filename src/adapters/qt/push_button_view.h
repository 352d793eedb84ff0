#pragma once
#include "adapters/qt/control_view.h"
#include "adapters/qt/face_button.h"
#include "widgets/captioned_controls.h"

namespace kova {

class PushButtonView final : public FaceButton, public ModelView<PushButton> {
  public:
    PushButtonView(PushButton& button, WindowFrame& frame, QWidget& parent);
    QWidget& widget() override { return *this; }
    [[nodiscard]] bool takesTab() const override { return true; }

  protected:
    void layOut() override;
    void showProperty(Property property) override;

  private:
    void showLooks();
    [[nodiscard]] double inset() const; ///< of the face, in pixels
};

} // namespace kova
