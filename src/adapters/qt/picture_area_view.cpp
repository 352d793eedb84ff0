#include "adapters/qt/picture_area_view.h"

#include <QAccessibleWidget>
#include <QPainter>

namespace kova {

PictureAreaView::PictureAreaView(PictureArea& picture, WindowFrame& frame, QWidget& parent)
    : QWidget(&parent), ModelView(picture, frame) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    nameByLabels(*this);
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
