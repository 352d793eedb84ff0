#include "adapters/qt/static_views.h"

#include "adapters/qt/window_frame.h"

#include <QAccessibleWidget>
#include <QFontMetrics>
#include <QPainter>

#include <algorithm>

namespace kova {
namespace {

const Font Title{.points = look::LegiblePoints, .bold = true};
constexpr double TitleHeight = 16; // above the first control, in design pixels

/// Draws the mark behind a title `wanted` pixels wide, and returns what is left for the title.
QRectF markMissing(QPainter& painter, QRectF area, int wanted, double unit, const QColor& background) {
    area.setRight(area.right() - look::MissingWidth * unit);
    look::drawMissing(painter, {area.left() + std::min<double>(wanted, area.width()), area.center().y()},
                      unit, background);
    return area;
}

} // namespace

GroupFrameView::GroupFrameView(GroupFrame& group, WindowFrame& frame, QWidget& parent)
    : QWidget(&parent), ModelView(group, frame) {
    nameWidget();
}

void GroupFrameView::showProperty(Property property) {
    if (property == Property::Caption)
        frame().neighbourRenamed();
    ControlView::showProperty(property);
}

void GroupFrameView::showNeed() {
    update(0, 0, width(), static_cast<int>(TitleHeight * scale().y) + 1);
}

QAccessibleInterface* GroupFrameView::makeAccessible() {
    return new QAccessibleWidget(this, QAccessible::Grouping);
}

void GroupFrameView::paintEvent(QPaintEvent*) {
    if (model() == nullptr)
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor back = look::toQt(model()->backColor());
    const double line = look::lineWidth(scale().smaller());
    painter.setPen(QPen(look::borderOn(back, backdrop()), line));
    painter.setBrush(back);
    painter.drawRoundedRect(QRectF(rect()).adjusted(line / 2, line / 2, -line / 2, -line / 2),
                            pixels(look::FaceRadius), pixels(look::FaceRadius));
    const QColor text = look::readableOn(back, look::toQt(model()->foreColor()));
    QRectF title(pixels(8), line / 2, width() - 2 * pixels(8), TitleHeight * scale().y - line);
    const QString caption = QString::fromStdString(model()->caption());
    const look::TextStyle style{
        .alignment = Qt::AlignLeft | Qt::AlignVCenter, .wrapped = false, .smallestPixels = 7};
    const QFont font = look::fitted(caption, look::font(Title, scale()), title.size(), style);
    if (model()->need() != Need::None)
        title = markMissing(painter, title, QFontMetrics(font).horizontalAdvance(caption), scale().smaller(),
                            back);
    painter.setPen(model()->enabled() ? text : look::faded(text, back));
    look::drawText(painter, title, caption, font, style);
}

namespace {

const Font Message{.points = 12};
constexpr int SmallestPixels = 5; // a message is never cut
// Of a text that stands right: from what it names, and from the border on its left. Design pixels.
constexpr double RightMargin = 7;
constexpr double LeftMargin = 3;

} // namespace

LabelView::LabelView(Label& label, WindowFrame& frame, QWidget& parent)
    : QLabel(&parent), ModelView(label, frame) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setTextFormat(Qt::PlainText);
    nameWidget();
    showProperty(Property::Caption);
}

bool LabelView::severalLines() const {
    return frame().pixels(*model()).height() >=
           2 * QFontMetrics(look::font(model()->font(), scale())).lineSpacing();
}

// A line is as high as its place, which is known for its width only when it is painted.
QFont LabelView::fullFont() const {
    if (severalLines())
        return look::font(Message, scale());
    QFont font = look::font(model()->font(), scale());
    const int least = font.pixelSize();
    const Font wanted{.points = look::LegiblePoints};
    font.setPixelSize(std::max(least, look::font(wanted, scale()).pixelSize()));
    while (font.pixelSize() > least && QFontMetrics(font).height() > frame().pixels(*model()).height())
        font.setPixelSize(font.pixelSize() - 1);
    return font;
}

void LabelView::layOut() {
    QRect place = frame().pixels(*model());
    if (!severalLines()) {
        const int mark = model()->need() == Need::None ? 0 : pixels(look::MissingWidth);
        const int wanted = QFontMetrics(fullFont()).horizontalAdvance(text()) + pixels(2) + mark;
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
        frame().neighbourRenamed();
        layOut();
    }
    ControlView::showProperty(property);
}

void LabelView::showNeed() {
    layOut();
    update();
}

void LabelView::paintEvent(QPaintEvent*) {
    if (model() == nullptr)
        return;
    QPainter painter(this);
    const QColor text = look::readableOn(backdrop(), look::toQt(model()->foreColor()));
    const bool several = severalLines();
    const bool right = model()->alignment() == Alignment::Right;
    QRectF room = right ? rect().adjusted(pixels(LeftMargin), 0, -pixels(RightMargin), 0) : rect();
    if (model()->need() != Need::None)
        room = markMissing(painter, room, QFontMetrics(fullFont()).horizontalAdvance(this->text()),
                           scale().smaller(), backdrop());
    painter.setPen(isEnabled() ? text : look::faded(text, backdrop()));
    look::drawText(painter, room, this->text(), fullFont(),
                   {.alignment = look::toQt(model()->alignment()) | Qt::AlignVCenter,
                    .wrapped = several,
                    .smallestPixels = several ? SmallestPixels : pixels(8)});
}

PictureAreaView::PictureAreaView(PictureArea& picture, WindowFrame& frame, QWidget& parent)
    : QWidget(&parent), ModelView(picture, frame) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    nameWidget();
}

QAccessibleInterface* PictureAreaView::makeAccessible() {
    return new QAccessibleWidget(this, QAccessible::Graphic);
}

void PictureAreaView::paintEvent(QPaintEvent*) {
    if (model() == nullptr)
        return;
    QPainter painter(this);
    look::drawInformation(painter, rect(), backdrop());
}

} // namespace kova
