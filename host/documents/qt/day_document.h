#pragma once
#include "documents/day_report.h"

#include <QPaintDevice>
#include <QString>

#include <memory>
#include <vector>

class QPainter;

namespace kova {

class PrintMeasure;
class PrintPage;
class PrintTable;
struct PrintRow;

/// What a day's document says: the report, and how to say it.
struct DayDocument {
    DayReport report;
    QString userName; ///< of the user that the report is restricted to
    DateTime printedAt{};
    RegionalSettings regional;
    std::int32_t languageId = 0;

    /// One line, for the dialogs and the job's name.
    [[nodiscard]] QString title() const;
};

/// The document on pages of one device: heading, movements, sums. Each page repeats the headings that it goes
/// on under, and has its number.
class DayPages {
  public:
    /// `document` and `device` outlive the pages, which fill the whole area of the device.
    DayPages(const DayDocument& document, QPaintDevice& device);
    DayPages(const DayPages&) = delete;
    DayPages& operator=(const DayPages&) = delete;
    ~DayPages();
    /// At least 1.
    [[nodiscard]] int count() const;
    /// `page` counts from 0.
    void paint(QPainter& painter, int page) const;

  private:
    void beginPage();
    void putTitle();
    void putReminder();
    void putMovements();
    void putSums();
    void putTable(const PrintTable& table);
    void putFooters();
    [[nodiscard]] bool fits(double height) const;

    const DayDocument& document_;
    std::unique_ptr<PrintMeasure> measure_;
    std::vector<PrintPage> pages_;
    double y_ = 0;      ///< where the page goes on
    double bottom_ = 0; ///< where its footer begins
};

} // namespace kova
