#include "demonstration/toggle_switch.h"

#include "demonstration/look.h"

#include <QPainter>

namespace kova {
namespace {

constexpr double RowHeight = 46;
constexpr double TrackWidth = 46;
constexpr double TrackHeight = 26;
constexpr double Margin = 6;

} // namespace

ToggleSwitch::ToggleSwitch(const QString& name, QWidget* parent) : QAbstractButton(parent), name_(name) {
    setCheckable(true);
    setFocusPolicy(Qt::TabFocus);
    setAccessibleDescription(name);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void ToggleSwitch::setScale(double scale) {
    scale_ = scale;
    updateGeometry();
    update();
}

QSize ToggleSwitch::sizeHint() const {
    return {host_look::pixels(230, scale_), host_look::pixels(RowHeight, scale_)};
}

void ToggleSwitch::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const int margin = host_look::pixels(Margin, scale_);
    if (isDown() || hasFocus()) {
        painter.setPen(hasFocus() ? QPen(host_look::Accent, scale_) : QPen(Qt::NoPen));
        painter.setBrush(isDown() ? QColor(219, 232, 244) : QColor(Qt::transparent));
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), margin, margin);
    }
    const QRectF track(margin, (height() - TrackHeight * scale_) / 2, TrackWidth * scale_,
                       TrackHeight * scale_);
    paintSwitch(painter, track);
    const int left = static_cast<int>(track.right()) + host_look::pixels(10, scale_);
    paintTexts(painter, rect().adjusted(left, 0, -margin, 0));
}

void ToggleSwitch::paintSwitch(QPainter& painter, const QRectF& track) const {
    const double radius = track.height() / 2;
    painter.setPen(Qt::NoPen);
    painter.setBrush(isChecked() ? host_look::Accent : QColor(172, 182, 193));
    painter.drawRoundedRect(track, radius, radius);
    const double x = isChecked() ? track.right() - radius : track.left() + radius;
    painter.setBrush(Qt::white);
    painter.drawEllipse(QPointF(x, track.center().y()), radius * 0.78, radius * 0.78);
}

void ToggleSwitch::paintTexts(QPainter& painter, const QRect& area) const {
    const QRect upper = area.adjusted(0, area.height() / 12, 0, -area.height() * 5 / 12);
    const QRect lower = area.adjusted(0, area.height() * 7 / 12, 0, -area.height() / 12);
    const auto draw = [&](const QRect& place, const QString& text, double size, const QColor& color) {
        painter.setFont(host_look::font(size, scale_));
        painter.setPen(color);
        const QString shown = painter.fontMetrics().elidedText(text, Qt::ElideRight, place.width());
        painter.drawText(place, Qt::AlignLeft | Qt::AlignVCenter, shown);
    };
    draw(upper, text(), 15, host_look::Ink);
    draw(lower, name_, 10.5, host_look::Muted);
}

} // namespace kova
