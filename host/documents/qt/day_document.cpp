#include "documents/qt/day_document.h"

#include "demonstration/texts.h"
#include "documents/qt/print_table.h"
#include "services/conversions.h"

namespace kova {
namespace {

using Side = PrintPage::Side;

constexpr double TitleSize = 17;
constexpr double SubtitleSize = 10;
constexpr double SmallSize = 8;
constexpr double FooterGap = 3; ///< millimetres; like those below
constexpr double SectionGap = 8;
constexpr double SmallGap = 2;
constexpr double MovementsGap = 3;
constexpr double SumsGap = 9;
const QColor DocumentInk(0, 0, 0);
const QColor Muted(80, 80, 80);
const QString Between = QStringLiteral(" \u00B7 ");
const QString Dash = QStringLiteral("\u2013");

/// On one line; the separators of numbers and dates stay what they are.
QString text(const std::string& utf8) {
    QString result = QString::fromStdString(utf8).trimmed();
    for (QChar& one : result)
        if (one < u' ' || one == QChar::LineSeparator || one == QChar::ParagraphSeparator)
            one = u' ';
    return result;
}

QString dayOf(const DayDocument& document) {
    return text(shortDate(document.report.scope.day, document.regional));
}

/// Till, and user if there is one.
QString scopeOf(const DayDocument& document) {
    const auto say = [&](Caption which) { return caption(which, document.languageId); };
    const auto& till = document.report.scope.till;
    QString scope = till ? say(Caption::Till) + ' ' + QString::number(*till) : say(Caption::AllTills);
    if (document.report.scope.user)
        scope += Between + say(Caption::User) + ' ' + document.userName;
    return scope;
}

std::vector<PrintRow> movementRows(const DayDocument& document) {
    std::vector<PrintRow> rows;
    for (const DayMovement& one : document.report.movements)
        rows.push_back(
            {{one.time ? text(timeOfDayText(*one.time, document.regional)) : Dash, text(one.activity),
              text(one.payment), text(one.currency),
              one.amount ? text(moneyText(*one.amount, document.regional, Sign::Always)) : Dash,
              text(one.note), one.drawer == 0 ? Dash : QString::number(one.drawer), text(one.operatorName)}});
    return rows;
}

PrintRow sumRow(const DayDocument& document, const QString& payment, const std::string& currency,
                const MoneySum& sum) {
    const auto money = [&](Decimal amount) {
        return text(moneyText(amount, document.regional, Sign::OfNegative));
    };
    return {{payment, text(currency), QString::number(sum.movements), money(sum.incoming),
             money(sum.outgoing), money(sum.balance())}};
}

std::vector<PrintRow> sumRows(const DayDocument& document) {
    std::vector<PrintRow> rows;
    for (const CurrencySum& currency : document.report.sums) {
        for (const PaymentSum& one : currency.payments)
            rows.push_back(sumRow(document, text(one.payment), currency.currency, one.sum));
        rows.push_back(sumRow(document, caption(Caption::Total, document.languageId), currency.currency,
                              currency.total));
        rows.back().strong = true;
    }
    return rows;
}

} // namespace

QString DayDocument::title() const {
    return caption(Caption::DocumentTitle, languageId) + ' ' + dayOf(*this);
}

DayPages::DayPages(const DayDocument& document, QPaintDevice& device)
    : document_(document), measure_(std::make_unique<PrintMeasure>(device)) {
    bottom_ =
        measure_->page().bottom() - measure_->lineHeight(measure_->font(SmallSize)) - measure_->mm(FooterGap);
    beginPage();
    putMovements();
    putSums();
    putFooters();
}

DayPages::~DayPages() = default;

int DayPages::count() const {
    return static_cast<int>(pages_.size());
}

void DayPages::paint(QPainter& painter, int page) const {
    pages_.at(static_cast<std::size_t>(page)).paint(painter);
}

bool DayPages::fits(double height) const {
    return y_ + height <= bottom_;
}

void DayPages::beginPage() {
    pages_.emplace_back();
    y_ = measure_->page().top();
    if (pages_.size() == 1)
        putTitle();
    else
        putReminder();
}

void DayPages::putTitle() {
    const QFont large = measure_->font(TitleSize, QFont::Bold);
    const QFont small = measure_->font(SubtitleSize);
    const QRectF page = measure_->page();
    const QString title = caption(Caption::DocumentTitle, document_.languageId);
    pages_.back().text(*measure_, page.left(), y_, Side::Left, title, large, DocumentInk);
    pages_.back().text(*measure_, page.right(), y_, Side::Right, dayOf(document_), large, DocumentInk);
    y_ += measure_->lineHeight(large) + measure_->mm(SmallGap / 2);
    pages_.back().text(*measure_, page.left(), y_, Side::Left, scopeOf(document_), small, DocumentInk);
    const auto movements = static_cast<int>(document_.report.movements.size());
    const Caption counted = movements == 1 ? Caption::OneMovement : Caption::MovementCount;
    pages_.back().text(*measure_, page.right(), y_, Side::Right,
                       caption(counted, document_.languageId).replace("%1", QString::number(movements)),
                       small, DocumentInk);
    y_ += measure_->lineHeight(small) + measure_->mm(SectionGap / 2);
}

/// What a page says of itself that has come loose from the first.
void DayPages::putReminder() {
    const QFont small = measure_->font(SmallSize);
    pages_.back().text(*measure_, measure_->page().left(), y_, Side::Left,
                       document_.title() + Between + scopeOf(document_), small, Muted);
    y_ += measure_->lineHeight(small) + measure_->mm(SmallGap);
}

void DayPages::putTable(const PrintTable& table) {
    for (std::size_t row = 0; row < table.rowCount(); ++row) {
        const double height = table.rowHeight(row);
        const bool first = row == 0;
        const bool turning = !fits(first ? table.headingHeight() + height : height);
        if (turning)
            beginPage();
        if (first || turning) {
            table.putHeading(pages_.back(), y_);
            y_ += table.headingHeight();
        }
        table.putRow(pages_.back(), y_, row);
        y_ += height;
    }
}

void DayPages::putMovements() {
    const auto say = [&](Caption which) { return caption(which, document_.languageId); };
    putTable(PrintTable(*measure_, MovementsGap,
                        {{say(Caption::ColumnTime), Side::Right, 0},
                         {say(Caption::ColumnActivity), Side::Left, 30},
                         {say(Caption::ColumnPayment), Side::Left, 20},
                         {say(Caption::ColumnCurrency), Side::Middle, 0},
                         {say(Caption::ColumnAmount), Side::Right, 0},
                         {say(Caption::ColumnNote), Side::Left, 30},
                         {say(Caption::ColumnDrawer), Side::Middle, 0},
                         {say(Caption::ColumnOperator), Side::Left, 20}},
                        movementRows(document_)));
}

/// The sums stay together where a page can hold them all.
void DayPages::putSums() {
    const auto say = [&](Caption which) { return caption(which, document_.languageId); };
    const PrintTable table(*measure_, SumsGap,
                           {{say(Caption::ColumnPayment), Side::Left, 1},
                            {say(Caption::ColumnCurrency), Side::Middle, 0},
                            {say(Caption::MovementsInSum), Side::Right, 0},
                            {say(Caption::SumIncoming), Side::Right, 0},
                            {say(Caption::SumOutgoing), Side::Right, 0},
                            {say(Caption::Balance), Side::Right, 0}},
                           sumRows(document_));
    if (table.rowCount() == 0)
        return;
    const QFont large = measure_->font(SubtitleSize, QFont::Bold);
    const double heading = measure_->lineHeight(large) + measure_->mm(SmallGap);
    double whole = measure_->mm(SectionGap) + heading + table.headingHeight();
    for (std::size_t row = 0; row < table.rowCount(); ++row)
        whole += table.rowHeight(row);
    if (fits(whole))
        y_ += measure_->mm(SectionGap);
    else
        beginPage();
    pages_.back().text(*measure_, measure_->page().left(), y_, Side::Left, say(Caption::Sums), large,
                       DocumentInk);
    y_ += heading;
    putTable(table);
}

void DayPages::putFooters() {
    const QFont small = measure_->font(SmallSize);
    const QRectF page = measure_->page();
    const double top = page.bottom() - measure_->lineHeight(small);
    const QString printed = caption(Caption::PrintedAt, document_.languageId)
                                .replace("%1", text(shortDate(document_.printedAt, document_.regional)))
                                .replace("%2", text(timeOfDayText(document_.printedAt, document_.regional)));
    for (std::size_t i = 0; i < pages_.size(); ++i) {
        pages_[i].rule(
            {page.left(), top - measure_->mm(FooterGap / 3), page.right(), top - measure_->mm(FooterGap / 3)},
            measure_->mm(0.1), Muted);
        pages_[i].text(*measure_, page.left(), top, Side::Left, printed, small, Muted);
        pages_[i].text(*measure_, page.right(), top, Side::Right,
                       QString("%1/%2").arg(i + 1).arg(pages_.size()), small, Muted);
    }
}

} // namespace kova
