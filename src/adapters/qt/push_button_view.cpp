#include "adapters/qt/push_button_view.h"

#include "adapters/qt/icons.h"
#include "adapters/qt/window_frame.h"

#include <algorithm>

namespace kova {
namespace {

constexpr double IconSize = 16;    // design pixels
constexpr double LeastPoints = 11; // captions of less are hard to read at arm's length
constexpr double LeastGap = 7;     // design pixels between two faces: 1.5 mm on a panel of 10 inches

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
    showProperty(Property::Caption);
    showProperty(Property::ToolTip);
}

void PushButtonView::layOut() {
    ControlView::layOut();
    showLooks();
}

// Buttons of an array stand close together. They look apart, and take touches up to each other.
double PushButtonView::inset() const {
    double missing = 0;
    for (const Control* other : model()->window().controls())
        if (other != model() && other->parent() == model()->parent() && other->name() == model()->name())
            missing = std::max(missing, LeastGap * scale().smaller() -
                                            pixelsBetween(geometry(), frame().pixels(*other)));
    return missing / 2;
}

void PushButtonView::showLooks() {
    const PushButton& button = *model();
    Font font = button.font();
    font.points = std::max(font.points, LeastPoints);
    Looks looks;
    looks.face.unit = scale().smaller();
    looks.face.flat = button.ownColors();
    looks.face.marked = button.latched();
    looks.face.color = look::toQt(button.backColor());
    if (button.latched()) { // held down: deeper than its neighbours
        const QColor held = look::isDark(looks.face.color) ? QColor(30, 40, 52) : QColor(120, 180, 235);
        looks.face.color = look::mixed(looks.face.color, held, 0.6);
        looks.face.flat = true;
    }
    looks.text = look::toQt(button.foreColor());
    looks.font = look::font(font, scale());
    looks.pictureSize = pixels(IconSize);
    looks.inset = inset();
    if (const auto icon = button.icon(); icon != PushButton::Icon::None)
        looks.picture = [icon](QPainter& painter, const QRectF& area, const QColor& color) {
            look::drawIcon(painter, area, icon, color);
        };
    setCheckable(button.latched() || button.index()); // of an array of buttons one may be held down
    setChecked(button.latched());
    setLooks(looks);
}

void PushButtonView::showProperty(Property property) {
    switch (property) {
    case Property::Caption: {
        const QString caption = QString::fromStdString(model()->caption());
        setText(caption);
        setShortcut({}); // an ampersand is drawn as itself and makes no key
        if (const QString spoken = caption.isEmpty() ? QString::fromStdString(model()->toolTip()) : caption;
            spoken.isEmpty())
            nameByLabels(*this);
        else
            nameWidget(*this, spoken);
        break;
    }
    case Property::ToolTip:
        setToolTip(QString::fromStdString(model()->toolTip()));
        showProperty(Property::Caption);
        break;
    default:
        showLooks();
        break;
    }
    ControlView::showProperty(property);
}

} // namespace kova
