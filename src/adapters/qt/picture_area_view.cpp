#include "adapters/qt/picture_area_view.h"

#include <QPainter>

namespace kova {

PictureAreaView::PictureAreaView(PictureArea& picture, WindowFrame& frame, QWidget& parent)
    : QWidget(&parent), ModelView(picture, frame) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    nameWidget(*this, {});
}

void PictureAreaView::paintEvent(QPaintEvent*) {
    if (model() == nullptr)
        return;
    QPainter painter(this);
    look::drawInformation(painter, rect(), backdrop());
}

} // namespace kova
