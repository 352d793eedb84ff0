#include "adapters/qt/calendar_parts.h"

#include "services/texts.h"

#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QPainter>

#include <algorithm>
#include <cstdlib>

namespace kova {

CalendarStyle calendarStyle(std::int32_t languageId, const std::string& region) {
    const QLocale ofRegion(QString::fromStdString(region).replace('-', '_'));
    const QLocale::Language language = languageId == language::German    ? QLocale::German
                                       : languageId == language::English ? QLocale::English
                                                                         : QLocale::Italian;
    return {QLocale(language, ofRegion.territory()), ofRegion.firstDayOfWeek()};
}

std::function<void(QPainter&, const QRectF&, const QColor&)> arrowHeads(int count) {
    return [count](QPainter& painter, const QRectF& area, const QColor& color) {
        const double size = area.width() / 4;
        const double way = count < 0 ? -size : size;
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(color, area.width() / 8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        for (int i = 0; i < std::abs(count); ++i) {
            const QPointF tip =
                area.center() + QPointF(way / 2 + way * 1.4 * (i - (std::abs(count) - 1) / 2.0), 0);
            painter.drawPolyline(
                QPolygonF({tip + QPointF(-way, -1.5 * size), tip, tip + QPointF(-way, 1.5 * size)}));
        }
        painter.restore();
    };
}

std::optional<QDate> dayByKey(const QKeyEvent& event, const QDate& from) {
    const bool years = (event.modifiers() & (Qt::ShiftModifier | Qt::ControlModifier)) != 0;
    switch (event.key()) {
    case Qt::Key_Left:
        return from.addDays(-1);
    case Qt::Key_Right:
        return from.addDays(1);
    case Qt::Key_Up:
        return from.addDays(-7);
    case Qt::Key_Down:
        return from.addDays(7);
    case Qt::Key_PageUp:
        return years ? from.addYears(-1) : from.addMonths(-1);
    case Qt::Key_PageDown:
        return years ? from.addYears(1) : from.addMonths(1);
    case Qt::Key_Home:
        return QDate(from.year(), from.month(), 1);
    case Qt::Key_End:
        return QDate(from.year(), from.month(), from.daysInMonth());
    default:
        return std::nullopt;
    }
}

void CalendarDay::show(const QDate& day, const QDate& chosen, const CalendarStyle& style, Looks looks) {
    day_ = day;
    looks.face.flat = true;
    looks.face.marked = day == chosen;
    looks.wrapped = false;
    looks.font.setBold(looks.face.marked || isToday());
    if (looks.face.marked && !look::isDark(looks.face.color))
        looks.face.color = palette::Chosen;
    bar_ = look::accentOn(looks.face.color);
    setLooks(looks);
    setText(QString::number(day.day()));
    setAccessibleName(style.names.toString(day, QLocale::LongFormat));
    chosen_ = looks.face.marked;
}

void CalendarDay::paintEvent(QPaintEvent* event) {
    FaceButton::paintEvent(event);
    if (!isToday())
        return;
    QPainter painter(this);
    painter.fillRect(QRectF(width() * 0.25, height() * 0.8, width() * 0.5, std::max(2.0, height() / 16.0)),
                     bar_);
}

/// A button that says whether its day is the chosen one.
class CalendarDay::Accessible final : public QAccessibleWidget {
  public:
    explicit Accessible(CalendarDay& day) : QAccessibleWidget(&day, QAccessible::Button), day_(day) {}
    [[nodiscard]] QAccessible::State state() const override {
        auto state = QAccessibleWidget::state();
        state.selectable = true;
        state.selected = day_.chosen();
        return state;
    }
    [[nodiscard]] QStringList actionNames() const override { return {pressAction(), setFocusAction()}; }
    void doAction(const QString& action) override {
        if (action == pressAction())
            day_.click();
        else
            QAccessibleWidget::doAction(action);
    }

  private:
    CalendarDay& day_;
};

QAccessibleInterface* CalendarDay::makeAccessible() {
    return new Accessible(*this);
}

} // namespace kova
