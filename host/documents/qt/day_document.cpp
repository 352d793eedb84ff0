#include "documents/qt/day_document.h"

#include "adapters/qt/look.h"
#include "demonstration/texts.h"
#include "services/conversions.h"

#include <QAbstractTextDocumentLayout>
#include <QPainter>
#include <QTextBlock>
#include <QTextTable>

#include <algorithm>

namespace kova {
namespace {

constexpr double DesignWidth = 170; ///< millimetres; what A4's margins leave, and a little less
constexpr double SmallestScale = 0.5;
constexpr double RunningLine = 6 / 25.4; ///< inches, the gap to the text included
constexpr qsizetype MostLetters = 500;   ///< of a cell, so that every row fits on a page
const QColor Muted(80, 80, 80);
const QString Between = QStringLiteral(" \u00B7 ");
const QString Dash = QStringLiteral("\u2013");
const QString Ellipsis = QStringLiteral("\u2026");

const QString StyleSheet = QStringLiteral(R"(
    td { padding: 3px 0 3px 11px; border-bottom: 1px solid #bebebe; }
    td[align] { white-space: nowrap; }
    td.first { padding-left: 0; }
    td.sum { padding-left: 34px; }
    .headings td { white-space: nowrap; font-weight: bold; font-size: 8pt; color: #464646; }
    .total td { font-weight: bold; }
    .headings td, .total td { border-bottom: 2px solid #464646; }
    .title td, .scope td, .sums td { border-bottom: none; padding: 0; }
    .title td { font-size: 17pt; font-weight: bold; }
    .scope td { font-size: 10pt; padding: 3px 0 12px 0; }
    .sums td { font-size: 10pt; font-weight: bold; padding: 30px 0 6px 0; }
)");
const QString TitleRows = QStringLiteral(R"(
    <tr class=title><td align=left>%1</td><td align=right>%2</td></tr>
    <tr class=scope><td align=left>%3</td><td align=right>%4</td></tr>
)");
// A note takes two columns, and so twice the width that is left for one.
const QString MovementRow = QStringLiteral(R"(
    <tr class="%1"><td class=first align=right>%2</td><td>%3</td><td>%4</td><td align=center>%5</td>
    <td align=right>%6</td><td colspan=2>%7</td><td align=center>%8</td><td>%9</td></tr>
)");
const QString SumsTitle = QStringLiteral("<tr class=sums><td colspan=6>%1</td></tr>");
const QString SumRow = QStringLiteral(R"(
    <tr class="%1"><td class=first>%2</td><td class=sum align=center>%3</td><td class=sum align=right>%4</td>
    <td class=sum align=right>%5</td><td class=sum align=right>%6</td><td class=sum align=right>%7</td></tr>
)");

/// Without rows it has no headings either.
QString tableOf(const QString& headings, const QString& rows) {
    const QString html = QStringLiteral("<table width=100% cellspacing=0><thead>%1</thead>%2</table>");
    return rows.isEmpty() ? QString() : html.arg(headings, rows);
}

/// On one line, for the table.
QString text(const std::string& utf8) {
    const QString line = QString::fromStdString(utf8).simplified();
    return (line.size() > MostLetters ? line.left(MostLetters) + Ellipsis : line).toHtmlEscaped();
}

QString dayOf(const DayDocument& document) {
    return text(shortDate(document.report.scope.day, document.regional));
}

QString titleTable(const DayDocument& document) {
    const auto say = [&](Caption which) { return caption(which, document.languageId); };
    const std::size_t count = document.report.movements.size();
    const QString counted =
        say(count == 1 ? Caption::OneMovement : Caption::MovementCount).replace("%1", QString::number(count));
    return tableOf({}, TitleRows.arg(say(Caption::DocumentTitle), dayOf(document),
                                     document.scope().toHtmlEscaped(), counted));
}

QString movementTable(const DayDocument& document) {
    const auto say = [&](Caption which) { return caption(which, document.languageId); };
    const auto& regional = document.regional;
    QString rows;
    for (const DayMovement& one : document.report.movements)
        rows += MovementRow.arg(QString(), one.time ? text(timeOfDayText(*one.time, regional)) : Dash,
                                text(one.activity), text(one.payment), text(one.currency),
                                one.amount ? text(moneyText(*one.amount, regional, Sign::Always)) : Dash,
                                text(one.note), one.drawer == 0 ? Dash : QString::number(one.drawer),
                                text(one.operatorName));
    return tableOf(MovementRow.arg("headings", say(Caption::ColumnTime), say(Caption::ColumnActivity),
                                   say(Caption::ColumnPayment), say(Caption::ColumnCurrency),
                                   say(Caption::ColumnAmount), say(Caption::ColumnNote),
                                   say(Caption::ColumnDrawer), say(Caption::ColumnOperator)),
                   rows);
}

QString sumTable(const DayDocument& document) {
    const auto say = [&](Caption which) { return caption(which, document.languageId); };
    const auto money = [&](Decimal amount) {
        return text(moneyText(amount, document.regional, Sign::OfNegative));
    };
    const auto row = [&](const QString& style, const QString& name, const std::string& currency,
                         const MoneySum& sum) {
        return SumRow.arg(style, name, text(currency), QString::number(sum.movements), money(sum.incoming),
                          money(sum.outgoing), money(sum.balance()));
    };
    QString rows;
    for (const auto& [currency, payments, total] : document.report.sums) {
        for (const PaymentSum& one : payments)
            rows += row({}, text(one.payment), currency, one.sum);
        rows += row("total", say(Caption::Total), currency, total);
    }
    return tableOf(SumsTitle.arg(say(Caption::Sums)) +
                       SumRow.arg("headings", say(Caption::ColumnPayment), say(Caption::ColumnCurrency),
                                  say(Caption::MovementsInSum), say(Caption::SumIncoming),
                                  say(Caption::SumOutgoing), say(Caption::Balance)),
                   rows);
}

QFont fontOf(double points) {
    QFont font(look::font({"Tahoma", 9, false}, {}).family()); // the family that the dialog uses
    font.setPointSizeF(points);
    return font;
}

} // namespace

QString DayDocument::title() const {
    return caption(Caption::DocumentTitle, languageId) + ' ' + dayOf(*this);
}

QString DayDocument::scope() const {
    const auto say = [this](Caption which) { return caption(which, languageId); };
    const auto& till = report.scope.till;
    return (till ? say(Caption::Till) + ' ' + QString::number(*till) : say(Caption::AllTills)) + Between +
           (report.scope.user ? say(Caption::User) + ' ' + userName : say(Caption::AllUsers));
}

DayPages::DayPages(const DayDocument& document, QPaintDevice& device)
    : scale_(std::clamp(device.widthMM() / DesignWidth, SmallestScale, 1.0)),
      paper_(QSizeF(device.width(), device.height()) / scale_), line_(RunningLine * device.logicalDpiY()),
      header_(document.title() + Between + document.scope()),
      footer_(caption(Caption::PrintedAt, document.languageId)
                  .replace("%1", text(shortDate(document.printedAt, document.regional)))
                  .replace("%2", text(timeOfDayText(document.printedAt, document.regional)))),
      pages_(1) {
    text_.setDocumentMargin(0);
    text_.setDefaultFont(fontOf(8.5));
    text_.setDefaultStyleSheet(StyleSheet);
    text_.documentLayout()->setPaintDevice(&device);
    text_.setTextWidth(paper_.width());
    text_.setHtml(titleTable(document) + movementTable(document) + sumTable(document));
    const auto tables = text_.rootFrame()->childFrames(); // title, movements, sums
    for (QTextFrame* const frame : tables)
        placeTable(static_cast<QTextTable&>(*frame), frame == tables.value(2));
}

/// Where a page can break above a row: between the rule over it and its text, which begins a pixel lower. The
/// row after the last one begins where the table ends.
double DayPages::topOf(QTextTable& table, int row) const {
    const auto* const layout = text_.documentLayout();
    return row < table.rows()
               ? layout->blockBoundingRect(table.cellAt(row, 0).firstCursorPosition().block()).top() - 1
               : layout->frameBoundingRect(&table).bottom();
}

void DayPages::place(const Part& part, const Part& headings) {
    Page& last = pages_.back();
    const double room = paper_.height() - last.headings.height() - (pages_.size() > 1 ? 2 : 1) * line_;
    if (part.bottom - last.body.top > room)
        pages_.push_back({headings, part});
    else
        last.body.bottom = part.bottom;
}

/// Breaks between rows only, and not between the headings and the first row; with `together` nowhere, unless
/// the table is longer than a page.
void DayPages::placeTable(QTextTable& table, bool together) {
    const int first = table.format().headerRowCount();
    const Part headings{topOf(table, 0), topOf(table, first)};
    const Part whole{headings.top, topOf(table, table.rows())};
    if (together && whole.height() <= paper_.height() - 2 * line_)
        return place(whole, {});
    for (int row = first; row < table.rows(); ++row)
        place({row == first ? headings.top : topOf(table, row), topOf(table, row + 1)},
              row == first ? Part{} : headings);
}

void DayPages::paint(QPainter& painter, int page) {
    const auto& [headings, body] = pages_.at(static_cast<std::size_t>(page));
    painter.save();
    painter.scale(scale_, scale_);
    painter.setPen(QPen(Muted, line_ / 60));
    painter.setFont(fontOf(8));
    const QRectF paper({}, paper_);
    const double bottom = paper.bottom() - line_ * 0.7;
    painter.drawText(paper, Qt::AlignLeft | Qt::AlignBottom, footer_);
    painter.drawText(paper, Qt::AlignRight | Qt::AlignBottom, QString("%1/%2").arg(page + 1).arg(count()));
    painter.drawLine(QLineF(0, bottom, paper.width(), bottom));
    if (page > 0)
        painter.drawText(paper, Qt::AlignLeft | Qt::AlignTop, header_);
    painter.translate(0, page > 0 ? line_ : 0);
    for (const Part& part : {headings, body}) {
        if (part.height() <= 0) // no headings
            continue;
        painter.translate(0, -part.top);
        text_.drawContents(&painter, {0, part.top, paper_.width(), part.height()});
        painter.translate(0, part.bottom);
    }
    painter.restore();
}

} // namespace kova
