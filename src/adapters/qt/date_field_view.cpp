#include "adapters/qt/date_field_view.h"

#include "adapters/qt/window_frame.h"
#include "services/conversions.h"

#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QPainter>
#include <QToolButton>

#include <algorithm>
#include <array>
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
    makeSteps(field, parent);
    showProperty(Property::Text);
    connect(edit_, &QLineEdit::textEdited, this, [this](const QString& text) {
        act([&](DateField& target) { target.setText(text.toStdString()); });
    });
    connect(button_, &QToolButton::clicked, this, [this] { openCalendar(); });
}

void DateFieldView::makeSteps(const DateField& field, QWidget& parent) {
    if (field.stepsPlace() == Rect())
        return;
    for (const char* const name : {"_before", "_today", "_after"}) {
        auto* const button = new FaceButton(parent);
        button->setObjectName(objectName() + name);
        steps_.push_back(button);
    }
    connect(steps_[0], &QAbstractButton::clicked, this, [this] { step(-1); });
    connect(steps_[1], &QAbstractButton::clicked, this, [this] { pick(QDate::currentDate()); });
    connect(steps_[2], &QAbstractButton::clicked, this, [this] { step(1); });
    scheme_ = field.parent()->changed.connect([this](Property property) {
        if (property == Property::BackColor)
            showSteps();
    });
}

void DateFieldView::showSteps() {
    if (model() == nullptr || steps_.empty())
        return;
    const QRect place = frame().pixels(*model()->parent(), model()->stepsPlace());
    FaceButton::Looks looks;
    looks.face.unit = scale().smaller();
    const bool dark = look::isDark(backdrop());
    looks.face.color = dark ? look::mixed(look::toQt(colors::DarkFace), Qt::black, 0.15) // for white texts
                            : look::toQt(colors::ButtonFace);
    looks.text = look::inkOn(looks.face.color);
    looks.font = look::font({.points = look::LegiblePoints}, scale());
    const double inset =
        std::max(0, place.height() - height()) / 2.0; // as high as their neighbours to the eye
    looks.inset = {inset, inset, inset, inset};
    looks.backdrop = [this] { return backdrop(); };
    looks.pictureSize = pixels(16);
    constexpr std::array Words{Word::PreviousDay, Word::Today, Word::NextDay};
    constexpr std::array Arrows{-1, 0, 1};
    const int part = place.width() / 3;
    for (std::size_t i = 0; i < steps_.size(); ++i) {
        const QString word = QString::fromStdString(frame().words()(Words[i]));
        looks.picture = Arrows[i] == 0 ? nullptr : arrowHeads(Arrows[i]);
        steps_[i]->setText(Arrows[i] == 0 ? word : QString());
        steps_[i]->setAccessibleName(word);
        steps_[i]->setGeometry(place.left() + static_cast<int>(i) * part, place.top(), part, place.height());
        steps_[i]->setLooks(looks);
    }
}

void DateFieldView::showWords() {
    showSpokenName(accessibleName());
    closeCalendar();
    showSteps();
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
    closeCalendar();
    scheme_.disconnect();
    ModelView::detach();
}

void DateFieldView::layOut() {
    ControlView::layOut();
    closeCalendar();
    showSteps();
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
    for (FaceButton* const button : steps_) {
        button->setEnabled(drawnEnabled());
        button->setVisible(drawnVisible());
    }
    ControlView::showProperty(property);
}

bool DateFieldView::eventFilter(QObject* watched, QEvent* event) {
    if (watched != edit_)
        return QWidget::eventFilter(watched, event);
    if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick)
        act([](DateField& field) { field.window().moveFocus(field); });
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto& key = static_cast<const QKeyEvent&>(*event);
    const bool alt = key.modifiers().testFlag(Qt::AltModifier);
    const bool up = key.key() == Qt::Key_Up;
    if (key.key() == Qt::Key_F4 || (alt && key.key() == Qt::Key_Down))
        openCalendar();
    else if (!alt && (up || key.key() == Qt::Key_Down))
        step(up ? 1 : -1);
    else
        return false;
    return true;
}

void DateFieldView::openCalendar() {
    if (model() == nullptr)
        return;
    if (calendar_ == nullptr) {
        calendar_ = new Calendar(frame(), frame().words());
        calendar_->setObjectName(objectName() + "_popup");
        calendar_->picked = [this](const QDate& day) { pick(day); };
    }
    calendar_->open(day().value_or(QDate::currentDate()),
                    calendarStyle(frame().words().languageId(), frame().regional().name),
                    {scale(), backdrop(), QRect(mapTo(&frame(), QPoint()), size())});
}

void DateFieldView::closeCalendar() {
    if (calendar_)
        calendar_->close();
}

std::optional<QDate> DateFieldView::day() const {
    return model() == nullptr ? std::nullopt : toQt(parseDate(model()->text(), frame().regional()));
}

// From a text that is no date the steps count from today.
void DateFieldView::step(int days) {
    pick(day().value_or(QDate::currentDate()).addDays(days));
}

void DateFieldView::pick(const QDate& day) {
    act([&](DateField& field) { field.setText(shortDate(fromQt(day), frame().regional())); });
}

} // namespace kova
