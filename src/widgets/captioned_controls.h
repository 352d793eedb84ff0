#pragma once
#include "widgets/control.h"

#include <chrono>

namespace kova {

class Label : public ControlOfKind<Label, CaptionedControl> {
  public:
    Label(Place place, std::string caption, Font font = {"Tahoma", 9}, Alignment alignment = Alignment::Left)
        : ControlOfKind(std::move(place), std::move(caption), colors::White), font_(std::move(font)),
          alignment_(alignment) {}
    [[nodiscard]] const Font& font() const { return font_; } ///< of a single line
    [[nodiscard]] Alignment alignment() const { return alignment_; }

  private:
    Font font_;
    Alignment alignment_;
};

/// A titled frame; controls may have it as their parent.
class GroupFrame : public ControlOfKind<GroupFrame, CaptionedControl> {
  public:
    GroupFrame(Place place, std::string caption)
        : ControlOfKind(std::move(place), std::move(caption), colors::White) {}
};

/// An area for a picture; inert.
class PictureArea : public ControlOfKind<PictureArea> {
  public:
    using ControlOfKind::ControlOfKind;
};

/// A touch button with a caption. `press` is the cashier's touch.
class PushButton : public ControlOfKind<PushButton, CaptionedControl> {
  public:
    /// A picture beside the caption, 16 design pixels in size.
    enum class Icon { None, Cancel, Confirm, Clear };

    PushButton(Place place, std::string caption, Font font = {})
        : ControlOfKind(std::move(place), std::move(caption), colors::ButtonFace), font_(std::move(font)) {}

    [[nodiscard]] const Font& font() const { return font_; }
    [[nodiscard]] const std::string& toolTip() const { return toolTip_; }
    void setToolTip(const std::string& text) { assign(toolTip_, text, Property::ToolTip); }
    [[nodiscard]] Icon icon() const { return icon_; }
    void setIcon(Icon icon) { assign(icon_, icon, Property::Icon); }
    /// The one that most touches of the window end with: drawn to stand out from the others.
    [[nodiscard]] bool primary() const { return primary_; }
    void setPrimary(bool primary) { assign(primary_, primary, Property::Icon); }
    [[nodiscard]] bool latched() const { return latched_; } ///< drawn held down
    void setLatched(bool latched) { assign(latched_, latched, Property::Latched); }
    /// Drawn flat, in its own colours, instead of the platform's look.
    [[nodiscard]] bool ownColors() const { return ownColors_; }
    void setOwnColors(bool own) { assign(ownColors_, own, Property::BackColor); }

    /// Outlined, as what to touch next.
    [[nodiscard]] bool suggested() const { return suggested_; }
    void setSuggested(bool suggested) { assign(suggested_, suggested, Property::BackColor); }

    /// People's touches and keys do nothing for this long from now on: what it did must not be answered by a
    /// touch that was meant for it. It is drawn as ever, and programs press it all the same.
    static constexpr std::chrono::milliseconds RestTime{500};
    void rest() { changed(Property::Rest); }

    Gesture press();
    /// The space bar and the return key press.
    Gesture typeCharacter(char32_t character) override;
    Signal<> pressed;

  private:
    Font font_;
    std::string toolTip_;
    Icon icon_ = Icon::None;
    bool primary_ = false;
    bool latched_ = false;
    bool ownColors_ = false;
    bool suggested_ = false;
};

} // namespace kova
