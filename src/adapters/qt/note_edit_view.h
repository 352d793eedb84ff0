#pragma once
#include "adapters/qt/text_box_view.h"

#include <QPlainTextEdit>

namespace kova {

/// A text box of several lines.
class NoteEditView final : public QPlainTextEdit, public TextBoxView {
  public:
    NoteEditView(TextBox& box, WindowFrame& frame, QWidget& parent);
    QWidget& widget() override { return *this; }
    std::optional<TouchPoint> touchPoint(const std::optional<std::string>& part) override;

  protected:
    QString editorText() const override;
    void setEditorText(const QString& text) override { setPlainText(text); }
    void replaceInEditor(Selection range, const QString& text) override;
    Selection editorSelection() const override;
    void selectInEditor(Selection range) override;
    void showLocked(bool locked) override { setReadOnly(locked); }

    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
};

} // namespace kova
