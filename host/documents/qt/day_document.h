#pragma once
#include "documents/day_report.h"

#include <QTextDocument>

#include <vector>

class QPainter;
class QTextTable;

namespace kova {

/// What a day's document says: the report, and how to say it.
struct DayDocument {
    DayReport report;
    QString userName; ///< of the user that the report is restricted to
    DateTime printedAt{};
    RegionalSettings regional;
    std::int32_t languageId = 0;

    /// One line, for the dialogs and the job's name.
    [[nodiscard]] QString title() const;
    /// Which till and which operators it takes in, on one line.
    [[nodiscard]] QString scope() const;
};

/// The document on pages of one device: title, movements, sums. Each page repeats the headings of the columns
/// that it goes on with, and has its number.
class DayPages {
  public:
    /// `device` outlives the pages, which fill its whole area.
    DayPages(const DayDocument& document, QPaintDevice& device);
    /// At least 1.
    [[nodiscard]] int count() const { return static_cast<int>(pages_.size()); }
    /// `page` counts from 0.
    void paint(QPainter& painter, int page);

  private:
    /// A piece of the text, from one height to another.
    struct Part {
        double top = 0, bottom = 0;
        [[nodiscard]] double height() const { return bottom - top; }
    };
    struct Page {
        Part headings, body;
    };
    void placeTable(QTextTable& table, bool together);
    void place(const Part& part, const Part& headings);
    [[nodiscard]] double topOf(QTextTable& table, int row) const;

    double scale_; ///< below 1 on paper narrower than A4
    QSizeF paper_; ///< before scaling, like all lengths here
    double line_;  ///< height of the line on top of each page but the first, and of the one below each
    QString header_, footer_;
    QTextDocument text_; ///< all of it, without pages
    std::vector<Page> pages_;
};

} // namespace kova
