#pragma once
#include "base/signal.h"
#include "widgets/units.h"

#include <optional>
#include <string>
#include <utility>

namespace kova {

class Window;
class PushButton;
class Label;
class GroupFrame;
class PictureArea;
class TextBox;
class DateField;
class TabControl;
class TabPage;
class ButtonGrid;
class NumericKeypad;
class OnScreenKeyboard;
class ReportGrid;

/// Tells the kinds of control apart. The overloads do nothing by default.
class ControlVisitor {
  public:
    virtual ~ControlVisitor() = default;
    virtual void visit(Window&) {}
    virtual void visit(PushButton&) {}
    virtual void visit(Label&) {}
    virtual void visit(GroupFrame&) {}
    virtual void visit(PictureArea&) {}
    virtual void visit(TextBox&) {}
    virtual void visit(DateField&) {}
    virtual void visit(TabControl&) {}
    virtual void visit(TabPage&) {}
    virtual void visit(ButtonGrid&) {}
    virtual void visit(NumericKeypad&) {}
    virtual void visit(OnScreenKeyboard&) {}
    virtual void visit(ReportGrid&) {}
};

/// Which part of a control's state changed.
enum class Property {
    Visible,
    Enabled,
    Bounds,
    Caption,
    Text,
    ToolTip,
    BackColor,
    ForeColor,
    Latched,
    Locked,
    Buttons, ///< the buttons of a grid, their arrangement or their colours
    Marks,   ///< which buttons of a grid are marked
    SelectedTab,
    CapsLock,
    Icon,
    ZOrder,
    Focus,
    Title,
    Rest,    ///< a button rests from now on
    Records, ///< what a list holds
    Order,   ///< which records of a list are shown, and in which order
    Rows,    ///< which rows of a list are shown or selected, or the widths of its columns
    SpokenName
};

/// What a person still has to do at a control, for a rendering to point at.
enum class Need {
    None,
    Missing, ///< something is to be entered or chosen
    Refused  ///< and was asked for
};

/// What became of a gesture.
enum class Gesture {
    Done,
    Hidden, ///< the control, its frame or page or window is not visible, or its page is not the selected one
    Disabled, ///< the control is disabled, or a modal window lies above its own
    Locked    ///< the text box refuses typing
};

/// One element of a window: the state that rules speak of, without any drawing. Programmatic changes are
/// silent but for `changed`; a cashier's gestures speak through the signals of each kind. Neither copied nor
/// moved; a parent must outlive its children.
class Control {
  public:
    struct Place {
        Control* parent; ///< null for a window
        std::string name;
        Rect bounds;
        std::optional<int> index = std::nullopt; ///< within a control array
    };

    explicit Control(Place place);
    virtual ~Control() = default;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;
    virtual void accept(ControlVisitor& visitor) = 0;

    [[nodiscard]] const std::string& name() const { return place_.name; }
    [[nodiscard]] std::optional<int> index() const { return place_.index; }
    [[nodiscard]] Control* parent() const { return place_.parent; }
    /// The window that it belongs to; a window gives itself.
    [[nodiscard]] Window& window();

    [[nodiscard]] bool visible() const { return visible_; } ///< its own flag, whatever its parents'
    void setVisible(bool visible) { assign(visible_, visible, Property::Visible); }
    [[nodiscard]] bool enabled() const { return enabled_; }
    void setEnabled(bool enabled) { assign(enabled_, enabled, Property::Enabled); }
    [[nodiscard]] const Rect& bounds() const { return place_.bounds; } ///< relative to the parent
    void setBounds(const Rect& bounds) { assign(place_.bounds, bounds, Property::Bounds); }
    void setLeft(Twips left);
    void setTop(Twips top);
    void setWidth(Twips width);
    void setHeight(Twips height);
    /// What assistive technology calls it where nothing on the screen does; before a caption of its own.
    [[nodiscard]] const std::string& spokenName() const { return spokenName_; }
    void setSpokenName(const std::string& name) { assign(spokenName_, name, Property::SpokenName); }
    [[nodiscard]] Need need() const { return need_; } ///< of a title, what its field needs
    void setNeed(Need need) {
        if (std::exchange(need_, need) != need)
            needChanged();
    }
    /// Puts it in front of the other controls.
    void bringToFront() { changed(Property::ZOrder); }

    /// Whether a gesture can reach it.
    [[nodiscard]] virtual Gesture reach() const;
    /// Whether it can have the focus where it can be reached at all.
    [[nodiscard]] virtual bool takesFocus() const { return true; }
    /// A character key of the physical keyboard while it has the focus; most kinds take none.
    virtual Gesture typeCharacter(char32_t character);

    Signal<Property> changed; ///< once per real change, saying what changed
    Signal<> needChanged;     ///< apart, since it is an aid and no part of the state
    Signal<> gotFocus;        ///< at each gesture that gives it the focus, also when it had it

  protected:
    template <class T, class U>
    void assign(T& field, U&& value, Property property) {
        if (field == value)
            return;
        field = std::forward<U>(value);
        changed(property);
    }
    /// Whether a child can be seen, its own flag and its ancestors' aside.
    [[nodiscard]] virtual bool showsChild(const Control&) const { return true; }
    [[nodiscard]] bool shown() const; ///< itself and all its ancestors

  private:
    Place place_;
    std::string spokenName_;
    bool visible_ = true;
    bool enabled_ = true;
    Need need_ = Need::None;
};

/// What each kind derives from, so that a visitor is told of it as what it is.
template <class Kind, class Base = Control>
class ControlOfKind : public Base {
  public:
    using Base::Base;
    void accept(ControlVisitor& visitor) final { visitor.visit(static_cast<Kind&>(*this)); }
};

/// Whether there is a control and gestures reach it.
[[nodiscard]] inline bool isReachable(const Control* control) {
    return control != nullptr && control->reach() == Gesture::Done;
}

/// A control with a caption and colours.
class CaptionedControl : public Control {
  public:
    CaptionedControl(Place place, std::string caption, Color backColor, Color foreColor = colors::Black)
        : Control(std::move(place)), caption_(std::move(caption)), backColor_(backColor),
          foreColor_(foreColor) {}

    [[nodiscard]] const std::string& caption() const { return caption_; }
    void setCaption(const std::string& caption) { assign(caption_, caption, Property::Caption); }
    [[nodiscard]] Color backColor() const { return backColor_; }
    void setBackColor(Color color) { assign(backColor_, color, Property::BackColor); }
    [[nodiscard]] Color foreColor() const { return foreColor_; }
    void setForeColor(Color color) { assign(foreColor_, color, Property::ForeColor); }

  private:
    std::string caption_;
    Color backColor_, foreColor_;
};

/// Where a line of text stands in its bounds.
enum class Alignment { Left, Center, Right };

/// Face, size and weight of a text, at the design size of the surface.
struct Font {
    std::string face = "Tahoma";
    double points = 8;
    bool bold = false;
    friend bool operator==(const Font&, const Font&) = default;
};

} // namespace kova
