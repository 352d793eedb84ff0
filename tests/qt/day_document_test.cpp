// The document of a day as it is painted: what stands on which page, and where.
#include "recording_device.h"

#include "adapters/qt/event_loop.h"
#include "host/qt_day_document.h"
#include "host/qt_day_printing.h"
#include "platform/error.h"
#include "services/localised_strings.h"

#include <QFontMetricsF>
#include <QPageRanges>
#include <QPaintEngine>
#include <QPainter>
#include <QPrinter>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace kova {
namespace {

using namespace std::chrono_literals;

constexpr int Dpi = 300;
const auto day = std::chrono::local_days(2026y / 11 / 16);

int pixels(double millimetres) {
    return static_cast<int>(std::lround(millimetres / 25.4 * Dpi));
}

struct Written {
    QString text;
    double left, right, baseline;
};

/// Takes down every text that is painted.
class Recorder final : public QPaintEngine {
  public:
    Recorder() : QPaintEngine(AllFeatures) {}
    bool begin(QPaintDevice*) override { return true; }
    bool end() override { return true; }
    void updateState(const QPaintEngineState&) override {}
    void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}
    void drawPath(const QPainterPath&) override {}
    void drawLines(const QLineF*, int) override {}
    void drawTextItem(const QPointF& at, const QTextItem& item) override {
        written.push_back({item.text(), at.x(), at.x() + item.width(), at.y()});
    }
    [[nodiscard]] Type type() const override { return User; }
    std::vector<Written> written;
};

/// By default A4 without margins.
class Paper final : public test::RecordingDevice {
  public:
    explicit Paper(double width = 178, double height = 271)
        : RecordingDevice(recorder, {pixels(width), pixels(height)}, Dpi) {}
    Recorder recorder;
};

using Page = std::vector<Written>;

std::vector<Page> pagesOf(const DayDocument& document, Paper& paper) {
    const DayPages pages(document, paper);
    std::vector<Page> result;
    for (int page = 0; page < pages.count(); ++page) {
        paper.recorder.written.clear();
        QPainter painter(&paper);
        pages.paint(painter, page);
        painter.end();
        result.push_back(paper.recorder.written);
    }
    return result;
}

std::vector<Written> all(const Page& page, const QString& text) {
    Page found;
    std::ranges::copy_if(page, std::back_inserter(found), [&](const auto& one) { return one.text == text; });
    return found;
}

bool has(const Page& page, const QString& text) {
    return !all(page, text).empty();
}

DayDocument documentOf(int rows, std::int32_t languageId = language::Italian) {
    DayDocument document{{{day, 3, 1}, {}, {}}, "Zoë", DateTime(day + 19h), {}, languageId};
    for (int i = 0; i < rows; ++i) {
        const Decimal amount{(i % 3 == 0 ? -1 : 1) * (12345600 + i * 10000), 4};
        document.report.movements.push_back({DateTime(day + 8h + i * 1min), "Versamento", "Contanti", "€",
                                             "nota " + std::to_string(i), "Zoë", amount, i % 3});
    }
    const MoneySum sum{rows, {2500000000, 4}, {-12500, 4}};
    if (rows > 0)
        document.report.sums = {{"€", {{"Contanti", sum}}, sum}};
    return document;
}

class DayDocumentTest : public testing::Test {
    QtEventLoop application{QtEventLoop::Time::Stepped};
};

TEST_F(DayDocumentTest, GoesOnOverPagesUnderRepeatedHeadings) {
    Paper paper;
    const auto pages = pagesOf(documentOf(200), paper);
    ASSERT_GE(pages.size(), 4U);
    ASSERT_LE(pages.size(), 6U);
    int next = 0;
    for (std::size_t i = 0; i < pages.size(); ++i) {
        const Page& page = pages[i];
        const QString number = QString("%1/%2").arg(i + 1).arg(pages.size());
        ASSERT_EQ(all(page, number).size(), 1U) << number.toStdString();
        const double footer = all(page, number)[0].baseline;
        EXPECT_LE(footer, paper.height());
        EXPECT_TRUE(has(page, "Stampato il 16/11/2026 alle 19:00"));
        for (const char* heading :
             {"Ora", "Movimento", "Pagamento", "Valuta", "Importo", "Note", "Cassetto", "Operatore"})
            EXPECT_TRUE(has(page, heading)) << heading << " on page " << i + 1;
        for (; has(page, QString("nota %1").arg(next)); ++next)
            EXPECT_LT(all(page, QString("nota %1").arg(next))[0].baseline, footer);
        for (const Written& one : page) {
            EXPECT_GE(one.left, -1) << one.text.toStdString();
            EXPECT_LE(one.right, paper.width() + 1) << one.text.toStdString();
        }
    }
    EXPECT_EQ(next, 200) << "no row is lost at the turn of a page, nor out of order";
    EXPECT_TRUE(has(pages[0], "Movimenti di cassetto") && has(pages[0], "16/11/2026"));
    EXPECT_TRUE(has(pages[0], QString::fromUtf8("Cassa 3 · Operatore Zoë")) &&
                has(pages[0], "200 movimenti"));
    const QString reminder = QString::fromUtf8("Movimenti di cassetto 16/11/2026 · Cassa 3 · Operatore Zoë");
    EXPECT_FALSE(has(pages[0], reminder));
    EXPECT_TRUE(has(pages[1], reminder));
    for (const char* text : {"Totali per pagamento e valuta", "Entrate", "Totale", "250.000,00"})
        EXPECT_TRUE(has(pages.back(), text)) << text;
}

