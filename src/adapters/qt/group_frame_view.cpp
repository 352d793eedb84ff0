#include "adapters/qt/group_frame_view.h"

#include "adapters/qt/window_frame.h"

#include <QAccessibleWidget>
#include <QPainter>

#include <algorithm>

namespace kova {
namespace {

const Font Title{"Tahoma", 9, true};
constexpr double TitleHeight = 16; // above the first control, in design pixels

} // namespace

GroupFrameView::GroupFrameView(GroupFrame& group, WindowFrame& frame, QWidget& parent)
    : QWidget(&parent), ModelView(group, frame) {
    showProperty(Property::Caption);
}

void GroupFrameView::showProperty(Property property) {
    if (property == Property::Caption) {
        nameWidget(*this, QString::fromStdString(model()->caption()));
        frame().neighbourRenamed();
    }
    ControlView::showProperty(property);
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
    const double line = std::max(1.0, scale().smaller());
    painter.setPen(QPen(look::borderOn(back), line));
    painter.setBrush(back);
    painter.drawRoundedRect(QRectF(rect()).adjusted(line / 2, line / 2, -line / 2, -line / 2), pixels(5),
                            pixels(5));
    const QColor text = look::readableOn(back, look::toQt(model()->foreColor()));
    painter.setPen(model()->enabled() ? text : look::mixed(text, back, 0.5));
    const QRectF title(pixels(8), line, width() - 2 * pixels(8), TitleHeight * scale().y - line);
    look::drawText(painter, title, QString::fromStdString(model()->caption()), look::font(Title, scale()),
                   {.alignment = Qt::AlignLeft | Qt::AlignVCenter, .wrapped = false, .smallestPixels = 7});
}

} // namespace kova
