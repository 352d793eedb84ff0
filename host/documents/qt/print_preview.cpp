#include "documents/qt/print_preview.h"

#include "adapters/qt/save_window.h"
#include "demonstration/texts.h"
#include "documents/qt/day_document.h"

#include <QBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QPrinterInfo>
#include <QPushButton>
#include <QToolButton>

#include <algorithm>

namespace kova {
namespace {

constexpr double WindowWidth = 520, WindowHeight = 400; // design pixels
constexpr int MostCopies = 99;

QToolButton* makeTool(const QString& sign, const QString& name) {
    auto* const tool = new QToolButton;
    tool->setText(sign);
    tool->setAccessibleName(name);
    tool->setToolTip(name);
    return tool;
}

} // namespace

QLabel* makeHeading(const DayDocument& document) {
    auto* const heading = new QLabel(document.title() + '\n' + document.scope());
    heading->setObjectName("Heading");
    heading->setTextFormat(Qt::PlainText);
    heading->setWordWrap(true);
    return heading;
}

PrintWindow::PrintWindow(const DayDocument& document, QPrinter& printer, const look::WindowStyle& style)
    : printer_(printer), style_(style), languageId_(document.languageId), title_(document.title()),
      printers_(new QListWidget), number_(new QLabel) {
    const auto say = [&](Caption which) { return caption(which, languageId_); };
    setObjectName("DayPrintDialog");
    setWindowTitle(title_);
    setStyleSheet(look::windowSheet(style));
    for (const QString& name : QPrinterInfo::availablePrinterNames()) {
        printers_->addItem(name);
        if (name == QPrinterInfo::defaultPrinterName())
            printers_->setCurrentRow(printers_->count() - 1);
    }
    printers_->addItem(say(Caption::SaveAsPdf));
    if (printers_->currentRow() < 0)
        printers_->setCurrentRow(0);
    printers_->setAccessibleName(say(Caption::Print));
    auto* const print = new QPushButton(say(Caption::Print));
    print->setDefault(true);
    auto* const cancel = new QPushButton(say(Caption::Cancel));
    cancel->setAutoDefault(false);
    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(makeCopies(document));
    buttons->addStretch();
    buttons->addWidget(print);
    buttons->addWidget(cancel);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(makeHeading(document));
    if (printers_->count() == 1)
        layout->addWidget(new QLabel(say(Caption::NoPrinter)));
    layout->addWidget(printers_, 1);
    layout->addLayout(buttons);
    connect(print, &QPushButton::clicked, this, [this] { accept(); });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    resize((QSizeF(WindowWidth, WindowHeight) * style.scale.smaller()).toSize());
}

QWidget* PrintWindow::makeCopies(const DayDocument& document) {
    const auto say = [&](Caption which) { return caption(which, document.languageId); };
    auto* const row = new QWidget;
    auto* const fewer = makeTool(QString::fromUtf8("−"), say(Caption::FewerCopies));
    auto* const more = makeTool("+", say(Caption::MoreCopies));
    auto* const layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(new QLabel(say(Caption::Copies)));
    layout->addWidget(fewer);
    layout->addWidget(number_);
    layout->addWidget(more);
    connect(fewer, &QToolButton::clicked, this, [this] { count(-1); });
    connect(more, &QToolButton::clicked, this, [this] { count(1); });
    count(0);
    return row;
}

void PrintWindow::count(int more) {
    copies_ = std::clamp(copies_ + more, 1, MostCopies);
    number_->setText(QString::number(copies_));
}

void PrintWindow::accept() {
    const int row = printers_->currentRow();
    if (row < 0 || row == printers_->count() - 1)
        return askForFile();
    printer_.setPrinterName(printers_->item(row)->text());
    printer_.setCopyCount(copies_);
    QDialog::accept();
}

void PrintWindow::askForFile() {
    Wording words;
    words.setLanguage(languageId_);
    auto* const window = new SaveWindow(this, QString(title_).replace('/', '-') + ".pdf", words, style_);
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->chosen = [this](const QString& file) { takeFile(file); };
    window->open();
}

void PrintWindow::takeFile(const QString& file) {
    printer_.setOutputFormat(QPrinter::PdfFormat);
    printer_.setOutputFileName(file);
    printer_.setCopyCount(copies_);
    QDialog::accept();
}

PreviewWindow::PreviewWindow(const DayDocument& document, QPrinter& printer, const look::WindowStyle& style,
                             std::function<void(QPrinter&)> paint, std::function<void()> print)
    : QDialog(nullptr, Qt::Window), languageId_(document.languageId), tools_(new QWidget),
      pages_(new QPrintPreviewWidget(&printer)), page_(new QLabel) {
    const auto say = [&](Caption which) { return caption(which, languageId_); };
    setObjectName("DayPreview");
    setWindowTitle(document.title());
    setStyleSheet(look::windowSheet(style));
    auto* const row = new QHBoxLayout(tools_);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(makeHeading(document), 1);
    addTool(QString::fromUtf8("‹"), say(Caption::PreviousPage), [this] { turn(-1); });
    row->addWidget(page_);
    addTool(QString::fromUtf8("›"), say(Caption::NextPage), [this] { turn(1); });
    addTool(QString::fromUtf8("−"), say(Caption::Shrink), [this] { pages_->zoomOut(); });
    addTool("+", say(Caption::Enlarge), [this] { pages_->zoomIn(); });
    auto* const printing = new QPushButton(say(Caption::Print));
    auto* const close = new QPushButton(say(Caption::ClosePreview));
    close->setDefault(true);
    printing->setAutoDefault(false);
    row->addWidget(printing);
    row->addWidget(close);
    pages_->setZoomMode(QPrintPreviewWidget::FitToWidth);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(tools_);
    layout->addWidget(pages_, 1);
    connect(pages_, &QPrintPreviewWidget::paintRequested, this,
            [this, paint = std::move(paint)](QPrinter* target) { guarded([&] { paint(*target); }); });
    connect(pages_, &QPrintPreviewWidget::previewChanged, this, [this] { showPage(); });
    connect(printing, &QPushButton::clicked, this, [this, print = std::move(print)] { guarded(print); });
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    close->setFocus();
}

QToolButton* PreviewWindow::addTool(const QString& sign, const QString& name, std::function<void()> clicked) {
    auto* const tool = makeTool(sign, name);
    connect(tool, &QToolButton::clicked, this, std::move(clicked));
    tools_->layout()->addWidget(tool);
    return tool;
}

void PreviewWindow::guarded(const std::function<void()>& step) {
    try {
        step();
    } catch (...) {
        failure_ = std::current_exception();
        QMetaObject::invokeMethod(this, &QDialog::reject, Qt::QueuedConnection);
    }
}

void PreviewWindow::rethrow() const {
    if (failure_)
        std::rethrow_exception(failure_);
}

void PreviewWindow::turn(int pages) {
    pages_->setCurrentPage(std::clamp(pages_->currentPage() + pages, 1, std::max(1, pages_->pageCount())));
    showPage();
}

void PreviewWindow::showPage() {
    page_->setText(caption(Caption::PageOf, languageId_)
                       .arg(std::max(1, pages_->currentPage()))
                       .arg(std::max(1, pages_->pageCount())));
}

} // namespace kova
