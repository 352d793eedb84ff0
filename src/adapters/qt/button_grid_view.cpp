#include "adapters/qt/button_grid_view.h"

#include "adapters/qt/accessible_views.h"
#include "adapters/qt/window_frame.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPixmap>
#include <QToolTip>

#include <algorithm>
#include <map>
#include <utility>

namespace kova {
namespace {

const Font CaptionFont{.points = look::LegiblePoints, .bold = true};
// Design pixels.
constexpr double PictureGap = 3.5;
constexpr double FocusRing = 2.5;
constexpr double LeastCell = 8;   // pixels; smaller cells are drawn without gap and text
constexpr double WheelStep = 120; // of Qt's eighths of degrees

Point pointOf(const QPointF& point) {
    return {point.x(), point.y()};
}

} // namespace

ButtonGridView::ButtonGridView(ButtonGrid& grid, WindowFrame& frame, QWidget& parent)
    : QWidget(&parent), ModelView(grid, frame) {
    setFocusPolicy(Qt::TabFocus); // a touch leaves the focus where it is
    nameWidget();
}

QAccessibleInterface* ButtonGridView::makeAccessible() {
    return makeAccessibleButtonGrid(*this);
}

int ButtonGridView::cellCount() const {
    return model() == nullptr ? 0 : static_cast<int>(model()->buttons().size());
}

const ButtonGrid::Button* ButtonGridView::cellButton(int index) const {
    return index >= 0 && index < cellCount() ? &model()->buttons()[static_cast<std::size_t>(index)] : nullptr;
}

void ButtonGridView::arrange() {
    captions_.clear();
    if (model() != nullptr)
        touch_.arrange(*model(), {double(width()), double(height())}, scale());
}

void ButtonGridView::layOut() {
    ControlView::layOut();
    arrange();
    showMarked();
}

void ButtonGridView::showProperty(Property property) {
    if (property == Property::Buttons) {
        touch_.letGo(); // the finger is on another button now
        showDown();
        arrange();
    } else if (property == Property::Marks) {
        showMarked();
    }
    if (property == Property::Buttons || property == Property::Marks)
        tellButtons(*this, told_);
    ControlView::showProperty(property);
}

void ButtonGridView::scrollTo(int index) {
    touch_.show(index);
    update();
}

void ButtonGridView::showMarked() {
    if (model() == nullptr)
        return;
    touch_.showMarked(*model());
    update();
}

QRectF ButtonGridView::picturePlace(int index) const {
    if (const auto& picture = cellButton(index)->picture;
        picture.empty() || QPixmap(QString::fromStdString(picture)).isNull())
        return {};
    const QRectF inside = look::captionArea(face(index), {.unit = scale().smaller()});
    const double side = std::min(inside.height(), inside.width() / 3);
    return {inside.left(), inside.center().y() - side / 2, side, side};
}

QRectF ButtonGridView::captionRoom(int index) const {
    QRectF inside = look::captionArea(face(index), {.unit = scale().smaller()});
    if (const QRectF picture = picturePlace(index); !picture.isEmpty())
        inside.setLeft(picture.right() + pixels(PictureGap));
    return inside;
}

const std::vector<look::Caption>& ButtonGridView::captions() {
    if (!captions_.empty())
        return captions_;
    std::vector<look::CaptionPlace> places;
    places.reserve(model()->buttons().size());
    for (int index = 0; index < cellCount(); ++index)
        places.push_back({QString::fromStdString(cellButton(index)->caption), captionRoom(index).size()});
    captions_ =
        look::setCaptions(places, look::font(CaptionFont, scale()), scale().smaller(),
                          model()->equalFonts() ? look::CaptionSizes::Common : look::CaptionSizes::Own);
    return captions_;
}

void ButtonGridView::paintEvent(QPaintEvent* event) {
    if (model() == nullptr)
        return;
    QPainter painter(this);
    paintBoard(painter, model()->backColor(), look::FaceRadius);
    if (cells().pans()) {
        paintPosition(painter);
        painter.setClipRect(look::toQt(cells().room()));
    }
    for (int index = 0; index < cellCount(); ++index)
        if (look::toQt(cells().cell(index)).intersects(event->rect()))
            paintCell(painter, index);
    if (model()->need() == Need::Refused)
        paintRefused(painter);
}

void ButtonGridView::paintRefused(QPainter& painter) const {
    const double width = look::RefusedRing * scale().smaller();
    painter.setClipping(false);
    painter.setPen(QPen(look::warningOn(look::toQt(model()->backColor())), width));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(rect()).adjusted(width / 2, width / 2, -width / 2, -width / 2),
                            pixels(look::FaceRadius), pixels(look::FaceRadius));
}

