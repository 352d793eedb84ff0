// The document of a day as it is painted: what stands on which page, and where.
#include "text_paper.h"

#include "adapters/qt/event_loop.h"
#include "base/error.h"
#include "host/documents/qt/day_document.h"
#include "host/documents/qt/day_printing.h"
#include "services/texts.h"

#include <QFile>
#include <QPageRanges>
#include <QPrinter>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <set>

namespace kova {
namespace {

using namespace std::chrono_literals;
using test::TextPaper;

using Page = std::vector<TextPaper::Text>;
const QSize A4(673, 1024); // without its margins

class DayDocumentTest : public testing::Test {
  protected:
    static DayDocument documentOf(int rows) {
        const auto day = std::chrono::local_days(2026y / 11 / 16);
        DayDocument document{{{day, 3, 1}, {}, {}}, "Zoë", DateTime(day + 19h), {}, language::Italian};
        for (int i = 0; i < rows; ++i) {
            const Decimal amount{(i % 3 == 0 ? -1 : 1) * (12345600 + i * 10000), 4};
            document.report.movements.push_back({DateTime(day + 8h + i * 1min), "Versamento", "Contanti", "€",
                                                 "nota " + std::to_string(i), "Zoë", amount, i % 3});
        }
        const MoneySum sum{rows, {2500000000, 4}, {-12500, 4}};
        document.report.sums = {{"€", {{"Contanti", sum}}, sum}};
        return document;
    }
    /// Each text is to stay on the paper, and off the others.
    static std::vector<Page> pagesOf(const DayDocument& document, const QSize& size = A4) {
        TextPaper paper(size);
        DayPages pages(document, paper);
        std::vector<Page> result;
        for (int page = 0; page < pages.count(); ++page) {
            QPainter painter(&paper);
            pages.paint(painter, page);
            painter.end();
            for (auto text = paper.texts.begin(); text != paper.texts.end(); ++text)
                EXPECT_TRUE(
                    QRectF({}, size).adjusted(-1, -1, 1, 1).contains(text->place) &&
                    std::none_of(paper.texts.begin(), text,
                                 [&](const TextPaper::Text& other) {
                                     return text->place.adjusted(1, 1, -1, -1).intersects(other.place);
                                 }))
                    << text->words.toStdString() << " on page " << page;
            result.push_back(std::exchange(paper.texts, {}));
        }
        return result;
    }
    /// Nowhere, if the text does not stand there.
    static QRectF placeOf(const Page& page, const QString& words) {
        const auto found = std::ranges::find(page, words, &TextPaper::Text::words);
        return found == page.end() ? QRectF() : found->place;
    }
    static void expectOn(const Page& page, const std::vector<QString>& all) {
        for (const QString& words : all)
            EXPECT_TRUE(placeOf(page, words).isValid()) << words.toStdString();
    }
    const QtEventLoop application;
};

TEST_F(DayDocumentTest, GoesOnOverPagesUnderRepeatedHeadings) {
    const auto pages = pagesOf(documentOf(200));
    ASSERT_GE(pages.size(), 4U);
    int next = 0;
    for (std::size_t i = 0; i < pages.size(); ++i) {
        const QString number = QString("%1/%2").arg(i + 1).arg(pages.size());
        expectOn(pages[i], {"Ora", "Movimento", "Pagamento", "Valuta", "Importo", "Note", "Cassetto",
                            "Operatore", "Stampato il 16/11/2026 alle 19:00", number});
        while (placeOf(pages[i], QString("nota %1").arg(next)).isValid())
            ++next;
    }
    EXPECT_EQ(next, 200) << "no row is lost at the turn of a page, nor out of order";
    expectOn(pages[0], {"Movimenti di cassetto", "16/11/2026", "Cassa 3 · Operatore Zoë", "200 movimenti"});
    expectOn(pages[1], {"Movimenti di cassetto 16/11/2026 · Cassa 3 · Operatore Zoë"});
    (void)pagesOf(documentOf(40), {378, 567}); // narrow paper
}

TEST_F(DayDocumentTest, KeepsTheSumsOnOnePageUnderTheirTitle) {
    std::set<std::size_t> counts;
    for (int rows = 38; rows < 46; ++rows) { // more and more of the sums would not fit on the first page
        auto pages = pagesOf(documentOf(rows));
        counts.insert(pages.size());
        expectOn(pages.back(), {"Totali per pagamento e valuta", "Entrate", "Totale", "250.000,00"});
        pages.pop_back();
        for (const Page& page : pages)
            EXPECT_FALSE(placeOf(page, "Totali per pagamento e valuta").isValid()) << rows;
    }
    EXPECT_EQ(counts, (std::set<std::size_t>{1, 2}));
}

TEST_F(DayDocumentTest, AlignsAmountsAndWrapsLongNotes) {
    auto document = documentOf(3);
    document.report.movements[0].note = "uno due tre quattro cinque sei sette otto nove dieci\nundici dodici";
    document.report.movements[2].amount = Decimal{500, 4};
    const Page page = pagesOf(document).at(0);
    for (const char* amount : {"\u22121.234,56", "+1.235,56", "+0,05"})
        EXPECT_NEAR(placeOf(page, amount).right(), placeOf(page, "Importo").right(), 1) << amount;
    expectOn(page, {QString::fromUtf8("–")}); // no drawer
    QString all;
    for (const auto& text : page)
        all += text.words + ' ';
    EXPECT_TRUE(all.contains("uno due tre quattro cinque sei sette otto nove dieci undici dodici"));
}

TEST_F(DayDocumentTest, PrintsThePagesAndCopiesAskedForAndTellsOfFailure) {
    const QTemporaryDir folder;
    const auto print = [&](const QString& name, const QString& range, int copies) {
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(folder.filePath(name));
        printer.setCopyCount(copies);
        if (!range.isEmpty()) {
            printer.setPrintRange(QPrinter::PageRange);
            printer.setPageRanges(QPageRanges::fromString(range));
        }
        printPages(documentOf(200), printer);
        QFile pdf(folder.filePath(name));
        EXPECT_TRUE(pdf.open(QIODevice::ReadOnly));
        return pdf.readAll().count("/Type /Page\n");
    };
    const auto whole = print("all.pdf", {}, 1);
    EXPECT_GE(whole, 4);
    EXPECT_EQ(print("some.pdf", "2-3", 1), 2);
    EXPECT_EQ(print("twice.pdf", {}, 2), 2 * whole);
    EXPECT_THROW(print("no/such/folder.pdf", {}, 1), Error);
    EXPECT_THROW(print("none.pdf", "90", 1), Error) << "there is no such page";
}

} // namespace
} // namespace kova
