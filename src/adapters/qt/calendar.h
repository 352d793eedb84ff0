#pragma once
#include "adapters/qt/calendar_parts.h"
#include "screen/spoken_name.h"

#include <QFrame>
#include <QPointer>

#include <array>
#include <functional>
#include <vector>

class QKeyEvent;
class QLabel;

namespace kova {

/// The days of a month to choose one from, in front of a window's other widgets and as large as fingers need.
/// While it is open it takes the window's keys and touches; one outside only closes it.
class Calendar final : public QFrame, public AccessibleView {
  public:
    struct Looks {
        Scale scale;
        QColor background; ///< of what lies behind, so that it belongs to the same scheme
        QRect beside;      ///< what it stands above, in the window
    };

    /// `window` owns it and `words` outlive it.
    Calendar(QWidget& window, const Wording& words);
    void open(const QDate& chosen, const CalendarStyle& style, const Looks& looks);
    void close();
    QAccessibleInterface* makeAccessible() override;

    std::function<void(const QDate&)> picked; ///< after it has closed

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override; ///< of the application, while it is open
    void paintEvent(QPaintEvent* event) override;

  private:
    static constexpr int DaysOfWeek = 7, Weeks = 6;

    FaceButton* addButton(const char* name, std::function<void()> clicked);
    void addDays();
    void place();
    void showWords();
    void showMonth();
    void goTo(const QDate& day);
    void pick(const QDate& day);
    /// Returns whether the key is taken.
    bool takeKey(const QKeyEvent& event);
    void moveFocus(bool forward);
    [[nodiscard]] CalendarDay* currentDay() const;
    [[nodiscard]] FaceButton::Looks buttonLooks(double points) const;

    const Wording& words_;
    // All owned by this widget.
    std::array<FaceButton*, 4> turns_{}; ///< to the year and month before, the month and year after
    QLabel* title_;
    std::array<QLabel*, DaysOfWeek> dayNames_{};
    std::vector<CalendarDay*> days_; ///< of six weeks, from the one with the first of the month
    FaceButton* today_;
    FaceButton* cancel_;
    CalendarStyle style_;
    Looks looks_;
    QDate chosen_;
    QDate current_; ///< its month is shown
    QPointer<QWidget> focusBefore_;
};

} // namespace kova
