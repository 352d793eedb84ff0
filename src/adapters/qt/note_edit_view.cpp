#include "adapters/qt/note_edit_view.h"

#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QTextBlock>

namespace kova {

NoteEditView::NoteEditView(TextBox& box, WindowFrame& frame, QWidget& parent)
    : QPlainTextEdit(&parent), TextBoxView(box, frame) {
    setTabChangesFocus(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    startShowing();
    connect(this, &QPlainTextEdit::textChanged, this, [this] { editorChanged(); });
    connect(this, &QPlainTextEdit::cursorPositionChanged, this, [this] { editorSelectionChanged(); });
    connect(this, &QPlainTextEdit::selectionChanged, this, [this] { editorSelectionChanged(); });
}

std::optional<TouchPoint> NoteEditView::touchPoint(const std::optional<std::string>& part) {
    if (part || viewport()->size().isEmpty())
        return std::nullopt;
    return TouchPoint{viewport(), QRectF(viewport()->rect()).center()};
}

// Not toPlainText, which turns hard blanks into ordinary ones.
QString NoteEditView::editorText() const {
    QString text = document()->toRawText();
    return text.replace(QChar::ParagraphSeparator, '\n').replace(QChar::LineSeparator, '\n');
}

void NoteEditView::replaceInEditor(Selection range, const QString& text) {
    QTextCursor cursor(document());
    cursor.setPosition(range.start);
    cursor.setPosition(range.end, QTextCursor::KeepAnchor);
    cursor.insertText(text);
}

NoteEditView::Selection NoteEditView::editorSelection() const {
    const QTextCursor cursor = textCursor();
    return {cursor.selectionStart(), cursor.selectionEnd()};
}

void NoteEditView::selectInEditor(Selection range) {
    QTextCursor cursor(document());
    cursor.setPosition(range.start);
    cursor.setPosition(range.end, QTextCursor::KeepAnchor);
    setTextCursor(cursor);
}

void NoteEditView::keyPressEvent(QKeyEvent* event) {
    if (takeKey(*event))
        event->accept();
    else
        QPlainTextEdit::keyPressEvent(event);
}

void NoteEditView::inputMethodEvent(QInputMethodEvent* event) {
    if (takeCommit(*event)) {
        QInputMethodEvent nothingPending;
        QPlainTextEdit::inputMethodEvent(&nothingPending);
    } else {
        QPlainTextEdit::inputMethodEvent(event);
    }
}

void NoteEditView::mousePressEvent(QMouseEvent* event) {
    QPlainTextEdit::mousePressEvent(event);
    clicked();
}

void NoteEditView::mouseDoubleClickEvent(QMouseEvent* event) {
    QPlainTextEdit::mouseDoubleClickEvent(event);
    clicked();
}

} // namespace kova
