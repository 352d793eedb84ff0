#include "demonstration/choice_box.h"

#include "demonstration/look.h"

#include <QListView>
#include <QPainter>
#include <QWheelEvent>

namespace kova {

ChoiceBox::ChoiceBox(QWidget* parent) : QComboBox(parent) {
    setView(new QListView); // whose rows the style sheet may size
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(4);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void ChoiceBox::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double unit = height() / 44.0;
    painter.setPen(hasFocus() ? QPen(host_look::Accent, 2 * unit) : QPen(host_look::Line, unit));
    painter.setBrush(QColor(244, 246, 248));
    painter.drawRoundedRect(QRectF(rect()).adjusted(unit, unit, -unit, -unit), 6 * unit, 6 * unit);

    const QPointF tip(width() - 18 * unit, height() / 2.0 + 3 * unit);
    painter.setPen(QPen(host_look::Muted, 2 * unit, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(QPolygonF({tip + QPointF(-6, -6) * unit, tip, tip + QPointF(6, -6) * unit}));

    const QRectF room = QRectF(rect()).adjusted(10 * unit, 0, -30 * unit, 0);
    painter.setPen(host_look::Ink);
    const QString shown =
        painter.fontMetrics().elidedText(currentText(), Qt::ElideRight, static_cast<int>(room.width()));
    painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter, shown);
}

void ChoiceBox::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

} // namespace kova
