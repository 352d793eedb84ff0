#pragma once
#include <QColor>
#include <QFont>
#include <QLineF>
#include <QPaintDevice>
#include <QRectF>
#include <QString>

#include <vector>

class QPainter;

namespace kova {

/// The lengths and letters of one device. Fonts are in points, so that they come out alike on all.
class PrintMeasure {
  public:
    /// The whole area of the device is the page's; on paper narrower than A4's the letters shrink with it.
    explicit PrintMeasure(QPaintDevice& device);
    [[nodiscard]] double mm(double length) const { return length * perMillimetre_; }
    /// A gap, which shrinks with the letters; of the same millimetres.
    [[nodiscard]] double gap(double length) const { return mm(length) * shrinking_; }
    [[nodiscard]] QFont font(double points, QFont::Weight weight = QFont::Normal) const;
    [[nodiscard]] QRectF page() const { return page_; }
    [[nodiscard]] QPaintDevice& device() const { return device_; }
    [[nodiscard]] double ascent(const QFont& font) const;
    [[nodiscard]] double lineHeight(const QFont& font) const;
    [[nodiscard]] double width(const QString& text, const QFont& font) const;
    /// The text in lines of at most that width, broken between words where that is possible. What the last of
    /// too many lines cannot hold is cut with an ellipsis.
    [[nodiscard]] QStringList wrapped(const QString& text, const QFont& font, double width) const;

  private:
    QPaintDevice& device_;
    QRectF page_;
    double perMillimetre_;
    double shrinking_;
};

/// One page, ready to be painted: pixels of the device that it was measured for.
class PrintPage {
  public:
    enum class Side { Left, Middle, Right };
    /// One line of text, its top left, middle or right at `x`.
    void text(const PrintMeasure& measure, double x, double top, Side side, const QString& text,
              const QFont& font, const QColor& colour);
    void rule(const QLineF& line, double width, const QColor& colour);
    void paint(QPainter& painter) const;

  private:
    struct Text {
        QPointF baseline;
        QString text;
        QFont font;
        QColor colour;
    };
    struct Rule {
        QLineF line;
        double width;
        QColor colour;
    };
    std::vector<Text> texts_;
    std::vector<Rule> rules_;
};

struct PrintColumn {
    QString heading;
    PrintPage::Side side;
    double share; ///< of the width that is left; 0 for a column as wide as its widest text, never wrapped
};

struct PrintRow {
    QStringList cells;
    bool strong = false; ///< set off from the rows above, as a total
};

/// Texts in columns. It knows how high each row is and draws it where it is told to; pages are its user's
/// business.
class PrintTable {
  public:
    /// All rows are given beforehand, as they decide on the columns' widths. `gap` is what stands between
    /// columns, in millimetres.
    PrintTable(const PrintMeasure& measure, double gap, std::vector<PrintColumn> columns,
               std::vector<PrintRow> rows);
    [[nodiscard]] std::size_t rowCount() const { return rows_.size(); }
    [[nodiscard]] double headingHeight() const;
    [[nodiscard]] double rowHeight(std::size_t row) const;
    void putHeading(PrintPage& page, double top) const;
    void putRow(PrintPage& page, double top, std::size_t row) const;

  private:
    void shareWidth(double gap);
    [[nodiscard]] double naturalWidth(std::size_t column) const;
    [[nodiscard]] const QFont& fontOf(const PrintRow& row) const { return row.strong ? strong_ : plain_; }
    void putCell(PrintPage& page, double top, std::size_t column, const QString& text, const QFont& font,
                 const QColor& colour) const;

    const PrintMeasure& measure_;
    std::vector<PrintColumn> columns_;
    std::vector<PrintRow> rows_;
    std::vector<double> left_, width_; ///< of each column, without the gap
    QFont plain_, strong_, heading_;
};

} // namespace kova
