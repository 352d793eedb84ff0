#pragma once
#include "adapters/qt/window_sheet.h"

#include <QDialog>

#include <exception>
#include <functional>

class QLabel;
class QListWidget;
class QPrinter;
class QPrintPreviewWidget;
class QPushButton;
class QToolButton;

namespace kova {

struct DayDocument;

/// What the windows below say on top: the document, and which till and operators it takes in.
QLabel* makeHeading(const DayDocument& document);

/// Asks for a printer, or a file, and the number of copies. When it was accepted, `printer` is set to them.
class PrintWindow final : public QDialog {
  public:
    PrintWindow(const DayDocument& document, QPrinter& printer, const look::WindowStyle& style);

  private:
    QWidget* makeCopies(const DayDocument& document);
    void accept() override;
    void askForFile();
    void takeFile(const QString& file);
    void count(int more);

    QPrinter& printer_;
    look::WindowStyle style_;
    std::int32_t languageId_;
    QString title_;
    int copies_ = 1;
    // Owned by this widget.
    QListWidget* printers_; ///< and the file last
    QLabel* number_;
};

/// Shows the pages, one below the other.
class PreviewWindow final : public QDialog {
  public:
    /// `paint` prints the document; what it throws closes the window. `print` is for the button.
    PreviewWindow(const DayDocument& document, QPrinter& printer, const look::WindowStyle& style,
                  std::function<void(QPrinter&)> paint, std::function<void()> print);
    /// Throws what the two functions threw.
    void rethrow() const;

  private:
    void guarded(const std::function<void()>& step);
    void turn(int pages);
    void showPage();
    QToolButton* addTool(const QString& sign, const QString& name, std::function<void()> clicked);

    std::int32_t languageId_;
    std::exception_ptr failure_; ///< exceptions cannot pass through Qt
    // Owned by this widget.
    QWidget* tools_;
    QPrintPreviewWidget* pages_;
    QLabel* page_;
};

} // namespace kova
