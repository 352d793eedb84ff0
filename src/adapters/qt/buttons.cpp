#include "adapters/qt/buttons.h"

#include "adapters/qt/window_frame.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QToolTip>
#include <QTouchEvent>

#include <algorithm>

namespace kova {
namespace {

bool presses(const QKeyEvent& event) {
    const int key = event.key();
    return key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter;
}

} // namespace

FaceButton::FaceButton(QWidget& parent) : QAbstractButton(&parent) {
    setFocusPolicy(Qt::NoFocus);
}

void FaceButton::setLooks(const Looks& looks) {
    looks_ = looks;
    update();
}

QRectF FaceButton::face() const {
    return QRectF(rect()).marginsRemoved(looks_.inset);
}

void FaceButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    look::Face face = looks_.face;
    face.down = isDown();
    face.enabled = isEnabled();
    face.focused = hasFocus();
    if (looks_.backdrop)
        face.backdrop = looks_.backdrop();
    const QRectF outline = this->face();
    look::drawFace(painter, outline, face);
    const QColor fill = look::filling(face);
    const QColor text = look::readableOn(fill, looks_.text);
    const QColor ink = face.enabled ? text : look::mixed(text, fill, 0.55);
    const QRectF area = drawPicture(painter, look::captionArea(outline, face), ink);
    painter.setPen(ink);
    if (!looks_.wrapped) {
        look::drawText(painter, area, this->text(), looks_.font, {.wrapped = false});
        return;
    }
    const auto caption = look::setCaptions({{this->text(), area.size()}}, looks_.font, looks_.face.unit,
                                           look::CaptionSizes::Own);
    look::drawCaption(painter, area, caption.front(), Qt::AlignCenter);
    wholeCaption_ = caption.front().whole;
}

/// Returns what is left for the caption.
QRectF FaceButton::drawPicture(QPainter& painter, const QRectF& area, const QColor& color) const {
    if (!looks_.picture)
        return area.adjusted(area.width() / 40, 0, -area.width() / 40, 0);
    const double size = std::min({looks_.pictureSize, area.width(), area.height()});
    QRectF place(0, 0, size, size);
    place.moveCenter(area.center());
    if (!text().isEmpty())
        place.moveLeft(area.left() + size * 0.1);
    looks_.picture(painter, place, color);
    return area.adjusted(size * 1.25, 0, -size * 0.15, 0);
}

void FaceButton::keyPressEvent(QKeyEvent* event) {
    if (presses(*event) && !event->isAutoRepeat())
        setDown(true);
    else
        event->ignore();
}

void FaceButton::keyReleaseEvent(QKeyEvent* event) {
    if (presses(*event) && !event->isAutoRepeat() && isDown()) {
        setDown(false); // click() alone would not redraw it
        click();
    } else {
        event->ignore();
    }
}

bool FaceButton::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip && toolTip().isEmpty() && !wholeCaption_) {
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), text(), this);
        return true;
    }
    return QAbstractButton::event(event);
}

KeyButton::KeyButton(QWidget& board, std::string key, const QString& spoken)
    : FaceButton(board), key_(std::move(key)) {
    setObjectName(board.objectName() + '_' + QString::fromStdString(key_));
    setAccessibleName(spoken);
    setAttribute(Qt::WA_AcceptTouchEvents);
}

bool KeyButton::event(QEvent* event) {
    switch (event->type()) {
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TouchCancel:
        return takeTouch(static_cast<QTouchEvent&>(*event));
    default:
        return FaceButton::event(event);
    }
}

bool KeyButton::takeTouch(const QTouchEvent& event) {
    if (!isEnabled())
        return false;
    const bool inside = event.pointCount() > 0 && QRectF(rect()).contains(event.points().first().position());
    const bool wasDown = isDown();
    setDown(inside && event.type() != QEvent::TouchEnd && event.type() != QEvent::TouchCancel);
    if (event.type() == QEvent::TouchEnd && wasDown && inside)
        click(); // after setDown, since it would not redraw the key
    return true;
}

namespace {

constexpr double IconSize = 16;            // design pixels
constexpr double PrimaryGap = 2 * FaceGap; // a finger on its neighbour must not reach it

class AsPushButton : public ControlVisitor {
  public:
    void visit(PushButton& found) override { button = &found; }
    const PushButton* button = nullptr;
};

/// Null when it is none.
const PushButton* asPushButton(Control& control) {
    AsPushButton as;
    control.accept(as);
    return as.button;
}

int pixelsBetween(const QRect& one, const QRect& other) {
    return std::max({other.left() - one.right(), one.left() - other.right(), other.top() - one.bottom(),
                     one.top() - other.bottom()}) -
           1;
}

} // namespace

