#pragma once
#include "adapters/qt/buttons.h"

#include <QDate>
#include <QLocale>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

class QKeyEvent;

namespace kova {

/// How a calendar writes: the names of days and months in the component's language, weeks as in the region.
struct CalendarStyle {
    QLocale names;
    Qt::DayOfWeek firstDay = Qt::Monday;
};
/// `region` is a BCP 47 tag; weeks of one that is not known begin on Monday.
CalendarStyle calendarStyle(std::int32_t languageId, const std::string& region);

/// Draws so many arrow heads, to the left below zero, for a button without a caption.
std::function<void(QPainter&, const QRectF&, const QColor&)> arrowHeads(int count);

/// Where a key leads to from a day; with shift or control a page is a year. Nothing for other keys.
std::optional<QDate> dayByKey(const QKeyEvent& event, const QDate& from);

/// One day; today's has a bar below its number.
class CalendarDay final : public FaceButton, public AccessibleView {
  public:
    using FaceButton::FaceButton;
    QAccessibleInterface* makeAccessible() override;
    void show(const QDate& day, const QDate& chosen, const CalendarStyle& style, Looks looks);
    [[nodiscard]] const QDate& day() const { return day_; }
    [[nodiscard]] bool chosen() const { return chosen_; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    class Accessible;
    [[nodiscard]] bool isToday() const { return day_ == QDate::currentDate(); }
    QDate day_;
    QColor bar_;
    bool chosen_ = false;
};

} // namespace kova
