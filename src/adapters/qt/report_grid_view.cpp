#include "adapters/qt/report_grid_view.h"

#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace kova {
namespace {

constexpr double GroupHeight = 40; // design pixels
constexpr double HeaderHeight = 38;
constexpr double RowHeight = 30;
constexpr double ScrollBarWidth = 26;
constexpr double Margin = 6;
constexpr qint64 LongTouch = 600; // milliseconds

const QColor Ink(20, 30, 42);
const QColor HeaderColor(241, 243, 246);
const QColor StripeColor(247, 249, 251);
const QColor GroupColor(222, 228, 235);
const look::TextStyle LeftAligned{.alignment = Qt::AlignLeft | Qt::AlignVCenter, .wrapped = false};

QString text(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

} // namespace

ReportGridView::ReportGridView(ReportGrid& grid, WindowFrame& frame, QWidget& parent)
    : QWidget(&parent), ModelView(grid, frame) {
    nameWidget(*this, {});
    QObject::connect(&scrollBar_, &QScrollBar::valueChanged, this, [this] { update(); });
}

QRectF ReportGridView::groupArea() const {
    return {0, 0, double(width()), GroupHeight * scale().y};
}

QRectF ReportGridView::headerArea() const {
    const double scrollBar = scrollBar_.isVisibleTo(this) ? scrollBar_.width() : 0;
    return {0, groupArea().bottom(), width() - scrollBar, HeaderHeight * scale().y};
}

QRectF ReportGridView::listArea() const {
    const double top = headerArea().bottom();
    return {0, top, headerArea().width(), height() - top};
}

double ReportGridView::rowHeight() const {
    return std::floor(RowHeight * scale().y);
}

std::vector<double> ReportGridView::edges() const {
    std::vector<double> result{0};
    double characters = 0;
    for (const auto& column : model()->columns())
        characters += column.width;
    for (const auto& column : model()->columns())
        result.push_back(result.back() + headerArea().width() * column.width / std::max(characters, 1.0));
    return result;
}

void ReportGridView::layOut() {
    ModelView::layOut();
    if (model() != nullptr)
        fitScrollBar();
}

void ReportGridView::showProperty(Property property) {
    ModelView::showProperty(property);
    if (property == Property::Records && model() != nullptr) {
        scrollBar_.setValue(0);
        fitScrollBar();
        update();
    }
}

void ReportGridView::fitScrollBar() {
    const auto visible = static_cast<int>(listArea().height() / rowHeight());
    const auto rows = static_cast<int>(model()->rows().size());
    scrollBar_.setVisible(rows > visible);
    scrollBar_.setRange(0, std::max(0, rows - visible));
    scrollBar_.setPageStep(std::max(1, visible - 1));
    const int barWidth = pixels(ScrollBarWidth);
    const int top = static_cast<int>(groupArea().bottom());
    scrollBar_.setGeometry(width() - barWidth, top, barWidth, height() - top);
}

QString ReportGridView::groupText() const {
    QStringList parts;
    for (const auto column : model()->groupColumns())
        parts << text(model()->columns()[column].caption);
    QString shown = parts.isEmpty() ? text(model()->groupHint()) : parts.join(QString::fromUtf8("  ›  "));
    if (const auto sorted = model()->sortColumn())
        shown += "     " + text(model()->sortPrefix()) + text(model()->columns()[*sorted].caption);
    return shown;
}

void ReportGridView::paintEvent(QPaintEvent*) {
    if (model() == nullptr)
        return;
    QPainter painter(this);
    painter.fillRect(rect(), isEnabled() ? QColor(Qt::white) : QColor(235, 236, 238));
    painter.fillRect(groupArea(), GroupColor);
    painter.setPen(QColor(62, 74, 89));
    const double margin = pixels(Margin);
    look::drawText(painter, groupArea().adjusted(margin, 0, -margin, 0), groupText(),
                   look::font(model()->rowFont(), scale()), LeftAligned);
    paintHeaders(painter);
    paintRows(painter);
    painter.setPen(QPen(look::borderOn(Qt::white), std::max(1.0, scale().smaller())));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
}

void ReportGridView::paintHeaders(QPainter& painter) const {
    const QRectF area = headerArea();
    painter.fillRect(area, HeaderColor);
    Font design = model()->headerFont();
    design.points = std::max(design.points, 9.0);
    design.bold = true;
    const QFont font = look::font(design, scale());
    const auto columns = edges();
    const double margin = pixels(Margin);
    for (std::size_t i = 0; i + 1 < columns.size(); ++i) {
        QString caption = text(model()->columns()[i].caption);
        if (model()->sortColumn() == i)
            caption +=
                QString::fromUtf8(model()->sortDirection() == ReportGrid::Direction::Ascending ? " ▲" : " ▼");
        painter.setPen(Ink);
        const QRectF cell(columns[i], area.top(), columns[i + 1] - columns[i], area.height());
        look::drawText(painter, cell.adjusted(margin, 0, -margin, 0), caption, font, LeftAligned);
        painter.setPen(look::borderOn(HeaderColor));
        painter.drawLine(cell.topRight(), cell.bottomRight());
    }
    painter.setPen(look::borderOn(HeaderColor));
    painter.drawLine(area.bottomLeft(), area.bottomRight());
}

void ReportGridView::paintRows(QPainter& painter) const {
    const auto& rows = model()->rows();
    const QRectF area = listArea();
    if (rows.empty()) {
        painter.setPen(QColor(80, 90, 102));
        look::drawText(painter, QRectF(area.left(), area.top(), area.width(), 4 * rowHeight()),
                       text(model()->emptyText()), look::font(model()->rowFont(), scale()));
        return;
    }
    const auto columns = edges();
    painter.setClipRect(area);
    double top = area.top();
    for (auto row = static_cast<std::size_t>(scrollBar_.value()); row < rows.size() && top < area.bottom();
         ++row) {
        const QRectF line(area.left(), top, area.width(), rowHeight());
        if (row % 2 == 1)
            painter.fillRect(line, StripeColor);
        paintRow(painter, rows[row], line, columns);
        top += rowHeight();
    }
    painter.setClipping(false);
}

void ReportGridView::paintRow(QPainter& painter, const ReportGrid::Row& row, const QRectF& area,
                              const std::vector<double>& columns) const {
    const double margin = pixels(Margin);
    Font design = model()->rowFont();
    painter.setPen(Ink);
    if (row.record == ReportGrid::Row::NoRecord) {
        design.bold = true;
        painter.fillRect(area, GroupColor);
        const auto& caption =
            model()->columns()[model()->groupColumns()[static_cast<std::size_t>(row.level)]].caption;
        const QString header =
            text(caption) + ": " + text(row.value) + "  (" + QString::number(row.count) + ")";
        look::drawText(painter, area.adjusted(margin * (1 + 3 * row.level), 0, -margin, 0), header,
                       look::font(design, scale()), LeftAligned);
        return;
    }
    const QFont font = look::font(design, scale());
    for (std::size_t i = 0; i + 1 < columns.size(); ++i) {
        const QRectF cell(columns[i], area.top(), columns[i + 1] - columns[i], area.height());
        look::drawText(painter, cell.adjusted(margin, 0, -margin, 0),
                       text(model()->item(static_cast<std::size_t>(row.record), i)), font, LeftAligned);
    }
}

void ReportGridView::mousePressEvent(QMouseEvent* event) {
    pressed_.start();
    pressedAt_ = event->position();
    scrolledFrom_ = scrollBar_.value();
}

void ReportGridView::mouseMoveEvent(QMouseEvent* event) {
    if (listArea().contains(pressedAt_))
        scrollBar_.setValue(scrolledFrom_ +
                            static_cast<int>((pressedAt_.y() - event->position().y()) / rowHeight()));
}

void ReportGridView::mouseReleaseEvent(QMouseEvent* event) {
    if (model() == nullptr)
        return;
    const QPointF at = event->position();
    if (groupArea().contains(at) && groupArea().contains(pressedAt_)) {
        act([](ReportGrid& grid) { grid.ungroup(); });
        return;
    }
    if (!headerArea().contains(pressedAt_))
        return;
    const auto columns = edges();
    const auto columnAt = [&](double x) {
        return static_cast<std::size_t>(std::ranges::upper_bound(columns, x) - columns.begin() - 1);
    };
    const auto column = columnAt(pressedAt_.x());
    const bool draggedUp = groupArea().contains(at);
    if (!draggedUp && (!headerArea().contains(at) || columnAt(at.x()) != column))
        return;
    const bool grouping = draggedUp || pressed_.elapsed() >= LongTouch;
    act([=](ReportGrid& grid) { grouping ? grid.groupBy(column) : grid.touchHeader(column); });
}

void ReportGridView::wheelEvent(QWheelEvent* event) {
    constexpr int degreesPerRow = 40;
    scrollBar_.setValue(scrollBar_.value() - event->angleDelta().y() / degreesPerRow);
}

} // namespace kova
