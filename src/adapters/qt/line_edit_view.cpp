#include "adapters/qt/line_edit_view.h"

#include <QInputMethodEvent>
#include <QKeyEvent>

#include <limits>

namespace kova {

LineEditView::LineEditView(TextBox& box, WindowFrame& frame, QWidget& parent)
    : QLineEdit(&parent), TextBoxView(box, frame) {
    setMaxLength(std::numeric_limits<int>::max());
    setAlignment(look::toQt(box.alignment()) | Qt::AlignVCenter);
    startShowing();
    connect(this, &QLineEdit::textChanged, this, [this] { editorChanged(); });
    connect(this, &QLineEdit::selectionChanged, this, [this] { editorSelectionChanged(); });
    connect(this, &QLineEdit::cursorPositionChanged, this, [this] { editorSelectionChanged(); });
}

void LineEditView::replaceInEditor(Selection range, const QString& text) {
    selectInEditor(range);
    insert(text);
}

LineEditView::Selection LineEditView::editorSelection() const {
    if (hasSelectedText())
        return {selectionStart(), selectionEnd()};
    return {cursorPosition(), cursorPosition()};
}

void LineEditView::selectInEditor(Selection range) {
    deselect();
    setCursorPosition(range.start);
    if (range.start != range.end)
        setSelection(range.start, range.end - range.start);
}

void LineEditView::keyPressEvent(QKeyEvent* event) {
    if (takeKey(*event))
        event->accept();
    else
        QLineEdit::keyPressEvent(event);
}

void LineEditView::inputMethodEvent(QInputMethodEvent* event) {
    if (takeCommit(*event)) {
        QInputMethodEvent nothingPending;
        QLineEdit::inputMethodEvent(&nothingPending);
    } else {
        QLineEdit::inputMethodEvent(event);
    }
}

void LineEditView::mousePressEvent(QMouseEvent* event) {
    QLineEdit::mousePressEvent(event);
    clicked();
}

void LineEditView::mouseDoubleClickEvent(QMouseEvent* event) {
    QLineEdit::mouseDoubleClickEvent(event);
    clicked();
}

} // namespace kova
