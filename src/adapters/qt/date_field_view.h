#pragma once
#include "adapters/qt/calendar.h"
#include "adapters/qt/control_view.h"
#include "widgets/text_box.h"

#include <QLineEdit>
#include <QPointer>

#include <optional>
#include <vector>

class QToolButton;

namespace kova {

/// A day to type, to pick from a calendar that opens on a button (or with F4 or Alt and Down), or to reach
/// by steps, for which the keys up and down stand, too.
class DateFieldView final : public QWidget, public ModelView<DateField> {
  public:
    DateFieldView(DateField& field, WindowFrame& frame, QWidget& parent);
    QWidget& widget() override { return *this; }
    QWidget& keyboardWidget() override { return *edit_; }
    void detach() override;
    void showWords() override;
    QAccessibleInterface* makeAccessible() override;

  protected:
    void layOut() override;
    void showProperty(Property property) override;
    void showSpokenName(const QString& name) override;
    bool eventFilter(QObject* watched, QEvent* event) override; ///< clicks and keys of the edit
    void hideEvent(QHideEvent*) override { closeCalendar(); }   ///< with its page, too

  private:
    void makeSteps(const DateField& field, QWidget& parent);
    void showSteps();
    void step(int days);
    void openCalendar();
    void closeCalendar();
    void pick(const QDate& day);
    [[nodiscard]] std::optional<QDate> day() const; ///< nothing while the field holds no date

    QLineEdit* edit_;
    QToolButton* button_;
    std::vector<FaceButton*> steps_; ///< to the day before, today and the day after; beside this widget
    QPointer<Calendar> calendar_;    ///< null until it is opened; the frame's
    Connection scheme_;
};

} // namespace kova
