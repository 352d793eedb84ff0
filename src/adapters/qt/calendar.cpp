#include "adapters/qt/calendar.h"

#include <QKeyEvent>
#include <QLabel>

#include <algorithm>

namespace kova {
namespace {

constexpr double NamesHeight = 20; // design pixels
constexpr double DayPoints = 13;
constexpr double SmallestText = 10; // points of the days' names
// What the movements' tables can hold.
const QDate FirstDay(1753, 1, 1), LastDay(9999, 12, 31);

} // namespace

Calendar::Calendar(QWidget& window, const Wording& words)
    : Panel(window), words_(words), title_(new QLabel(this)) {
    title_->setAlignment(Qt::AlignCenter);
    const auto turn = [this](const char* name, auto next) {
        return addButton(name, [this, next] {
            const bool onDay = dynamic_cast<CalendarDay*>(this->window()->focusWidget()) != nullptr;
            current_ = std::clamp(next(current_), FirstDay, LastDay);
            onDay ? goTo(current_) : showMonth();
        });
    };
    turns_ = {turn("previousYear", [](const QDate& day) { return day.addYears(-1); }),
              turn("previousMonth", [](const QDate& day) { return day.addMonths(-1); }),
              turn("nextMonth", [](const QDate& day) { return day.addMonths(1); }),
              turn("nextYear", [](const QDate& day) { return day.addYears(1); })};
    for (QLabel*& name : dayNames_) {
        name = new QLabel(this);
        name->setAlignment(Qt::AlignCenter);
    }
    addDays();
    today_ = addButton("today", [this] { pick(QDate::currentDate()); });
    cancel_ = addButton("cancel", [this] { close(); });
}

void Calendar::addDays() {
    for (int i = 0; i < DaysOfWeek * Weeks; ++i) {
        auto* const day = new CalendarDay(*this);
        day->setObjectName(QString("day_%1").arg(i));
        day->setFocusPolicy(Qt::TabFocus);
        connect(day, &QAbstractButton::clicked, this, [this, day] { pick(day->day()); });
        days_.push_back(day);
    }
}

void Calendar::open(const QDate& chosen, const CalendarStyle& style, const Looks& looks) {
    chosen_ = current_ = std::clamp(chosen, FirstDay, LastDay);
    style_ = style;
    setLooks(looks);
    place();
    showWords();
    showMonth();
    appear(currentDay());
}

/// Smaller than it is designed where the window has no room for it.
void Calendar::place() {
    const double wide = DaysOfWeek * Side + 2 * Margin;
    const double high = (Weeks + 2) * Side + NamesHeight + 2 * Margin;
    const QSize room = parentWidget()->size();
    const double unit = std::min({Panel::looks().scale.smaller(), room.width() / wide, room.height() / high});
    const auto px = [unit](double design) { return static_cast<int>(design * unit); };
    const int side = px(Side);
    const int left = px(Margin);
    int top = px(Margin);
    const auto cell = [&](int column, int columns = 1) {
        return QRect(left + column * side, top, columns * side, side);
    };
    constexpr std::array Columns{0, 1, 5, 6};
    for (std::size_t i = 0; i < turns_.size(); ++i)
        turns_[i]->setGeometry(cell(Columns[i]));
    title_->setGeometry(cell(2, 3));
    top += side;
    for (int i = 0; i < DaysOfWeek; ++i)
        dayNames_[static_cast<std::size_t>(i)]->setGeometry(left + i * side, top, side, px(NamesHeight));
    top += px(NamesHeight);
    for (int i = 0; i < DaysOfWeek * Weeks; ++i) {
        days_[static_cast<std::size_t>(i)]->setGeometry(cell(i % DaysOfWeek));
        if (i % DaysOfWeek == DaysOfWeek - 1)
            top += side;
    }
    today_->setGeometry(cell(0, 4));
    cancel_->setGeometry(cell(4, 3));
    resize(DaysOfWeek * side + 2 * left, top + side + px(Margin));
    moveInside(Panel::looks().beside.topLeft() - QPoint(0, height() + px(FaceInset)));
}

void Calendar::showWords() {
    const auto say = [this](Word word) { return QString::fromStdString(words_(word)); };
    setAccessibleName(say(Word::Calendar));
    constexpr std::array Turns{Word::PreviousYear, Word::PreviousMonth, Word::NextMonth, Word::NextYear};
    constexpr std::array Arrows{-2, -1, 1, 2};
    auto looks = buttonLooks(ButtonPoints);
    for (std::size_t i = 0; i < turns_.size(); ++i) {
        turns_[i]->setAccessibleName(say(Turns[i]));
        looks.picture = arrowHeads(Arrows[i]);
        turns_[i]->setLooks(looks);
    }
    looks.picture = {};
    for (const auto& [button, word] : {std::pair(today_, Word::Today), std::pair(cancel_, Word::Cancel)}) {
        button->setText(say(word));
        button->setLooks(looks);
    }
    const QString ink = QString("color: %1;").arg(look::inkOn(Panel::looks().background).name());
    title_->setStyleSheet(ink);
    const QFont font = look::font({.points = SmallestText}, Panel::looks().scale);
    for (int i = 0; i < DaysOfWeek; ++i) {
        QLabel* const name = dayNames_[static_cast<std::size_t>(i)];
        const int day = (style_.firstDay - 1 + i) % DaysOfWeek + 1;
        name->setText(style_.names.standaloneDayName(day, QLocale::ShortFormat));
        name->setAccessibleName(style_.names.standaloneDayName(day, QLocale::LongFormat));
        name->setFont(font);
        name->setStyleSheet(ink);
    }
}

void Calendar::showMonth() {
    const QString month = style_.names.standaloneMonthName(current_.month());
    const QString title = month + ' ' + QString::number(current_.year());
    title_->setFont(look::fitted(title,
                                 look::font({.points = ButtonPoints, .bold = true}, Panel::looks().scale),
                                 title_->size(), {.wrapped = false}));
    title_->setText(title);
    const QDate first(current_.year(), current_.month(), 1);
    const int before = (first.dayOfWeek() - style_.firstDay + DaysOfWeek) % DaysOfWeek;
    const auto looks = buttonLooks(DayPoints);
    QDate date = first.addDays(-before);
    for (CalendarDay* const day : days_) {
        const bool ofMonth = date.month() == current_.month() && date.year() == current_.year();
        if (ofMonth)
            day->show(date, chosen_, style_, looks);
        day->setVisible(ofMonth);
        date = date.addDays(1);
    }
}

void Calendar::goTo(const QDate& day) {
    current_ = std::clamp(day, FirstDay, LastDay);
    showMonth();
    if (CalendarDay* const current = currentDay())
        current->setFocus(Qt::OtherFocusReason);
}

CalendarDay* Calendar::currentDay() const {
    const auto found = std::ranges::find_if(
        days_, [this](const CalendarDay* one) { return !one->isHidden() && one->day() == current_; });
    return found == days_.end() ? nullptr : *found;
}

void Calendar::pick(const QDate& day) {
    if (isHidden())
        return;
    close();
    if (picked)
        picked(day);
}

bool Calendar::takeKey(const QKeyEvent& event) {
    auto* const focused = window()->focusWidget();
    if (const auto* const day = dynamic_cast<CalendarDay*>(focused))
        current_ = day->day(); // where assistive technology may have put the focus
    const int key = event.key();
    if (const auto day = dayByKey(event, current_))
        goTo(*day);
    else if (key == Qt::Key_F4)
        close();
    else if ((key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space) &&
             !event.isAutoRepeat() && !isAncestorOf(focused))
        pick(current_);
    else
        return Panel::takeKey(event);
    return true;
}

std::vector<QWidget*> Calendar::stops() const {
    std::vector<QWidget*> stops(turns_.begin(), turns_.end());
    if (CalendarDay* const day = currentDay())
        stops.push_back(day);
    stops.insert(stops.end(), {today_, cancel_});
    return stops;
}

} // namespace kova
