#include "adapters/qt/text_box_view.h"
#include "adapters/qt/window_frame.h"

#include <QAccessibleWidget>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextBlock>

#include <limits>

namespace kova {
namespace {

/// A text box on one of the toolkit's editors.
template <class Editor>
class EditorView : public Editor, public TextBoxView {
  public:
    EditorView(TextBox& box, WindowFrame& frame, QWidget& parent)
        : Editor(&parent), TextBoxView(box, frame) {}
    QWidget& widget() override { return *this; }

  protected:
    /// To be called at the end of a constructor.
    void followEditor() {
        startShowing();
        this->connect(this, &Editor::textChanged, this, [this] { editorChanged(); });
        this->connect(this, &Editor::selectionChanged, this, [this] { editorSelectionChanged(); });
        this->connect(this, &Editor::cursorPositionChanged, this, [this] { editorSelectionChanged(); });
    }
    void showLocked(bool locked) override { this->setReadOnly(locked); }

    void keyPressEvent(QKeyEvent* event) override {
        if (takeKey(*event))
            event->accept();
        else
            Editor::keyPressEvent(event);
    }
    void inputMethodEvent(QInputMethodEvent* event) override {
        QInputMethodEvent nothingPending;
        Editor::inputMethodEvent(takeCommit(*event) ? &nothingPending : event);
    }
    void mousePressEvent(QMouseEvent* event) override {
        Editor::mousePressEvent(event);
        clicked();
    }
    void mouseDoubleClickEvent(QMouseEvent* event) override {
        Editor::mouseDoubleClickEvent(event);
        clicked();
    }
};

class LineEditView final : public EditorView<QLineEdit> {
  public:
    LineEditView(TextBox& box, WindowFrame& frame, QWidget& parent) : EditorView(box, frame, parent) {
        setMaxLength(std::numeric_limits<int>::max());
        setAlignment(look::toQt(box.alignment()) | Qt::AlignVCenter);
        followEditor();
    }

  protected:
    QString editorText() const override { return text(); }
    void setEditorText(const QString& text) override { setText(text); }
    void replaceInEditor(Selection range, const QString& text) override {
        selectInEditor(range);
        insert(text);
    }
    Selection editorSelection() const override {
        if (hasSelectedText())
            return {selectionStart(), selectionEnd()};
        return {cursorPosition(), cursorPosition()};
    }
    void selectInEditor(Selection range) override {
        deselect();
        setCursorPosition(range.start);
        if (range.start != range.end)
            setSelection(range.start, range.end - range.start);
    }
};

class NoteEditView final : public EditorView<QPlainTextEdit> {
  public:
    NoteEditView(TextBox& box, WindowFrame& frame, QWidget& parent) : EditorView(box, frame, parent) {
        setTabChangesFocus(true);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        followEditor();
    }

  protected:
    // Not toPlainText, which turns hard blanks into ordinary ones.
    QString editorText() const override {
        QString text = document()->toRawText();
        return text.replace(QChar::ParagraphSeparator, '\n').replace(QChar::LineSeparator, '\n');
    }
    void setEditorText(const QString& text) override { setPlainText(text); }
    void replaceInEditor(Selection range, const QString& text) override {
        cursorOver(range).insertText(text);
    }
    Selection editorSelection() const override {
        const QTextCursor cursor = textCursor();
        return {cursor.selectionStart(), cursor.selectionEnd()};
    }
    void selectInEditor(Selection range) override { setTextCursor(cursorOver(range)); }

  private:
    [[nodiscard]] QTextCursor cursorOver(Selection range) const {
        QTextCursor cursor(document());
        cursor.setPosition(range.start);
        cursor.setPosition(range.end, QTextCursor::KeepAnchor);
        return cursor;
    }
};

/// A touch counts as on a field, and leaves nothing that looks chosen.
class StandInView final : public QWidget, public ModelView<TextBox> {
  public:
    StandInView(TextBox& box, WindowFrame& frame, QWidget& parent) : QWidget(&parent), ModelView(box, frame) {
        nameWidget();
    }
    QWidget& widget() override { return *this; }
    QWidget& keyboardWidget() override { return frame(); }
    QAccessibleInterface* makeAccessible() override {
        return new QAccessibleWidget(this, QAccessible::Whitespace);
    }

  protected:
    void showSpokenName(const QString&) override {}
    void mousePressEvent(QMouseEvent*) override {
        act([](TextBox& box) { box.window().moveFocus(box); });
    }
};

} // namespace

ControlView* makeTextBoxView(TextBox& box, WindowFrame& frame, QWidget& parent) {
    if (box.standsIn())
        return new StandInView(box, frame, parent);
    if (box.multiLine())
        return new NoteEditView(box, frame, parent);
    return new LineEditView(box, frame, parent);
}

} // namespace kova
