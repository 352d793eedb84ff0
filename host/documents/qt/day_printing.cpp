#include "documents/qt/day_printing.h"

#include "base/error.h"
#include "demonstration/look.h"
#include "demonstration/texts.h"
#include "documents/qt/day_document.h"
#include "services/texts.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QPageRanges>
#include <QPainter>
#include <QPointer>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QToolBar>
#include <QTranslator>
#include <QWindow>

#include <algorithm>
#include <exception>
#include <vector>

namespace kova {
namespace {

constexpr std::int32_t DeviceFault = 68; ///< the number of a device that is not available
const QMarginsF Margins(16, 14, 16, 12); ///< millimetres

/// Qt's own texts in the document's language, where they are installed; the translator's destructor removes
/// them.
void translateToolkit(QTranslator& translator, std::int32_t languageId) {
    if (languageId == language::English)
        return;
    const QString name = languageId == language::German ? "qtbase_de" : "qtbase_it";
    if (translator.load(name, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&translator);
}

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

void fitForFingers(QPrintPreviewDialog& dialog, const DayDocument& document, double scale) {
    auto* const tools = dialog.findChild<QToolBar*>();
    if (tools == nullptr)
        return;
    tools->setIconSize(QSize(host_look::pixels(26, scale), host_look::pixels(26, scale)));
    tools->setStyleSheet(
        QString("QToolButton { min-width: %1px; min-height: %1px; }").arg(host_look::pixels(40, scale)));
    auto* const close = new QPushButton(caption(Caption::ClosePreview, document.languageId));
    close->setObjectName("Primary");
    close->setAutoDefault(false);
    close->setStyleSheet(host_look::styleSheet(scale) +
                         QString("#Primary { font-size: %1px; }").arg(host_look::pixels(16, scale)));
    QObject::connect(close, &QPushButton::clicked, &dialog, &QDialog::reject);
    auto* const space = new QWidget;
    space->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    tools->addWidget(space);
    tools->addWidget(close);
    close->setMinimumSize(host_look::pixels(120, scale), host_look::pixels(44, scale));
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
    QTranslator translator;
    translateToolkit(translator, document.languageId);
    QPrinter printer(QPrinter::HighResolution);
    setUp(printer, document);
    QPrintDialog dialog(&printer);
    dialog.setObjectName("DayPrintDialog");
    dialog.setWindowTitle(document.title());
    dialog.setFont(host_look::font(15, scale));
    dialog.setStyleSheet(QString("QPushButton, QToolButton, QComboBox, QLineEdit { min-height: %1px; }"
                                 "QPushButton { min-width: %2px; }")
                             .arg(host_look::pixels(40, scale))
                             .arg(host_look::pixels(100, scale)));
    if (runInFront(dialog) == QDialog::Accepted)
        printPages(document, printer);
}

void showPreview(const DayDocument& document, double scale) {
    QTranslator translator;
    translateToolkit(translator, document.languageId);
    QPrinter printer(QPrinter::HighResolution);
    setUp(printer, document);
    QPrintPreviewDialog dialog(&printer, nullptr, Qt::Window);
    dialog.setObjectName("DayPreview");
    dialog.setWindowTitle(document.title());
    fitForFingers(dialog, document, scale);
    if (const QWidget* const below = QApplication::activeWindow())
        dialog.setGeometry(below->screen()->availableGeometry());
    dialog.setWindowState(Qt::WindowMaximized);
    std::exception_ptr failure; // exceptions cannot pass through Qt
    QObject::connect(&dialog, &QPrintPreviewDialog::paintRequested, [&](QPrinter* target) {
        try {
            printPages(document, *target);
        } catch (...) {
            failure = std::current_exception();
        }
    });
    runInFront(dialog);
    if (failure)
        std::rethrow_exception(failure);
}

} // namespace kova
