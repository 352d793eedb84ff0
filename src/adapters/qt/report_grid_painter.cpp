#include "adapters/qt/report_grid_painter.h"

#include <algorithm>

namespace kova {
namespace {

constexpr double SmallestHeaderPoints = 9;

QString text(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

/// The share of a group's header that its sums may take.
constexpr double SumsShare = 0.55;

QFont sizedFont(Font design, bool bold, const Scale& scale) {
    design.bold = bold;
    return look::font(design, scale);
}

QFont headerFont(const ReportGrid& grid, const Scale& scale) {
    Font design = grid.headerFont();
    design.points = std::max(design.points, SmallestHeaderPoints);
    return sizedFont(design, true, scale);
}

} // namespace

std::vector<double> neededWidths(const ReportGrid& grid, const Scale& scale) {
    constexpr std::size_t Looked = 50;    // records; others look much the same
    constexpr double Margins = 2 * 6 + 4; // design pixels
    constexpr double Most = 260;          // a long note must not push the others aside
    const QFontMetricsF header(headerFont(grid, scale));
    const QFontMetricsF row(sizedFont(grid.rowFont(), false, scale));
    std::vector<double> widths;
    for (std::size_t column = 0; column < grid.columns().size(); ++column) {
        double width = header.horizontalAdvance(text(grid.columns()[column].caption) + " ▲");
        for (std::size_t record = 0; record < std::min(Looked, grid.recordCount()); ++record)
            width = std::max(width, row.horizontalAdvance(text(grid.item(record, column))));
        widths.push_back(std::min(width, Most * scale.smaller()) + Margins * scale.smaller());
    }
    return widths;
}

void ReportGridPainter::paint(std::size_t firstRow, const ReportGridTouch& touch, bool enabled) {
    const QRectF whole(layout_.groupArea.topLeft(), layout_.footer.bottomRight());
    painter_.fillRect(whole, enabled ? palette::Paper : palette::DisabledPaper);
    paintGroupArea(touch.draggedHeader.has_value());
    paintRows(firstRow);
    paintHeaders(touch);
    paintFooter();
    const double line = look::lineWidth(layout_.scale.smaller());
    painter_.setPen(QPen(look::borderOn(palette::Paper), line));
    painter_.setBrush(Qt::NoBrush);
    painter_.drawRect(whole.adjusted(line / 2, line / 2, -line / 2, -line / 2));
    paintDragged(touch);
}

QFont ReportGridPainter::font(const Font& design, bool bold) const {
    return sizedFont(design, bold, layout_.scale);
}

void ReportGridPainter::write(const QRectF& area, const QString& words, const QFont& textFont,
                              Qt::Alignment side) {
    look::drawText(painter_, area.adjusted(layout_.margin, 0, -layout_.margin, 0), words, textFont,
                   {.alignment = side | Qt::AlignVCenter,
                    .wrapped = false,
                    .smallestPixels = textFont.pixelSize() * 4 / 5});
}

void ReportGridPainter::paintGroupArea(bool target) {
    painter_.fillRect(layout_.groupArea, target ? palette::Chosen : palette::Band);
    QStringList captions;
    for (const auto column : grid_.groupColumns())
        captions << text(grid_.columns()[column].caption);
    painter_.setPen(captions.isEmpty() ? palette::PaleInk : palette::Ink);
    const QFont textFont = font(grid_.rowFont(), !captions.isEmpty());
    QRectF area = layout_.groupArea;
    if (const auto sorted = grid_.sortColumn()) {
        const QString words = text(grid_.sortPrefix()) + text(grid_.columns()[*sorted].caption);
        const double width = QFontMetricsF(textFont).horizontalAdvance(words) + 4 * layout_.margin;
        write(area.adjusted(std::max(0.0, area.width() - width), 0, 0, 0), words, textFont, Qt::AlignRight);
        area.setRight(std::max(area.left(), area.right() - width));
    }
    write(area,
          captions.isEmpty() ? text(grid_.groupHint()) : "✕  " + captions.join(QString::fromUtf8("  ›  ")),
          textFont);
}

void ReportGridPainter::paintHeaders(const ReportGridTouch& touch) {
    painter_.fillRect(layout_.headers, palette::Header);
    const QFont textFont = headerFont(grid_, layout_.scale);
    for (std::size_t i = 0; i < grid_.columns().size(); ++i) {
        QString caption = text(grid_.columns()[i].caption);
        if (grid_.sortColumn() == i)
            caption += grid_.sortDirection() == ReportGrid::Direction::Ascending ? " ▲" : " ▼";
        const QRectF cell = layout_.header(i);
        if (touch.pressedHeader == i)
            painter_.fillRect(cell, palette::Chosen);
        painter_.setPen(palette::Ink);
        write(cell, caption, textFont, grid_.amountColumn() == i ? Qt::AlignRight : Qt::AlignLeft);
        const bool moved = touch.movedBorder == i;
        painter_.setPen(
            QPen(moved ? look::accentOn(palette::Header) : look::borderOn(palette::Header), moved ? 3 : 1));
        painter_.drawLine(cell.topRight(),
                          moved ? QPointF(cell.right(), layout_.list.bottom()) : cell.bottomRight());
    }
    painter_.setPen(look::borderOn(palette::Header));
    painter_.drawLine(layout_.headers.bottomLeft(), layout_.headers.bottomRight());
}

/// The header under the finger, above everything.
void ReportGridPainter::paintDragged(const ReportGridTouch& touch) {
    if (!touch.draggedHeader || *touch.draggedHeader >= grid_.columns().size())
        return;
    QRectF dragged = layout_.header(*touch.draggedHeader);
    dragged.moveCenter(touch.at);
    painter_.setOpacity(0.85);
    painter_.fillRect(dragged, palette::Paper);
    painter_.setPen(look::accentOn(palette::Paper));
    painter_.drawRect(dragged);
    painter_.setPen(palette::Ink);
    const QFont textFont = font(grid_.rowFont(), true);
    write(dragged, text(grid_.columns()[*touch.draggedHeader].caption), textFont);
    painter_.setOpacity(1);
}

void ReportGridPainter::paintRows(std::size_t firstRow) {
    const auto& rows = grid_.rows();
    const QRectF& area = layout_.list;
    painter_.setClipRect(area);
    if (rows.empty()) {
        painter_.setPen(palette::PaleInk);
        const QFont textFont = font(grid_.rowFont(), false);
        write({area.left(), area.top(), area.width(), 4 * layout_.rowHeight},
              text(grid_.brokenOff() ? grid_.brokenOffText() : grid_.emptyText()), textFont,
              Qt::AlignHCenter);
    }
    for (std::size_t number = firstRow; number < rows.size(); ++number) {
        const QRectF line = layout_.row(number);
        if (line.top() >= area.bottom())
            break;
        if (rows[number].group != ReportGrid::Row::None) {
            paintGroup(grid_.group(rows[number]), line);
            continue;
        }
        const auto record = static_cast<std::size_t>(rows[number].record);
        if (grid_.selected(record))
            painter_.fillRect(line, palette::Chosen);
        else if (number % 2 == 1)
            painter_.fillRect(line, palette::Stripe);
        paintRecord(record, line);
    }
    painter_.setClipping(false);
}

void ReportGridPainter::paintRecord(std::size_t record, const QRectF& area) {
    painter_.setPen(palette::Ink);
    const auto amounts = grid_.amountColumn();
    const QFont plain = font(grid_.rowFont(), false);
    for (std::size_t i = 0; i + 1 < layout_.edges.size(); ++i) {
        write({layout_.edges[i], area.top(), layout_.edges[i + 1] - layout_.edges[i], area.height()},
              text(grid_.item(record, i)), plain, amounts == i ? Qt::AlignRight : Qt::AlignLeft);
    }
}

void ReportGridPainter::paintGroup(const ReportGrid::Group& group, const QRectF& area) {
    painter_.fillRect(area, palette::Band);
    painter_.setPen(look::borderOn(palette::Band));
    painter_.drawLine(area.topLeft(), area.topRight());
    painter_.setPen(palette::Ink);
    const QFont textFont = font(grid_.rowFont(), true);
    const QString sums = text(grid_.written(group.sums));
    const double width = std::min(QFontMetricsF(textFont).horizontalAdvance(sums) + 4 * layout_.margin,
                                  area.width() * SumsShare);
    write(area.adjusted(area.width() - width, 0, 0, 0), sums, textFont, Qt::AlignRight);
    const double indent = layout_.margin * 4 * static_cast<double>(group.level);
    write(area.adjusted(indent, 0, -width, 0),
          QString::fromUtf8(group.collapsed ? "▸  " : "▾  ") + text(grid_.columns()[group.column].caption) +
              ": " + text(group.value) + QString("  (%1)").arg(group.count),
          textFont);
}

void ReportGridPainter::paintFooter() {
    if (layout_.footer.isEmpty())
        return;
    painter_.fillRect(layout_.footer, grid_.brokenOff() ? palette::Yellow : palette::Header);
    painter_.setPen(look::borderOn(palette::Header));
    painter_.drawLine(layout_.footer.topLeft(), layout_.footer.topRight());
    painter_.setPen(palette::Ink);
    const QFont textFont = font(grid_.rowFont(), true);
    const QRectF area = layout_.footer.adjusted(0, 0, layout_.list.width() - layout_.footer.width(), 0);
    if (grid_.brokenOff())
        return write(area, text(grid_.brokenOffText()), textFont);
    write(area, QString::fromUtf8("Σ  (%1)").arg(grid_.recordCount()), textFont);
    write(area.adjusted(area.width() * (1 - SumsShare) / 2, 0, 0, 0), text(grid_.written(grid_.totals())),
          textFont, Qt::AlignRight);
}

} // namespace kova
