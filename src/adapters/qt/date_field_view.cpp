#include "adapters/qt/date_field_view.h"

#include "adapters/qt/window_frame.h"
#include "services/conversions.h"

#include <QAccessibleWidget>
#include <QCalendarWidget>
#include <QFrame>
#include <QKeyEvent>
#include <QLocale>
#include <QPainter>
#include <QScreen>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <chrono>

namespace kova {
namespace {

const Font Text{.points = 12};

std::optional<QDate> toQt(const std::optional<DateTime>& time) {
    if (!time)
        return std::nullopt;
    const std::chrono::year_month_day day(std::chrono::floor<std::chrono::days>(*time));
    return QDate(static_cast<int>(day.year()), static_cast<int>(static_cast<unsigned>(day.month())),
                 static_cast<int>(static_cast<unsigned>(day.day())));
}

DateTime fromQt(const QDate& day) {
    using namespace std::chrono;
    return local_days(year(day.year()) / month(static_cast<unsigned>(day.month())) /
                      std::chrono::day(static_cast<unsigned>(day.day())));
}

QIcon calendarIcon(int size) {
    QPixmap picture(size, size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size / 24.0, size / 24.0);
    painter.setPen(QPen(palette::CalendarIcon, 2));
    painter.drawRoundedRect(QRectF(3, 5, 18, 16), 2, 2);
    painter.fillRect(QRectF(3, 5, 18, 5), palette::CalendarIcon);
    painter.drawLine(QPointF(8, 2), QPointF(8, 6));
    painter.drawLine(QPointF(16, 2), QPointF(16, 6));
    for (const double y : {12.5, 16.5})
        for (const double x : {6.5, 10.75, 15.0})
            painter.fillRect(QRectF(x, y, 2.5, 2.5), palette::CalendarIcon);
    return QIcon(picture);
}

} // namespace

DateFieldView::DateFieldView(DateField& field, WindowFrame& frame, QWidget& parent)
    : QWidget(&parent), ModelView(field, frame), edit_(new QLineEdit(this)), button_(new QToolButton(this)) {
    nameWidget();
    edit_->setObjectName(objectName() + "_text");
    edit_->setFocusPolicy(Qt::ClickFocus);
    edit_->installEventFilter(this);
    button_->setObjectName(objectName() + "_calendar");
    button_->setFocusPolicy(Qt::NoFocus);
    showSpokenName(accessibleName());
    showProperty(Property::Text);
    connect(edit_, &QLineEdit::textEdited, this, [this](const QString& text) {
        act([&](DateField& target) { target.setText(text.toStdString()); });
    });
    connect(button_, &QToolButton::clicked, this, [this] { openCalendar(); });
}

void DateFieldView::showSpokenName(const QString& name) {
    ControlView::showSpokenName(name);
    edit_->setAccessibleName(name);
    button_->setAccessibleName(name + ", " + QString::fromStdString(frame().words()(Word::Calendar)));
}

QAccessibleInterface* DateFieldView::makeAccessible() {
    return new QAccessibleWidget(this, QAccessible::Grouping);
}

void DateFieldView::detach() {
    if (popup_)
        popup_->hide();
    ModelView::detach();
}

void DateFieldView::layOut() {
    ControlView::layOut();
    const int side = std::min(height(), width() / 3);
    const int wide = std::min(side * 6 / 5, width() / 3); // a finger's width where the field is a bit low
    edit_->setGeometry(0, 0, width() - wide - pixels(7), height());
    button_->setGeometry(width() - wide, 0, wide, height());
    button_->setIconSize(QSize(side, side) * 3 / 5);
    button_->setIcon(calendarIcon(side * 3 / 5));
    edit_->setFont(look::font(Text, scale()));
    const QString border = look::borderOn(palette::Paper).name();
    const QString accent = look::accentOn(palette::Paper).name();
    setStyleSheet(QString("QLineEdit, QToolButton { background: white; color: black; border: %1px solid %2;"
                          " border-radius: %3px; padding: 0px %3px; }"
                          "QLineEdit:focus { border: %4px solid %5; }"
                          "QToolButton:pressed { background: %6; }"
                          "QLineEdit:disabled, QToolButton:disabled { background: %7; color: %8; }")
                      .arg(linePixels(1))
                      .arg(border)
                      .arg(pixels(look::FieldRadius))
                      .arg(linePixels(2))
                      .arg(accent, palette::PressedField.name(), palette::DisabledField.name(),
                           palette::DisabledInk.name()));
}

void DateFieldView::showProperty(Property property) {
    if (property == Property::Text) {
        const QString text = QString::fromStdString(model()->text());
        if (edit_->text() != text)
            edit_->setText(text); // puts the caret at the end
    }
    ControlView::showProperty(property);
}

bool DateFieldView::eventFilter(QObject* watched, QEvent* event) {
    if (watched != edit_)
        return QWidget::eventFilter(watched, event);
    if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick)
        act([](DateField& field) { field.window().moveFocus(field); });
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_F4) {
        openCalendar();
        return true;
    }
    return false;
}

void DateFieldView::makeCalendar() {
    popup_ = new QFrame(this, Qt::Popup);
    popup_->setObjectName(objectName() + "_popup");
    calendar_ = new QCalendarWidget(popup_);
    calendar_->setObjectName(objectName() + "_days");
    calendar_->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    auto* layout = new QVBoxLayout(popup_);
    layout->setContentsMargins(1, 1, 1, 1);
    layout->addWidget(calendar_);
    connect(calendar_, &QCalendarWidget::clicked, this, [this](const QDate& day) { pick(day); });
    connect(calendar_, &QCalendarWidget::activated, this, [this](const QDate& day) { pick(day); });
}

void DateFieldView::openCalendar() {
    if (model() == nullptr)
        return;
    if (!popup_)
        makeCalendar();
    const auto& regional = frame().regional();
    const QLocale locale(QString::fromStdString(regional.name).replace('-', '_'));
    calendar_->setLocale(locale);
    calendar_->setFirstDayOfWeek(locale.firstDayOfWeek());
    calendar_->setFont(look::font({.points = 11}, scale()));
    calendar_->setSelectedDate(toQt(parseDate(model()->text(), regional)).value_or(QDate::currentDate()));
    calendar_->setStyleSheet(QString("QToolButton { min-width: %1px; min-height: %1px; }").arg(pixels(38)));
    popup_->resize(pixels(380), pixels(340)); // days of 9 mm on a small panel
    const QPoint above = mapToGlobal(QPoint(0, -popup_->height()));
    const QRect available = screen()->availableGeometry();
    popup_->move(std::clamp(above.x(), available.left(),
                            std::max(available.left(), available.right() - popup_->width())),
                 std::max(above.y(), available.top()));
    popup_->show();
    calendar_->setFocus();
}

void DateFieldView::pick(const QDate& day) {
    if (!popup_ || !popup_->isVisible())
        return;
    popup_->hide();
    act([&](DateField& field) { field.setText(shortDate(fromQt(day), frame().regional())); });
}

} // namespace kova
