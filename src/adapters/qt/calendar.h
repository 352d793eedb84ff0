#pragma once
#include "adapters/qt/calendar_parts.h"
#include "adapters/qt/panel.h"
#include "screen/spoken_name.h"

#include <array>
#include <functional>
#include <vector>

class QLabel;

namespace kova {

/// The days of a month to choose one from.
class Calendar final : public Panel {
  public:
    /// `window` owns it and `words` outlive it.
    Calendar(QWidget& window, const Wording& words);
    void open(const QDate& chosen, const CalendarStyle& style, const Looks& looks);

    std::function<void(const QDate&)> picked; ///< after it has closed

  protected:
    [[nodiscard]] std::vector<QWidget*> stops() const override;
    bool takeKey(const QKeyEvent& event) override;

  private:
    static constexpr int DaysOfWeek = 7, Weeks = 6;

    void addDays();
    void place();
    void showWords();
    void showMonth();
    void goTo(const QDate& day);
    void pick(const QDate& day);
    [[nodiscard]] CalendarDay* currentDay() const;

    const Wording& words_;
    // All owned by this widget.
    std::array<FaceButton*, 4> turns_{}; ///< to the year and month before, the month and year after
    QLabel* title_;
    std::array<QLabel*, DaysOfWeek> dayNames_{};
    std::vector<CalendarDay*> days_; ///< of six weeks, from the one with the first of the month
    FaceButton* today_;
    FaceButton* cancel_;
    CalendarStyle style_;
    QDate chosen_;
    QDate current_; ///< its month is shown
};

} // namespace kova
