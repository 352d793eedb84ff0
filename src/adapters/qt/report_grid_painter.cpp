#include "adapters/qt/report_grid_painter.h"

#include "base/folded_text.h"

#include <algorithm>
#include <numeric>

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

/// The records that are looked at to measure the columns; others look much the same.
std::vector<std::size_t> samples(const ReportGrid& grid) {
    constexpr std::size_t Looked = 25; // at either end
    const std::size_t count = grid.recordCount();
    std::vector<std::size_t> records(std::min(count, 2 * Looked));
    std::iota(records.begin(), records.end(), 0);
    for (std::size_t i = Looked; i < records.size(); ++i)
        records[i] = count - records.size() + i;
    return records;
}

/// An amount in two parts that meet at the decimal mark.
struct Amount {
    QString whole, decimals; ///< the mark begins the decimals
};

Amount amountOf(const ReportGrid& grid, std::size_t record) {
    const std::string shown = grid.shown(record, *grid.amountColumn());
    const std::size_t mark = std::min(shown.rfind(grid.decimalMark()), shown.size());
    Amount amount{text(std::string_view(shown).substr(0, mark)), text(std::string_view(shown).substr(mark))};
    if (amount.whole.startsWith('-'))
        amount.whole[0] = u'−';
    return amount;
}

/// Of the decimals of all amounts.
double decimalsWidth(const ReportGrid& grid, const QFontMetricsF& metrics) {
    return grid.decimals() == 0 ? 0
                                : metrics.horizontalAdvance(text(grid.decimalMark()) +
                                                            QString(qsizetype(grid.decimals()), '0'));
}

double amountWidth(const ReportGrid& grid, const QFontMetricsF& metrics) {
    const double decimals = decimalsWidth(grid, metrics);
    double width = 0;
    for (const std::size_t record : samples(grid)) {
        const Amount amount = amountOf(grid, record);
        width = std::max(width, metrics.horizontalAdvance(amount.whole) +
                                    std::max(decimals, metrics.horizontalAdvance(amount.decimals)));
    }
    return width;
}

} // namespace

std::vector<double> neededWidths(const ReportGrid& grid, const Scale& scale) {
    constexpr double Margins = 2 * 6 + 1; // design pixels
    constexpr double Most = 260;          // a long note must not push the others aside
    const QFontMetricsF header(headerFont(grid, scale));
    const QFontMetricsF row(sizedFont(grid.rowFont(), false, scale));
    const std::vector<std::size_t> records = samples(grid);
    std::vector<double> widths;
    for (std::size_t column = 0; column < grid.columns().size(); ++column) {
        double width = 0;
        for (const std::size_t record : records)
            width = std::max(width, row.horizontalAdvance(text(grid.item(record, column))));
        if (grid.amountColumn() == column)
            width = amountWidth(grid, row);
        width = std::max(width, header.horizontalAdvance(text(grid.columns()[column].caption) + " ▲"));
        widths.push_back(std::min(width, Most * scale.smaller()) + Margins * scale.smaller());
    }
    return widths;
}

ReportGridPainter::ReportGridPainter(QPainter& painter, const ReportGrid& grid,
                                     const ReportGridLayout& layout, const Wording& words)
    : painter_(painter), grid_(grid), layout_(layout), words_(words),
      rowFont_(sizedFont(grid.rowFont(), false, layout.scale)), metrics_(rowFont_),
      ink_(grid.stale() ? palette::DimmedInk : palette::Ink) {}

void ReportGridPainter::paint(std::size_t firstRow, const ReportGridTouch& touch, bool enabled) {
    const QRectF whole(layout_.groupArea.topLeft(), layout_.footer.bottomRight());
    painter_.fillRect(whole, enabled && !grid_.stale() ? palette::Paper : palette::DisabledPaper);
    paintGroupArea(touch.draggedHeader.has_value());
    paintRows(firstRow);
    paintHeaders(touch);
    paintFooter();
    const double line = look::lineWidth(layout_.scale.smaller());
    painter_.setPen(QPen(look::borderOn(palette::Paper), line));
    painter_.setBrush(Qt::NoBrush);
    painter_.drawRect(whole.adjusted(line / 2, line / 2, -line / 2, -line / 2));
    if (touch.focus)
        paintFocus(*touch.focus);
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
    painter_.fillRect(layout_.groupArea | layout_.tools, target ? palette::Chosen : palette::Band);
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
    const std::string hint = grid_.stale() ? words_(Word::ListOfOther) : grid_.groupHint();
    write(area, captions.isEmpty() ? text(hint) : "✕  " + captions.join(QString::fromUtf8("  ›  ")),
          textFont);
}