void ButtonGridView::paintCell(QPainter& painter, int index) {
    const ButtonGrid::Button& button = *cellButton(index);
    look::Face face;
    face.color = look::toQt(button.marked ? model()->selectedColor() : button.faceColor);
    face.backdrop = look::toQt(model()->backColor());
    face.unit = scale().smaller();
    face.marked = button.marked;
    face.enabled = isEnabled();
    face.down = index == touch_.down();
    const QRectF area = look::toQt(cells().cell(index));
    if (std::min(area.width(), area.height()) < LeastCell) {
        painter.fillRect(area, look::filling(face));
        return;
    }
    look::drawFace(painter, this->face(index), face);
    if (hasFocus() && index == touch_.current())
        paintFocus(painter, index);
    if (const QRectF place = picturePlace(index); !place.isEmpty()) {
        const QPixmap picture(QString::fromStdString(button.picture));
        painter.drawPixmap(place, picture, picture.rect());
    }
    const QColor fill = look::filling(face);
    const QColor text = look::readableOn(fill, look::toQt(button.textColor));
    painter.setPen(face.enabled ? text : look::mixed(text, fill, button.marked ? 0.15 : 0.5));
    look::drawCaption(painter, captionRoom(index), captions()[static_cast<std::size_t>(index)],
                      Qt::AlignCenter);
}

/// A ring in the gap, which shows around a marked button too.
void ButtonGridView::paintFocus(QPainter& painter, int index) const {
    const double width = FocusRing * scale().smaller();
    painter.setPen(QPen(look::accentOn(look::toQt(model()->backColor())), width));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(face(index).adjusted(-width / 2, -width / 2, width / 2, width / 2),
                            pixels(look::BoardRadius), pixels(look::BoardRadius));
}

void ButtonGridView::paintPosition(QPainter& painter) const {
    const QColor back = look::toQt(model()->backColor());
    const auto paint = [&](const QRectF& bar, const QColor& color) {
        const double radius = std::min(bar.width(), bar.height()) / 2;
        painter.setBrush(color);
        painter.drawRoundedRect(bar, radius, radius);
    };
    paint(look::toQt(cells().bar()), look::mixed(back, look::inkOn(back), 0.15));
    paint(look::toQt(cells().barInSight()), look::accentOn(back));
}

// These cells alone: painting the whole of a large grid takes longer than a frame on the largest screens.
void ButtonGridView::showDown() {
    const int before = std::exchange(shownDown_, touch_.down());
    if (before == shownDown_)
        return;
    for (const int index : {before, shownDown_})
        if (index >= 0)
            update(look::toQt(cells().cell(index)).toAlignedRect());
}

void ButtonGridView::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        touch_.press(pointOf(event->position()));
    else
        touch_.letGo();
    showDown();
}

void ButtonGridView::mouseMoveEvent(QMouseEvent* event) {
    touch_.move(pointOf(event->position()), (event->buttons() & Qt::LeftButton) != 0);
    showDown();
    if (touch_.panning())
        update();
}

void ButtonGridView::mouseReleaseEvent(QMouseEvent* event) {
    if (touch_.panning())
        update();
    const int touched = touch_.release(pointOf(event->position()));
    showDown();
    touchCell(touched);
}

void ButtonGridView::wheelEvent(QWheelEvent* event) {
    if (!cells().pans()) {
        event->ignore();
        return;
    }
    const QPoint turned = event->angleDelta();
    touch_.turnWheel((turned.y() != 0 ? turned.y() : turned.x()) / WheelStep);
    update();
}

void ButtonGridView::keyPressEvent(QKeyEvent* event) {
    using Step = ButtonGridTouch::Step;
    static const std::map<int, Step> steps{{Qt::Key_Left, Step::Left},  {Qt::Key_Right, Step::Right},
                                           {Qt::Key_Up, Step::Up},      {Qt::Key_Down, Step::Down},
                                           {Qt::Key_Home, Step::First}, {Qt::Key_End, Step::Last}};
    if (const auto step = steps.find(event->key()); step != steps.end()) {
        if (touch_.step(step->second))
            tellCurrent();
    } else if (event->key() != Qt::Key_Space) {
        event->ignore();
    } else if (!event->isAutoRepeat()) {
        touch_.pressKey();
        update();
    }
    showDown();
}

void ButtonGridView::keyReleaseEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Space || event->isAutoRepeat() || touch_.panning()) {
        event->ignore();
        return;
    }
    const int touched = touch_.releaseKey();
    showDown();
    touchCell(touched);
}

void ButtonGridView::tellCurrent() {
    showDown();
    update();
    QAccessibleEvent focus(this, QAccessible::Focus);
    focus.setChild(touch_.current());
    QAccessible::updateAccessibility(&focus);
}

void ButtonGridView::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    if (touch_.makeCurrent(touch_.current()))
        tellCurrent();
}

void ButtonGridView::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    touch_.letGo();
    showDown();
}

void ButtonGridView::touchCell(int index) {
    if (const auto* button = cellButton(index))
        act([key = button->key](ButtonGrid& grid) { grid.touch(key); });
}

bool ButtonGridView::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const int index = cells().at(pointOf(help->pos()));
    if (index >= 0 && !captions()[static_cast<std::size_t>(index)].whole)
        QToolTip::showText(help->globalPos(), QString::fromStdString(cellButton(index)->caption), this);
    else
        QToolTip::hideText();
    return true;
}

} // namespace kova