TEST_F(DayDocumentTest, AlignsAmountsAtTheirLastDigit) {
    Paper paper;
    auto document = documentOf(3);
    document.report.movements[2].amount = Decimal{500, 4};
    const Page page = pagesOf(document, paper).at(0);
    const auto out = all(page, QString::fromUtf8("\u22121.234,56"));
    const auto in = all(page, "+1.235,56");
    const auto small = all(page, "+0,05");
    ASSERT_EQ(out.size() + in.size() + small.size(), 3U);
    EXPECT_NEAR(out[0].right, in[0].right, 1);
    EXPECT_NEAR(out[0].right, small[0].right, 1);
    EXPECT_NEAR(all(page, "Importo").at(0).right, small[0].right, 1);
    EXPECT_LT(out[0].baseline, in[0].baseline);
    EXPECT_EQ(all(page, QString::fromUtf8("–")).size(), 1U) << "one movement has no drawer";
}

TEST_F(DayDocumentTest, WrapsLongNotesAndKeepsThemOffTheNextRow) {
    Paper paper;
    auto document = documentOf(2);
    document.report.movements[0].note = "uno due tre quattro cinque sei sette otto nove dieci\nundici dodici";
    const Page page = pagesOf(document, paper).at(0);
    QString words;
    double last = 0;
    const double left = all(page, "nota 1").at(0).left;
    for (const Written& one : page)
        if (std::abs(one.left - left) < 1 && one.text != "Note" && one.text != "nota 1") {
            words += one.text + ' ';
            last = one.baseline;
        }
    EXPECT_EQ(words, "uno due tre quattro cinque sei sette otto nove dieci undici dodici ");
    EXPECT_LT(last, all(page, "nota 1")[0].baseline);
    EXPECT_GT(last, all(page, "08:00").at(0).baseline) << "on several lines";
}

TEST_F(DayDocumentTest, SpeaksTheHostsLanguageAndFitsNarrowPaper) {
    Paper paper;
    EXPECT_TRUE(has(pagesOf(documentOf(1, language::German), paper).at(0), "Kassenladenbewegungen"));
    EXPECT_TRUE(has(pagesOf(documentOf(1, language::English), paper).at(0), "1 movement"));
    Paper narrow(100, 150);
    for (const Page& page : pagesOf(documentOf(40), narrow))
        for (const Written& one : page)
            EXPECT_LE(one.right, narrow.width() + 1) << one.text.toStdString();
}

int pagesIn(const QString& file) {
    QFile pdf(file);
    EXPECT_TRUE(pdf.open(QIODevice::ReadOnly));
    return static_cast<int>(pdf.readAll().count("/Type /Page\n"));
}

TEST_F(DayDocumentTest, PrintsThePagesAndCopiesAskedForAndTellsOfFailure) {
    const QTemporaryDir folder;
    const auto document = documentOf(200);
    const auto print = [&](const QString& file, const QString& range, int copies) {
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setPageSize(QPageSize(QPageSize::A4));
        printer.setOutputFileName(file);
        printer.setCopyCount(copies);
        if (!range.isEmpty()) {
            printer.setPrintRange(QPrinter::PageRange);
            printer.setPageRanges(QPageRanges::fromString(range));
        }
        printPages(document, printer);
        return pagesIn(file);
    };
    const int whole = print(folder.filePath("all.pdf"), {}, 1);
    EXPECT_GE(whole, 4);
    EXPECT_EQ(print(folder.filePath("some.pdf"), "2-3", 1), 2);
    EXPECT_EQ(print(folder.filePath("twice.pdf"), {}, 2), 2 * whole);
    EXPECT_THROW(print(folder.filePath("no/such/folder.pdf"), {}, 1), Error);
    EXPECT_THROW(print(folder.filePath("none.pdf"), "90", 1), Error) << "there is no such page";
}

} // namespace
} // namespace kova
