#pragma once
#include "widgets/control.h"

namespace kova {

class Label : public CaptionedControl {
  public:
    Label(Place place, std::string caption, Font font = {"Tahoma", 9}, Alignment alignment = Alignment::Left)
        : CaptionedControl(std::move(place), std::move(caption), colors::White), font_(std::move(font)),
          alignment_(alignment) {}
    void accept(ControlVisitor& visitor) override;
    [[nodiscard]] const Font& font() const { return font_; } ///< of a single line
    [[nodiscard]] Alignment alignment() const { return alignment_; }

  private:
    Font font_;
    Alignment alignment_;
};

/// A titled frame; controls may have it as their parent.
class GroupFrame : public CaptionedControl {
  public:
    GroupFrame(Place place, std::string caption)
        : CaptionedControl(std::move(place), std::move(caption), colors::White) {}
    void accept(ControlVisitor& visitor) override;
};

/// An area for a picture; inert.
class PictureArea : public Control {
  public:
    using Control::Control;
    void accept(ControlVisitor& visitor) override;
};

} // namespace kova
