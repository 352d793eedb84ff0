#include "documents/qt/print_table.h"

#include "adapters/qt/look.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace kova {
namespace {

constexpr double MillimetresPerInch = 25.4;
constexpr double DesignWidth = 170; ///< millimetres; what A4's margins leave, and a little less
constexpr double SmallestShrinking = 0.5;
constexpr int MostLines = 12; ///< of one cell
constexpr double TextSize = 8.5;
constexpr double HeadingSize = 8;
constexpr double Padding = 0.8; ///< millimetres above and below a row's text
constexpr double ThinRule = 0.1;
constexpr double StrongRule = 0.35;
const QColor TableInk(0, 0, 0);
const QColor HeadingInk(70, 70, 70);
const QColor Faint(190, 190, 190);

} // namespace

PrintMeasure::PrintMeasure(QPaintDevice& device)
    : device_(device), page_(0, 0, device.width(), device.height()),
      perMillimetre_(device.logicalDpiX() / MillimetresPerInch),
      shrinking_(std::clamp(page_.width() / perMillimetre_ / DesignWidth, SmallestShrinking, 1.0)) {}

QFont PrintMeasure::font(double points, QFont::Weight weight) const {
    QFont font(look::font({"Tahoma", 9, false}, {}).family()); // the family that the dialog uses
    font.setPointSizeF(points * shrinking_);
    font.setWeight(weight);
    return font;
}

double PrintMeasure::ascent(const QFont& font) const {
    return QFontMetricsF(font, &device_).ascent();
}

double PrintMeasure::lineHeight(const QFont& font) const {
    return QFontMetricsF(font, &device_).height();
}

double PrintMeasure::width(const QString& text, const QFont& font) const {
    return QFontMetricsF(font, &device_).horizontalAdvance(text);
}

QStringList PrintMeasure::wrapped(const QString& text, const QFont& font, double width) const {
    QTextLayout layout(text, font, &device_);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    QStringList lines;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        if (lines.size() + 1 == MostLines) {
            lines << QFontMetricsF(font, &device_)
                         .elidedText(text.mid(line.textStart()), Qt::ElideRight, width);
            break;
        }
        lines << text.mid(line.textStart(), line.textLength()).trimmed();
    }
    layout.endLayout();
    return lines;
}

void PrintPage::text(const PrintMeasure& measure, double x, double top, Side side, const QString& text,
                     const QFont& font, const QColor& colour) {
    if (text.isEmpty())
        return;
    const double width = side == Side::Left ? 0 : measure.width(text, font);
    const double left = side == Side::Right ? x - width : side == Side::Middle ? x - width / 2 : x;
    texts_.push_back({{left, top + measure.ascent(font)}, text, font, colour});
}

void PrintPage::rule(const QLineF& line, double width, const QColor& colour) {
    rules_.push_back({line, width, colour});
}

void PrintPage::paint(QPainter& painter) const {
    for (const Rule& rule : rules_) {
        painter.setPen(QPen(rule.colour, rule.width, Qt::SolidLine, Qt::FlatCap));
        painter.drawLine(rule.line);
    }
    for (const Text& text : texts_) {
        painter.setPen(text.colour);
        painter.setFont(text.font);
        painter.drawText(text.baseline, text.text);
    }
}

PrintTable::PrintTable(const PrintMeasure& measure, double gap, std::vector<PrintColumn> columns,
                       std::vector<PrintRow> rows)
    : measure_(measure), columns_(std::move(columns)), rows_(std::move(rows)), plain_(measure.font(TextSize)),
      strong_(measure.font(TextSize, QFont::Bold)), heading_(measure.font(HeadingSize, QFont::Bold)) {
    shareWidth(measure.gap(gap));
}

double PrintTable::naturalWidth(std::size_t column) const {
    double width = measure_.width(columns_[column].heading, heading_);
    for (const PrintRow& row : rows_)
        width = std::max(width, measure_.width(row.cells[static_cast<qsizetype>(column)], fontOf(row)));
    return std::ceil(width);
}

void PrintTable::shareWidth(double gap) {
    double room = measure_.page().width() - gap * static_cast<double>(columns_.size() - 1);
    double shares = 0;
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        width_.push_back(columns_[i].share > 0 ? 0 : naturalWidth(i));
        room -= width_[i];
        shares += columns_[i].share;
    }
    double left = measure_.page().left();
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        if (columns_[i].share > 0)
            width_[i] = std::max(measure_.mm(5), room * columns_[i].share / shares);
        left_.push_back(left);
        left += width_[i] + gap;
    }
}

double PrintTable::headingHeight() const {
    return measure_.lineHeight(heading_) + measure_.mm(3 * Padding);
}

double PrintTable::rowHeight(std::size_t row) const {
    qsizetype lines = 1;
    for (std::size_t i = 0; i < columns_.size(); ++i)
        if (columns_[i].share > 0)
            lines = std::max(
                lines,
                measure_.wrapped(rows_[row].cells[static_cast<qsizetype>(i)], fontOf(rows_[row]), width_[i])
                    .size());
    return static_cast<double>(lines) * measure_.lineHeight(fontOf(rows_[row])) + measure_.mm(2 * Padding);
}

void PrintTable::putCell(PrintPage& page, double top, std::size_t column, const QString& text,
                         const QFont& font, const QColor& colour) const {
    using Side = PrintPage::Side;
    const Side side = columns_[column].side;
    const double share = side == Side::Left ? 0 : side == Side::Middle ? 0.5 : 1;
    const double x = left_[column] + share * width_[column];
    const QStringList lines =
        columns_[column].share > 0 ? measure_.wrapped(text, font, width_[column]) : QStringList{text};
    for (const QString& line : lines) {
        page.text(measure_, x, top, side, line, font, colour);
        top += measure_.lineHeight(font);
    }
}

void PrintTable::putHeading(PrintPage& page, double top) const {
    for (std::size_t i = 0; i < columns_.size(); ++i)
        putCell(page, top + measure_.mm(Padding), i, columns_[i].heading, heading_, HeadingInk);
    const double bottom = top + headingHeight() - measure_.mm(Padding);
    page.rule({measure_.page().left(), bottom, measure_.page().right(), bottom}, measure_.mm(StrongRule),
              HeadingInk);
}

void PrintTable::putRow(PrintPage& page, double top, std::size_t row) const {
    const PrintRow& content = rows_[row];
    for (std::size_t i = 0; i < columns_.size(); ++i)
        putCell(page, top + measure_.mm(Padding), i, content.cells[static_cast<qsizetype>(i)],
                fontOf(content), TableInk);
    const double bottom = top + rowHeight(row);
    page.rule({measure_.page().left(), bottom, measure_.page().right(), bottom},
              measure_.mm(content.strong ? StrongRule : ThinRule), content.strong ? HeadingInk : Faint);
}

} // namespace kova
