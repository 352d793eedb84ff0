#include "adapters/qt/label_view.h"

#include "adapters/qt/window_frame.h"

#include <QFontMetrics>
#include <QPainter>

#include <algorithm>

namespace kova {
namespace {

const Font Message{"Tahoma", 12, false};
constexpr int SmallestPixels = 5; // a message is never cut
constexpr double RightMargin = 7; // between a text that stands right and what it names, in design pixels

} // namespace

LabelView::LabelView(Label& label, WindowFrame& frame, QWidget& parent)
    : QLabel(&parent), ModelView(label, frame) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setTextFormat(Qt::PlainText);
    showProperty(Property::Caption);
}

bool LabelView::severalLines() const {
    return frame().pixels(*model()).height() >=
           2 * QFontMetrics(look::font(model()->font(), scale())).lineSpacing();
}

QFont LabelView::fullFont() const {
    return look::font(severalLines() ? Message : model()->font(), scale());
}

void LabelView::layOut() {
    QRect place = frame().pixels(*model());
    if (!severalLines()) {
        const int wanted = QFontMetrics(fullFont()).horizontalAdvance(text()) + pixels(2);
        if (wanted > place.width())
            place.setWidth(std::max(place.width(), std::min(wanted, roomToTheRight(place))));
        place.setHeight(std::max(place.height(), 1));
    }
    setGeometry(place);
}

int LabelView::roomToTheRight(const QRect& place) const {
    int right = parentWidget()->width();
    for (const Control* other : frame().model()->controls()) {
        if (other == model() || other->parent() != model()->parent() || !other->visible())
            continue;
        const QRect taken = frame().pixels(*other);
        if (taken.left() > place.left() && taken.top() < place.bottom() && taken.bottom() > place.top())
            right = std::min(right, taken.left());
    }
    return right - place.left();
}

void LabelView::neighbourMoved() {
    if (model() != nullptr)
        layOut();
}

void LabelView::showProperty(Property property) {
    if (property == Property::Caption) {
        setText(QString::fromStdString(model()->caption()));
        nameWidget(*this, text());
        frame().neighbourRenamed();
        layOut();
    }
    ControlView::showProperty(property);
}

void LabelView::paintEvent(QPaintEvent*) {
    if (model() == nullptr)
        return;
    QPainter painter(this);
    const QColor text = look::readableOn(backdrop(), look::toQt(model()->foreColor()));
    painter.setPen(isEnabled() ? text : look::mixed(text, backdrop(), 0.5));
    const bool several = severalLines();
    const bool right = model()->alignment() == Alignment::Right;
    look::drawText(painter, rect().adjusted(0, 0, right ? -pixels(RightMargin) : 0, 0), this->text(),
                   fullFont(),
                   {.alignment = look::toQt(model()->alignment()) | Qt::AlignVCenter,
                    .wrapped = several,
                    .smallestPixels = several ? SmallestPixels : pixels(8)});
}

} // namespace kova
