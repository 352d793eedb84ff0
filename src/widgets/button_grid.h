#pragma once
#include "widgets/control.h"

#include <vector>

namespace kova {

/// Keyed touch buttons in equal cells, filled row by row; marked buttons have the grid's selected colour.
class ButtonGrid : public ControlOfKind<ButtonGrid> {
  public:
    struct Button {
        std::string key, caption;
        Color faceColor, textColor;
        std::string picture;
        bool marked = false;
    };
    using ControlOfKind::ControlOfKind;

    void clearButtons();
    /// Takes effect with `layoutButtons`.
    void setColumns(int columns) { columns_ = columns; }
    void setRows(int rows) { rows_ = rows; }
    [[nodiscard]] int columns() const { return columns_; }
    [[nodiscard]] int rows() const { return rows_; }
    /// Arranges the grid into columns × rows equal cells.
    void layoutButtons() { changed(Property::Buttons); }
    /// Appends a button in the next free cell. Keys need not be unique; the first of equals is found.
    void addButton(const std::string& key, const std::string& caption, Color face, Color text,
                   const std::string& picture);
    [[nodiscard]] const std::vector<Button>& buttons() const { return buttons_; }
    [[nodiscard]] Color selectedColor() const { return selectedColor_; }
    void setSelectedColor(Color color) { assign(selectedColor_, color, Property::Buttons); }
    [[nodiscard]] Color backColor() const { return backColor_; }
    void setBackColor(Color color) { assign(backColor_, color, Property::BackColor); }
    void clearSelection();
    /// A key that no button carries marks nothing and is no error.
    void selectButton(const std::string& key, bool marked);

    /// Hints that a rendering may leave unread.
    void setAnimated(bool on) { animated_ = on; }               ///< off: changes are drawn at once
    void setCaptionsWrapped(bool on) { captionsWrapped_ = on; } ///< long captions take several lines
    void setEqualFonts(bool on) { equalFonts_ = on; } ///< all captions as small as the longest needs
    [[nodiscard]] bool animated() const { return animated_; }
    [[nodiscard]] bool captionsWrapped() const { return captionsWrapped_; }
    [[nodiscard]] bool equalFonts() const { return equalFonts_; }

    [[nodiscard]] const Button* find(const std::string& key) const;
    /// The cashier's touch on the first button with that key, which must exist.
    Gesture touch(const std::string& key);
    Signal<const std::string&> buttonClick;

  private:
    std::vector<Button> buttons_;
    int columns_ = 0, rows_ = 0;
    Color selectedColor_ = colors::Black;
    Color backColor_ = colors::ButtonFace;
    bool animated_ = true, captionsWrapped_ = false, equalFonts_ = false;
};

} // namespace kova
