#include "adapters/qt/calendar.h"

#include "adapters/qt/palette.h"
#include "adapters/qt/window_sheet.h"

#include <QAccessibleWidget>
#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>

#include <algorithm>

namespace kova {
namespace {

// Lengths in design pixels.
constexpr double DaySide = 45; // more than 9 mm on a small panel
constexpr double BoardMargin = 6;
constexpr double FaceInset = 2;
constexpr double NamesHeight = 20;
constexpr double DayPoints = 13, ButtonPoints = 11;
constexpr double SmallestText = 10; // points of the days' names
// What the movements' tables can hold.
const QDate FirstDay(1753, 1, 1), LastDay(9999, 12, 31);

QColor faceOn(const QColor& background) {
    return look::isDark(background) ? look::mixed(background, Qt::black, 0.3) : palette::Key;
}

bool isPointer(QEvent::Type type) {
    return type == QEvent::MouseButtonPress || type == QEvent::MouseButtonDblClick ||
           type == QEvent::TouchBegin || type == QEvent::Wheel || type == QEvent::ContextMenu;
}

} // namespace

Calendar::Calendar(QWidget& window, const Wording& words)
    : QFrame(&window), words_(words), title_(new QLabel(this)) {
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
    hide();
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

FaceButton* Calendar::addButton(const char* name, std::function<void()> clicked) {
    auto* const button = new FaceButton(*this);
    button->setObjectName(name);
    button->setFocusPolicy(Qt::TabFocus);
    connect(button, &QAbstractButton::clicked, this, std::move(clicked));
    return button;
}

QAccessibleInterface* Calendar::makeAccessible() {
    return new QAccessibleWidget(this, QAccessible::Dialog);
}

void Calendar::open(const QDate& chosen, const CalendarStyle& style, const Looks& looks) {
    chosen_ = current_ = std::clamp(chosen, FirstDay, LastDay);
    style_ = style;
    looks_ = looks;
    looks_.background = look::windowStyle(looks.background, looks.scale).background;
    if (isHidden())
        focusBefore_ = window()->focusWidget();
    place();
    showWords();
    raise();
    show();
    goTo(chosen_);
    qApp->installEventFilter(this);
    QAccessibleEvent opened(this, QAccessible::DialogStart);
    QAccessible::updateAccessibility(&opened);
}

void Calendar::close() {
    if (isHidden())
        return;
    qApp->removeEventFilter(this);
    if (focusBefore_)
        focusBefore_->setFocus(Qt::PopupFocusReason);
    hide();
    QAccessibleEvent closed(this, QAccessible::DialogEnd);
    QAccessible::updateAccessibility(&closed);
}

FaceButton::Looks Calendar::buttonLooks(double points) const {
    FaceButton::Looks looks;
    looks.face.unit = looks_.scale.smaller();
    looks.face.color = faceOn(looks_.background);
    looks.text = look::inkOn(looks.face.color);
    looks.font = look::font({.points = points}, looks_.scale);
    looks.pictureSize = looks_.scale.smaller() * DaySide / 2.4;
    const double inset = FaceInset * looks_.scale.smaller();
    looks.inset = {inset, inset, inset, inset};
    looks.backdrop = [this] { return looks_.background; };
    return looks;
}

/// Smaller than it is designed where the window has no room for it.
void Calendar::place() {
    const double wide = DaysOfWeek * DaySide + 2 * BoardMargin;
    const double high = (Weeks + 2) * DaySide + NamesHeight + 2 * BoardMargin;
    const QSize room = parentWidget()->size();
    const double unit = std::min({looks_.scale.smaller(), room.width() / wide, room.height() / high});
    const auto px = [unit](double design) { return static_cast<int>(design * unit); };
    const int side = px(DaySide);
    const int left = px(BoardMargin);
    int top = px(BoardMargin);
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
    resize(DaysOfWeek * side + 2 * left, top + side + px(BoardMargin));
    const QPoint above = looks_.beside.topLeft() - QPoint(0, height() + px(FaceInset));
    move(std::clamp(above.x(), 0, std::max(0, room.width() - width())),
         std::clamp(above.y(), 0, std::max(0, room.height() - height())));
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
    const QString ink = QString("color: %1;").arg(look::inkOn(looks_.background).name());
    title_->setStyleSheet(ink);
    const QFont font = look::font({.points = SmallestText}, looks_.scale);
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
    title_->setFont(look::fitted(title, look::font({.points = ButtonPoints, .bold = true}, looks_.scale),
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

bool Calendar::eventFilter(QObject* watched, QEvent* event) {
    const auto type = event->type();
    if (watched == window() && (type == QEvent::Hide || type == QEvent::Close || type == QEvent::Resize ||
                                type == QEvent::WindowDeactivate))
        close();
    if (!watched->isWidgetType() || static_cast<QWidget*>(watched)->window() != window())
        return false;
    auto* const widget = static_cast<QWidget*>(watched);
    const bool inside = widget == this || isAncestorOf(widget);
    if (isPointer(type) && !inside) {
        if (type != QEvent::Wheel)
            close();
        return true;
    }
    if (type == QEvent::KeyPress && takeKey(static_cast<QKeyEvent&>(*event)))
        return true;
    return type == QEvent::KeyPress || type == QEvent::KeyRelease || type == QEvent::ShortcutOverride ||
           type == QEvent::InputMethod;
}

bool Calendar::takeKey(const QKeyEvent& event) {
    if (const auto* const focused = dynamic_cast<CalendarDay*>(window()->focusWidget()))
        current_ = focused->day(); // where assistive technology may have put the focus
    if (const auto day = dayByKey(event, current_)) {
        goTo(*day);
        return true;
    }
    switch (event.key()) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        moveFocus(event.key() == Qt::Key_Tab && !event.modifiers().testFlag(Qt::ShiftModifier));
        return true;
    case Qt::Key_Escape:
    case Qt::Key_F4:
        close();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        break;
    default:
        return false;
    }
    auto* const button = qobject_cast<QAbstractButton*>(window()->focusWidget());
    if (event.isAutoRepeat())
        return true;
    if (button != nullptr && isAncestorOf(button))
        button->click();
    else
        pick(current_);
    return true;
}

void Calendar::moveFocus(bool forward) {
    std::vector<QWidget*> stops(turns_.begin(), turns_.end());
    if (CalendarDay* const day = currentDay())
        stops.push_back(day);
    stops.insert(stops.end(), {today_, cancel_});
    const auto at = std::ranges::find(stops, window()->focusWidget());
    const auto count = static_cast<std::ptrdiff_t>(stops.size());
    std::ptrdiff_t next = forward ? 0 : count - 1;
    if (at != stops.end())
        next = (at - stops.begin() + (forward ? 1 : count - 1)) % count;
    stops[static_cast<std::size_t>(next)]->setFocus(forward ? Qt::TabFocusReason : Qt::BacktabFocusReason);
}

void Calendar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double unit = looks_.scale.smaller();
    const double line = look::lineWidth(2 * unit);
    painter.setPen(QPen(look::accentOn(looks_.background), line));
    painter.setBrush(looks_.background);
    painter.drawRoundedRect(QRectF(rect()).adjusted(line / 2, line / 2, -line / 2, -line / 2),
                            look::BoardRadius * unit, look::BoardRadius * unit);
}

} // namespace kova
