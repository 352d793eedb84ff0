#pragma once
#include "adapters/qt/text_box_view.h"

#include <QLineEdit>

namespace kova {

/// A text box of one line.
class LineEditView final : public QLineEdit, public TextBoxView {
  public:
    LineEditView(TextBox& box, WindowFrame& frame, QWidget& parent);
    QWidget& widget() override { return *this; }

  protected:
    QString editorText() const override { return text(); }
    void setEditorText(const QString& text) override { setText(text); }
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
