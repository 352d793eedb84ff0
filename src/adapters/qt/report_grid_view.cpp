#include "adapters/qt/report_grid_view.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>

namespace kova {
namespace {

const Font Body{"Tahoma", 10, false};
constexpr double GroupHeight = 36; // design pixels
constexpr double HeaderHeight = 30;

} // namespace

ReportGridView::ReportGridView(ReportGrid& grid, WindowFrame& frame, QWidget& parent)
    : QWidget(&parent), ModelView(grid, frame) {
    nameWidget(*this, {});
}

void ReportGridView::paintEvent(QPaintEvent*) {
    if (model() == nullptr)
        return;
    QPainter painter(this);
    const double group = GroupHeight * scale().y;
    const double header = HeaderHeight * scale().y;
    const QColor back = isEnabled() ? QColor(Qt::white) : QColor(235, 236, 238);
    painter.fillRect(rect(), back);
    paintGroupArea(painter, QRectF(0, 0, width(), group));
    paintHeaders(painter, QRectF(0, group, width(), header));
    if (model()->records().empty()) {
        painter.setPen(QColor(80, 90, 102));
        look::drawText(painter,
                       QRectF(0, group + header, width(), std::min(height() - group - header, 4 * header)),
                       QString::fromStdString(model()->emptyText()), look::font(Body, scale()));
    }
    painter.setPen(QPen(look::borderOn(back), std::max(1.0, scale().smaller())));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
}

void ReportGridView::paintGroupArea(QPainter& painter, const QRectF& area) const {
    painter.fillRect(area, QColor(222, 228, 235));
    painter.setPen(QColor(62, 74, 89));
    const double margin = pixels(10);
    look::drawText(painter, area.adjusted(margin, 0, -margin, 0),
                   QString::fromStdString(model()->groupHint()), look::font(Body, scale()),
                   {.alignment = Qt::AlignLeft | Qt::AlignVCenter, .wrapped = false});
}

void ReportGridView::paintHeaders(QPainter& painter, const QRectF& area) const {
    painter.fillRect(area, QColor(241, 243, 246));
    const QColor line = look::borderOn(QColor(241, 243, 246));
    painter.setPen(line);
    painter.drawLine(area.bottomLeft(), area.bottomRight());
    Font design = model()->headerFont();
    design.points = std::max(design.points, 9.0);
    const QFont font = look::font(design, scale());
    double left = area.left();
    for (const ReportGrid::Column& column : model()->columns()) {
        const double width = column.width * QFontMetricsF(font).averageCharWidth() + pixels(10);
        painter.setPen(QColor(20, 30, 42));
        look::drawText(painter, QRectF(left + pixels(5), area.top(), width - pixels(10), area.height()),
                       QString::fromStdString(column.caption), font,
                       {.alignment = Qt::AlignLeft | Qt::AlignVCenter, .wrapped = false});
        left += width;
        painter.setPen(line);
        painter.drawLine(QPointF(left, area.top()), QPointF(left, area.bottom()));
    }
}

} // namespace kova
