#include "adapters/qt/panel.h"

#include "adapters/qt/palette.h"
#include "adapters/qt/window_sheet.h"

#include <QAccessibleWidget>
#include <QApplication>
#include <QKeyEvent>
#include <QPainter>

#include <algorithm>
#include <iterator>
#include <utility>

namespace kova {
namespace {

constexpr double ChoiceWidth = 320; // design pixels

QColor faceOn(const QColor& background) {
    return look::isDark(background) ? look::mixed(background, Qt::black, 0.3) : palette::Key;
}

bool isPointer(QEvent::Type type) {
    return type == QEvent::MouseButtonPress || type == QEvent::MouseButtonDblClick ||
           type == QEvent::TouchBegin || type == QEvent::Wheel || type == QEvent::ContextMenu;
}

} // namespace

Panel::Panel(QWidget& window) : QFrame(&window) {
    hide();
}

FaceButton* Panel::addButton(const QString& name, std::function<void()> clicked) {
    auto* const button = new FaceButton(*this);
    button->setObjectName(name);
    button->setFocusPolicy(Qt::TabFocus);
    connect(button, &QAbstractButton::clicked, this, std::move(clicked));
    return button;
}

QAccessibleInterface* Panel::makeAccessible() {
    return new QAccessibleWidget(this, QAccessible::Dialog);
}

void Panel::setLooks(const Looks& looks) {
    looks_ = looks;
    looks_.background = look::windowStyle(looks.background, looks.scale).background;
}

void Panel::moveInside(const QPoint& wanted) {
    const QSize room = parentWidget()->size();
    move(std::clamp(wanted.x(), 0, std::max(0, room.width() - width())),
         std::clamp(wanted.y(), 0, std::max(0, room.height() - height())));
}

void Panel::appear(QWidget* focus) {
    if (isHidden())
        focusBefore_ = window()->focusWidget();
    raise();
    show();
    if (focus != nullptr)
        focus->setFocus(Qt::OtherFocusReason);
    qApp->installEventFilter(this);
    QAccessibleEvent opened(this, QAccessible::DialogStart);
    QAccessible::updateAccessibility(&opened);
}

void Panel::close() {
    if (isHidden())
        return;
    qApp->removeEventFilter(this);
    if (focusBefore_)
        focusBefore_->setFocus(Qt::PopupFocusReason);
    hide();
    QAccessibleEvent closed(this, QAccessible::DialogEnd);
    QAccessible::updateAccessibility(&closed);
}

FaceButton::Looks Panel::buttonLooks(double points) const {
    FaceButton::Looks looks;
    looks.face.unit = looks_.scale.smaller();
    looks.face.color = faceOn(looks_.background);
    looks.text = look::inkOn(looks.face.color);
    looks.font = look::font({.points = points}, looks_.scale);
    looks.pictureSize = looks_.scale.smaller() * Side / 2.4;
    const double inset = FaceInset * looks_.scale.smaller();
    looks.inset = {inset, inset, inset, inset};
    looks.backdrop = [this] { return looks_.background; };
    return looks;
}

bool Panel::eventFilter(QObject* watched, QEvent* event) {
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

bool Panel::takeKey(const QKeyEvent& event) {
    switch (event.key()) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        moveFocus(event.key() == Qt::Key_Tab && !event.modifiers().testFlag(Qt::ShiftModifier));
        return true;
    case Qt::Key_Escape:
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
    if (!event.isAutoRepeat() && button != nullptr && isAncestorOf(button))
        button->click();
    return true;
}

void Panel::moveFocus(bool forward) {
    const std::vector<QWidget*> stops = this->stops();
    if (stops.empty())
        return;
    const auto at = std::ranges::find(stops, window()->focusWidget());
    const auto count = static_cast<std::ptrdiff_t>(stops.size());
    std::ptrdiff_t next = forward ? 0 : count - 1;
    if (at != stops.end())
        next = (at - stops.begin() + (forward ? 1 : count - 1)) % count;
    stops[static_cast<std::size_t>(next)]->setFocus(forward ? Qt::TabFocusReason : Qt::BacktabFocusReason);
}

void Panel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double unit = looks_.scale.smaller();
    const double line = look::lineWidth(2 * unit);
    painter.setPen(QPen(look::accentOn(looks_.background), line));
    painter.setBrush(looks_.background);
    painter.drawRoundedRect(QRectF(rect()).adjusted(line / 2, line / 2, -line / 2, -line / 2),
                            look::BoardRadius * unit, look::BoardRadius * unit);
}

void ChoicePanel::open(const QString& name, const std::vector<Choice>& choices, const Looks& looks) {
    close();
    for (FaceButton* const button : std::exchange(buttons_, {}))
        delete button;
    setLooks(looks);
    setAccessibleName(name);
    const auto ofButtons = buttonLooks(ButtonPoints);
    for (const Choice& choice : choices) {
        buttons_.push_back(addButton({}, [this, chosen = choice.chosen] {
            if (isHidden())
                return;
            close();
            chosen();
        }));
        buttons_.back()->setText(choice.words);
        buttons_.back()->setEnabled(choice.enabled);
        buttons_.back()->setLooks(ofButtons);
        buttons_.back()->show();
    }
    place();
    const auto reached = stops();
    appear(reached.empty() ? nullptr : reached.front());
}

/// In as many columns as keep the buttons' size.
void ChoicePanel::place() {
    const QSize room = parentWidget()->size();
    const double unit = looks().scale.smaller();
    const int margin = static_cast<int>(Margin * unit);
    const int side = static_cast<int>(Side * unit);
    const int count = std::max(1, static_cast<int>(buttons_.size()));
    const int most = std::max(1, (room.height() - 2 * margin) / side);
    const int columns = (count + most - 1) / most;
    const int rows = (count + columns - 1) / columns;
    const int wide = std::min(static_cast<int>(ChoiceWidth * unit), (room.width() - 2 * margin) / columns);
    for (int i = 0; FaceButton* const button : buttons_) {
        button->setGeometry(margin + i / rows * wide, margin + i % rows * side, wide, side);
        ++i;
    }
    resize(columns * wide + 2 * margin, rows * side + 2 * margin);
    moveInside(looks().beside.bottomRight() - QPoint(width() - 1, 0));
}

std::vector<QWidget*> ChoicePanel::stops() const {
    std::vector<QWidget*> enabled;
    std::ranges::copy_if(buttons_, std::back_inserter(enabled), &QWidget::isEnabled);
    return enabled;
}

bool ChoicePanel::takeKey(const QKeyEvent& event) {
    const bool forward = event.key() == Qt::Key_Down || event.key() == Qt::Key_Right;
    if (!forward && event.key() != Qt::Key_Up && event.key() != Qt::Key_Left)
        return Panel::takeKey(event);
    moveFocus(forward);
    return true;
}

} // namespace kova
