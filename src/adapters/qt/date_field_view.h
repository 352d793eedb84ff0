#pragma once
#include "adapters/qt/control_view.h"
#include "widgets/text_box.h"

#include <QLineEdit>
#include <QPointer>

class QCalendarWidget;
class QToolButton;

namespace kova {

/// A day to type, or to pick from a calendar that opens on a button (or with F4).
class DateFieldView final : public QWidget, public ModelView<DateField> {
  public:
    DateFieldView(DateField& field, WindowFrame& frame, QWidget& parent);
    QWidget& widget() override { return *this; }
    QWidget& keyboardWidget() override { return *edit_; }
    void detach() override;
    void showWords() override { showSpokenName(accessibleName()); }
    QAccessibleInterface* makeAccessible() override;

  protected:
    void layOut() override;
    void showProperty(Property property) override;
    void showSpokenName(const QString& name) override;
    bool eventFilter(QObject* watched, QEvent* event) override; ///< clicks and keys of the edit

  private:
    void openCalendar();
    void makeCalendar();
    void pick(const QDate& day);

    QLineEdit* edit_;
    QToolButton* button_;
    QPointer<QWidget> popup_;
    QCalendarWidget* calendar_ = nullptr; ///< in the popup
};

} // namespace kova
