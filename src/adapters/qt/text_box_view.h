#pragma once
#include "adapters/qt/control_view.h"
#include "widgets/text_box.h"

#include <QString>

#include <string>
#include <string_view>

class QInputMethodEvent;
class QKeyEvent;

namespace kova {

/// A model's text is UTF-8 with any line breaks and counts bytes; a toolkit's editor has UTF-16 with one unit
/// a line break. These carry texts and positions across; a position inside a character gives its start.
class TextPositions {
  public:
    enum class Breaks { Kept, Joined }; ///< whether "\r\n" and "\r" are one line break in the editor
    TextPositions(std::string_view text, Breaks breaks) : text_(text), breaks_(breaks) {}

    [[nodiscard]] QString editorText() const;
    [[nodiscard]] int toEditor(std::size_t byte) const;
    [[nodiscard]] std::size_t toModel(int unit) const;

  private:
    struct Step {
        std::size_t bytes;
        int units;
    };
    [[nodiscard]] Step stepAt(std::size_t byte) const;
    std::string_view text_;
    Breaks breaks_;
};

/// What the one-line and the many-line editor have in common. Character keys go to the model, which filters
/// and edits, and the editor follows; what only the toolkit's editor can do (delete forwards, cut, paste,
/// drop, undo) it does itself, and the model adopts the result. The caret is kept in step both ways.
class TextBoxView : public ModelView<TextBox> {
  public:
    TextBoxView(TextBox& box, WindowFrame& frame) : ModelView(box, frame) {}

  protected:
    struct Selection {
        int start, end;
    };
    virtual QString editorText() const = 0;
    virtual void setEditorText(const QString& text) = 0; ///< forgets what could be undone
    virtual void replaceInEditor(Selection range, const QString& text) = 0;
    virtual Selection editorSelection() const = 0;
    virtual void selectInEditor(Selection range) = 0;
    virtual void showLocked(bool locked) = 0;

    void layOut() override;
    void showProperty(Property property) override;
    [[nodiscard]] bool drawnEnabled() const override;
    void showNeed() override;
    void startShowing(); ///< to be called at the end of a constructor

    // To be called on the editor's events; true means that the event has been dealt with.
    bool takeKey(const QKeyEvent& event);
    bool takeCommit(const QInputMethodEvent& event);
    void clicked();
    void editorChanged();
    void editorSelectionChanged();

  private:
    void typeCharacters(const QString& text);
    void showText();
    void showSelection();
    void showFont();
    void showColors();
    [[nodiscard]] bool onlyShows() const; ///< a person cannot type into it
    [[nodiscard]] TextPositions positions() const;
    bool showing_ = false; ///< the editor is being changed from here
    bool typing_ = false;  ///< the model is editing what was typed
};

/// Makes the view of either kind.
ControlView* makeTextBoxView(TextBox& box, WindowFrame& frame, QWidget& parent);

} // namespace kova
