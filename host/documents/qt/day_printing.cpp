#include "documents/qt/day_printing.h"

#include "base/error.h"
#include "demonstration/texts.h"
#include "documents/qt/day_document.h"
#include "documents/qt/print_preview.h"

#include <QApplication>
#include <QDialog>
#include <QPageRanges>
#include <QPainter>
#include <QPointer>
#include <QPrinter>
#include <QScreen>
#include <QTimer>
#include <QWindow>

#include <algorithm>
#include <vector>

namespace kova {
namespace {

constexpr std::int32_t DeviceFault = 68; ///< the number of a device that is not available
const QMarginsF Margins(16, 14, 16, 12); ///< millimetres

void setUp(QPrinter& printer, const DayDocument& document) {
    printer.setPageSize(QPageSize(document.regional.name == "en-US" ? QPageSize::Letter : QPageSize::A4));
    printer.setPageMargins(Margins, QPageLayout::Millimeter);
    printer.setDocName(document.title().replace('/', '-')); // also proposed as a file's name
}

/// The dialog stands above the window in use, which it blocks, and gives way to it when it is done.
int runInFront(QDialog& dialog) {
    const QPointer<QWidget> below = QApplication::activeWindow();
    dialog.setAttribute(Qt::WA_QuitOnClose, false);
    dialog.setWindowModality(Qt::ApplicationModal);
    dialog.winId(); // makes the native window, so that it can be told which one it stands in front of
    if (below)
        dialog.windowHandle()->setTransientParent(below->window()->windowHandle());
    QTimer::singleShot(0, &dialog, [&dialog] {
        if (QGuiApplication::platformName() != "offscreen") // which would complain
            dialog.raise();
        dialog.activateWindow();
    });
    const int result = dialog.exec();
    if (below)
        below->activateWindow();
    return result;
}

/// In the order of printing, copies included.
std::vector<int> wantedPages(const QPrinter& printer, int count) {
    const bool all = printer.printRange() != QPrinter::PageRange || printer.pageRanges().isEmpty();
    std::vector<int> pages;
    for (int copies = printer.supportsMultipleCopies() ? 1 : printer.copyCount(); copies > 0; --copies)
        for (int page = 1; page <= count; ++page)
            if (all || printer.pageRanges().contains(page))
                pages.push_back(page - 1);
    if (printer.pageOrder() == QPrinter::LastPageFirst)
        std::ranges::reverse(pages);
    return pages;
}

/// Of the dialog that asked; light where that is no longer there.
look::WindowStyle styleOf(double scale) {
    return look::styleInForce().value_or(look::windowStyle(palette::Paper, {scale, scale}));
}

} // namespace

void printPages(const DayDocument& document, QPrinter& printer) {
    DayPages pages(document, printer);
    const std::vector<int> wanted = wantedPages(printer, pages.count());
    QPainter painter;
    bool taken = !wanted.empty() && painter.begin(&printer);
    for (std::size_t i = 0; taken && i < wanted.size(); ++i) {
        taken = i == 0 || printer.newPage();
        if (taken)
            pages.paint(painter, wanted[i]);
    }
    taken = taken && painter.end() && printer.printerState() != QPrinter::Error;
    if (!taken)
        throw Error(DeviceFault, caption(Caption::PrinterFault, document.languageId).toStdString());
}

void printWithDialog(const DayDocument& document, double scale) {
    QPrinter printer(QPrinter::HighResolution);
    setUp(printer, document);
    PrintWindow window(document, printer, styleOf(scale));
    if (runInFront(window) == QDialog::Accepted)
        printPages(document, printer);
}

void showPreview(const DayDocument& document, double scale) {
    QPrinter printer(QPrinter::HighResolution);
    setUp(printer, document);
    const look::WindowStyle style = styleOf(scale);
    const auto print = [&] {
        PrintWindow choice(document, printer, style);
        if (runInFront(choice) == QDialog::Accepted)
            printPages(document, printer);
    };
    PreviewWindow window(
        document, printer, style, [&](QPrinter& target) { printPages(document, target); }, print);
    if (const QWidget* const below = QApplication::activeWindow())
        window.setGeometry(below->screen()->availableGeometry());
    window.setWindowState(Qt::WindowMaximized);
    runInFront(window);
    window.rethrow();
}

} // namespace kova