void ReportGridPainter::paintHeaders(const ReportGridTouch& touch) {
    const double right = layout_.footer.right();
    painter_.fillRect(layout_.headers.adjusted(0, 0, right - layout_.headers.right(), 0), palette::Header);
    const QFont textFont = headerFont(grid_, layout_.scale);
    for (std::size_t i = 0; i < grid_.columns().size(); ++i) {
        QString caption = text(grid_.columns()[i].caption);
        if (grid_.sortColumn() == i)
            caption += grid_.sortDirection() == ReportGrid::Direction::Ascending ? " ▲" : " ▼";
        const QRectF cell = layout_.header(i);
        if (touch.pressedHeader == i)
            painter_.fillRect(cell, palette::Chosen);
        painter_.setPen(ink_);
        write(cell, caption, textFont, grid_.amountColumn() == i ? Qt::AlignRight : Qt::AlignLeft);
        const bool moved = touch.movedBorder == i;
        painter_.setPen(
            QPen(moved ? look::accentOn(palette::Header) : look::borderOn(palette::Header), moved ? 3 : 1));
        painter_.drawLine(cell.topRight(),
                          moved ? QPointF(cell.right(), layout_.list.bottom()) : cell.bottomRight());
    }
    painter_.setPen(look::borderOn(palette::Header));
    painter_.drawLine(layout_.headers.bottomLeft(), QPointF(right, layout_.headers.bottom()));
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
    if (rows.empty() && !grid_.filling()) {
        painter_.setPen(palette::PaleInk);
        const std::string words = grid_.brokenOff()          ? grid_.brokenOffText()
                                  : grid_.searched().empty() ? grid_.emptyText()
                                                             : words_(Word::NothingFound);
        write({area.left(), area.top(), area.width(), 4 * layout_.rowHeight}, text(words), rowFont_,
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
        else if (number % 2 == 1 && !grid_.stale())
            painter_.fillRect(line, palette::Stripe);
        paintRecord(record, line);
    }
    painter_.setClipping(false);
}

void ReportGridPainter::paintRecord(std::size_t record, const QRectF& area) {
    painter_.setFont(rowFont_);
    painter_.setPen(ink_);
    const auto amounts = grid_.amountColumn();
    for (std::size_t i = 0; i + 1 < layout_.edges.size(); ++i) {
        const QRectF cell(layout_.edges[i] + layout_.margin, area.top(),
                          layout_.edges[i + 1] - layout_.edges[i] - 2 * layout_.margin, area.height());
        if (amounts == i)
            paintAmount(record, cell);
        else
            writeCell(cell.left(), cell, text(grid_.item(record, i)));
    }
}

/// With the decimal mark where all have it. One that goes out has a sign and a colour.
void ReportGridPainter::paintAmount(std::size_t record, const QRectF& cell) {
    const Amount amount = amountOf(grid_, record);
    const double decimals =
        std::max(decimalsWidth(grid_, metrics_), metrics_.horizontalAdvance(amount.decimals));
    if (grid_.isOutflow(record) && !grid_.stale())
        painter_.setPen(palette::MoneyOut);
    writeCell(cell.right() - decimals - metrics_.horizontalAdvance(amount.whole), cell,
              amount.whole + amount.decimals);
    painter_.setPen(ink_);
}

void ReportGridPainter::writeCell(double left, const QRectF& cell, const QString& words) {
    left = std::max(left, cell.left());
    if (!grid_.searched().empty()) {
        const std::string all = words.toStdString();
        for (const TextRange& range : foundIn(all, grid_.searched())) {
            const double begin =
                metrics_.horizontalAdvance(text(std::string_view(all).substr(0, range.begin)));
            const double end = metrics_.horizontalAdvance(text(std::string_view(all).substr(0, range.end)));
            const QRectF mark(left + begin, cell.center().y() - metrics_.height() / 2, end - begin,
                              metrics_.height());
            painter_.fillRect(mark & cell, palette::Yellow);
        }
    }
    const double room = cell.right() - left;
    const bool fits = metrics_.horizontalAdvance(words) <= room + 0.5;
    painter_.drawText(QRectF(left, cell.top(), room + 1, cell.height()),
                      static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter) | Qt::TextSingleLine,
                      fits ? words : metrics_.elidedText(words, Qt::ElideRight, room));
}

void ReportGridPainter::paintFocus(const ReportGridPlace& place) {
    const QRectF area = place.row < 0 ? layout_.header(static_cast<std::size_t>(place.column))
                                      : layout_.row(static_cast<std::size_t>(place.row)) & layout_.list;
    const double line = 2 * look::lineWidth(layout_.scale.smaller());
    painter_.setPen(QPen(look::accentOn(palette::Paper), line));
    painter_.setBrush(Qt::NoBrush);
    painter_.drawRect(area.adjusted(line / 2, line / 2, -line / 2, -line / 2));
}

void ReportGridPainter::paintGroup(const ReportGrid::Group& group, const QRectF& area) {
    painter_.fillRect(area, palette::Band);
    painter_.setPen(look::borderOn(palette::Band));
    painter_.drawLine(area.topLeft(), area.topRight());
    painter_.setPen(ink_);
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
    painter_.setPen(grid_.brokenOff() ? palette::Ink : ink_);
    const QFont textFont = font(grid_.rowFont(), true);
    const QRectF area = layout_.footer.adjusted(0, 0, layout_.list.width() - layout_.footer.width(), 0);
    if (grid_.brokenOff())
        return write(area, text(grid_.brokenOffText()), textFont);
    const QString all = QString::number(grid_.recordCount());
    const bool found = !grid_.searched().empty();
    write(area,
          QString::fromUtf8("Σ  (%1)").arg(found ? QString::number(grid_.order().size()) + " / " + all : all),
          textFont);
    write(area.adjusted(area.width() * (1 - SumsShare) / 2, 0, 0, 0), text(grid_.written(grid_.totals())),
          textFont, Qt::AlignRight);
}

} // namespace kova
