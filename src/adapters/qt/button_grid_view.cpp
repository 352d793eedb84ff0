#include "adapters/qt/button_grid_view.h"

#include "adapters/qt/button_grid_accessible.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPixmap>
#include <QToolTip>

#include <algorithm>

namespace kova {
namespace {

const Font Caption{"Tahoma", 11, true};
constexpr double Gap = 3.5;         // half of what lies between two faces, in design pixels
constexpr double MostGap = 0.08;    // of a cell: small cells keep their faces
constexpr double LeastShare = 0.65; // of its size that a long caption is made smaller to, before it is cut
constexpr double LeastCell = 8;     // pixels; smaller cells are drawn without gap and text

look::TextStyle captionStyle(const QFont& font) {
    return {.smallestPixels = std::max(8, static_cast<int>(font.pixelSize() * LeastShare))};
}

QString fromUtf8(const std::string& text) {
    return QString::fromStdString(text);
}

} // namespace

ButtonGridView::ButtonGridView(ButtonGrid& grid, WindowFrame& frame, QWidget& parent)
    : QWidget(&parent), ModelView(grid, frame) {
    nameByLabels(*this);
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

// A grid that was given too few cells for its buttons gets more rows.
ButtonGridView::Arrangement ButtonGridView::arrangement() const {
    const int columns = std::max(1, model()->columns());
    const int needed = (cellCount() + columns - 1) / columns;
    return {columns, std::max({1, model()->rows(), needed})};
}

// Cells have fractions of pixels, so that each can be touched however many there are.
QRectF ButtonGridView::cell(int index) const {
    const auto [columns, rows] = arrangement();
    const double width = static_cast<double>(this->width()) / columns;
    const double height = static_cast<double>(this->height()) / rows;
    const int row = index / columns;
    return {(index % columns) * width, row * height, width, height};
}

QRectF ButtonGridView::face(int index) const {
    const QRectF area = cell(index);
    const double gap = std::min(Gap * scale().smaller(), std::min(area.width(), area.height()) * MostGap);
    return area.adjusted(gap, gap, -gap, -gap);
}

int ButtonGridView::cellAt(const QPointF& point) const {
    if (model() == nullptr || !QRectF(rect()).contains(point))
        return -1;
    const auto [columns, rows] = arrangement();
    const int column = std::min(static_cast<int>(point.x() * columns / width()), columns - 1);
    const int row = std::min(static_cast<int>(point.y() * rows / height()), rows - 1);
    const int index = row * columns + column;
    return index < cellCount() ? index : -1;
}

std::optional<TouchPoint> ButtonGridView::touchPoint(const std::optional<std::string>& part) {
    if (!part)
        return ControlView::touchPoint(part);
    if (model() == nullptr || size().isEmpty())
        return std::nullopt;
    const auto& buttons = model()->buttons();
    const auto found = std::ranges::find(buttons, *part, &ButtonGrid::Button::key);
    if (found == buttons.end())
        return std::nullopt;
    return TouchPoint{this, cell(static_cast<int>(found - buttons.begin())).center()};
}

void ButtonGridView::showProperty(Property property) {
    if (property == Property::Buttons)
        pressed_ = -1; // the finger is on another button now
    ControlView::showProperty(property);
}

QFont ButtonGridView::commonFont() const {
    QFont font = look::font(Caption, scale());
    if (!model()->equalFonts())
        return font;
    for (int index = 0; index < cellCount(); ++index)
        font =
            look::fitted(fromUtf8(cellButton(index)->caption), font,
                         look::captionArea(face(index), {.unit = scale().smaller(), .marked = true}).size(),
                         captionStyle(look::font(Caption, scale())));
    return font;
}

void ButtonGridView::paintEvent(QPaintEvent* event) {
    if (model() == nullptr)
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(look::toQt(model()->backColor()));
    painter.drawRoundedRect(rect(), pixels(5), pixels(5));
    const QFont font = commonFont();
    for (int index = 0; index < cellCount(); ++index)
        if (cell(index).intersects(event->rect()))
            paintCell(painter, index, font);
}

void ButtonGridView::paintCell(QPainter& painter, int index, const QFont& font) const {
    const ButtonGrid::Button& button = *cellButton(index);
    look::Face face;
    face.color = look::toQt(button.marked ? model()->selectedColor() : button.faceColor);
    face.unit = scale().smaller();
    face.marked = button.marked;
    face.enabled = isEnabled();
    face.down = down_ && index == pressed_;
    const QRectF area = cell(index);
    if (std::min(area.width(), area.height()) < LeastCell) {
        painter.fillRect(area, look::filling(face));
        return;
    }
    const QRectF outline = this->face(index);
    look::drawFace(painter, outline, face);
    QRectF room = look::captionArea(outline, face);
    if (const QPixmap picture(fromUtf8(button.picture)); !button.picture.empty() && !picture.isNull()) {
        const double side = std::min(room.height(), room.width() / 3);
        painter.drawPixmap(QRectF(room.left(), room.center().y() - side / 2, side, side), picture,
                           picture.rect());
        room.setLeft(room.left() + side + pixels(Gap));
    }
    const QColor fill = look::filling(face);
    const QColor text = look::readableOn(fill, look::toQt(button.textColor));
    painter.setPen(face.enabled ? text : look::mixed(text, fill, button.marked ? 0.15 : 0.5));
    look::drawText(painter, room, fromUtf8(button.caption), font, captionStyle(font));
}

void ButtonGridView::setDown(bool down) {
    if (std::exchange(down_, down) != down)
        update();
}

void ButtonGridView::mousePressEvent(QMouseEvent* event) {
    pressed_ = event->button() == Qt::LeftButton ? cellAt(event->position()) : -1;
    setDown(pressed_ >= 0);
}

void ButtonGridView::mouseMoveEvent(QMouseEvent* event) {
    setDown(pressed_ >= 0 && cellAt(event->position()) == pressed_);
}

void ButtonGridView::mouseReleaseEvent(QMouseEvent* event) {
    const int touched = cellAt(event->position()) == pressed_ ? pressed_ : -1;
    pressed_ = -1;
    setDown(false);
    touchCell(touched);
}

void ButtonGridView::touchCell(int index) {
    if (const auto* button = cellButton(index))
        act([key = button->key](ButtonGrid& grid) { grid.touch(key); });
}

bool ButtonGridView::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const int index = cellAt(QPointF(help->pos()));
    const QRectF room = index < 0 ? QRectF() : look::captionArea(face(index), {.unit = scale().smaller()});
    const QFont font = look::font(Caption, scale());
    if (index >= 0 &&
        !look::fitsAtAll(fromUtf8(cellButton(index)->caption), font, room.size(), captionStyle(font)))
        QToolTip::showText(help->globalPos(), fromUtf8(cellButton(index)->caption), this);
    else
        QToolTip::hideText();
    return true;
}

} // namespace kova