PushButtonView::PushButtonView(PushButton& button, WindowFrame& frame, QWidget& parent)
    : FaceButton(parent), ModelView(button, frame) {
    // Reached by the tabulator and the program; a touch leaves the focus where it is.
    setFocusPolicy(Qt::TabFocus);
    connect(this, &QAbstractButton::clicked, this,
            [this] { act([](PushButton& target) { target.press(); }); });
    nameWidget();
    showProperty(Property::ToolTip);
}

QAccessibleInterface* PushButtonView::makeAccessible() {
    const bool oneOfSeveral = model() != nullptr && model()->index().has_value();
    return makeAccessibleButton(*this, oneOfSeveral ? QAccessible::RadioButton : QAccessible::CheckBox);
}

bool PushButtonView::resting() const {
    return rested_.isValid() && !rested_.hasExpired(PushButton::RestTime.count());
}

// Only what the window system sends is a person's.
bool PushButtonView::event(QEvent* event) {
    const auto type = event->type();
    const bool begins =
        type == QEvent::MouseButtonPress || type == QEvent::MouseButtonDblClick || type == QEvent::KeyPress;
    return (begins && event->spontaneous() && resting()) || FaceButton::event(event);
}

void PushButtonView::layOut() {
    ControlView::layOut();
    showLooks();
}

// Buttons of an array stand close together, and others beside the primary one. They look apart, and take
// touches up to each other.
QMarginsF PushButtonView::inset() const {
    double around = 0, left = 0, right = 0;
    for (Control* other : model()->window().controls()) {
        if (other == model() || other->parent() != model()->parent())
            continue;
        const QRect place = frame().pixels(*other);
        const auto half = [&](double gap) {
            return (gap * scale().smaller() - pixelsBetween(geometry(), place)) / 2;
        };
        if (other->name() == model()->name())
            around = std::max(around, half(FaceGap));
        else if (const PushButton* const button = asPushButton(*other);
                 button != nullptr && (button->primary() || model()->primary()))
            (place.left() < x() ? left : right) = std::max(0.0, half(PrimaryGap));
    }
    return {std::max(around, left), around, std::max(around, right), around};
}

void PushButtonView::showLooks() {
    const PushButton& button = *model();
    Font font = button.font();
    font.points = std::max(font.points, look::LegiblePoints);
    Looks looks;
    looks.face.unit = scale().smaller();
    looks.face.flat = button.ownColors();
    looks.face.marked = button.latched();
    looks.face.color = look::toQt(button.backColor());
    if (button.latched()) { // held down: deeper than its neighbours
        const QColor held = look::isDark(looks.face.color) ? palette::HeldOnDark : palette::HeldOnLight;
        looks.face.color = look::mixed(looks.face.color, held, 0.6);
        looks.face.flat = true;
    }
    looks.text = look::toQt(button.foreColor());
    looks.face.accented = button.suggested() || (button.primary() && button.ownColors());
    if (button.primary() && !button.ownColors()) {
        looks.face.color = palette::Blue;
        looks.text = look::inkOn(palette::Blue);
    }
    looks.font = look::font(font, scale());
    looks.pictureSize = pixels(IconSize);
    looks.inset = inset();
    looks.backdrop = [this] { return backdrop(); };
    const auto icon = button.primary() ? PushButton::Icon::Confirm : button.icon();
    if (icon != PushButton::Icon::None)
        looks.picture = [icon](QPainter& painter, const QRectF& area, const QColor& color) {
            look::drawIcon(painter, area, icon, color);
        };
    setCheckable(button.latched() || button.index()); // of an array of buttons one may be held down
    setChecked(button.latched());
    setLooks(looks);
}

void PushButtonView::showProperty(Property property) {
    switch (property) {
    case Property::Caption:
        setText(QString::fromStdString(model()->caption()));
        setShortcut({}); // an ampersand is drawn as itself and makes no key
        updateSpokenName();
        break;
    case Property::ToolTip:
        setToolTip(QString::fromStdString(model()->toolTip()));
        showProperty(Property::Caption);
        break;
    case Property::Rest:
        rested_.start();
        break;
    default:
        showLooks();
        break;
    }
    ControlView::showProperty(property);
}

} // namespace kova
