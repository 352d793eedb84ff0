#include "demonstration/look.h"

#include "library/library.h"

#include <QSize>

#include <algorithm>
#include <cmath>
#include <utility>

namespace kova::host_look {

const QColor Ink(16, 42, 67);
const QColor Muted(88, 100, 114);
const QColor Surface(255, 255, 255);
const QColor Ground(236, 240, 244);
const QColor Line(203, 211, 220);
const QColor Accent(15, 98, 172);
const QColor Incoming(20, 108, 67);
const QColor Outgoing(160, 70, 10);
const QColor Failure(176, 32, 36);

namespace {

constexpr double DesignTextSize = 14;
constexpr int LongestLength = 110; // in the sheet below
constexpr double DesignWidth = 1024;
constexpr double DesignHeight = 736; // what a title bar leaves of 768

// @name stands for a colour, [number] for a length that grows with the window.
constexpr const char* Sheet = R"(
* { color: @ink; font-family: "@family"; }
#Demonstration { background: @ground; }
#Header { background: @ink; }
#Header QLabel { color: white; }
#Title { font-size: [21]px; font-weight: bold; }
#Subtitle { font-size: [13]px; color: #c3ccd6; }
#Card { background: white; border: [1]px solid @line; border-radius: [8]px; }
#Choices, #ChoicesPage { background: white; border: none; }
#CardTitle { font-size: [15]px; font-weight: bold; }
#FieldTitle { font-size: [12]px; color: @muted; padding-top: [4]px; }
#Introduction { background: #dbe8f4; border: none; border-bottom: [1]px solid @line; }
#Introduction QLabel { font-size: [16]px; }
#Understood { background: @accent; color: white; border: none; border-radius: [6]px; font-size: [15]px;
    font-weight: bold; min-height: [48]px; padding: 0 [16]px; }
#Understood:focus { border: [2]px solid #ffd666; }
#Empty { font-size: [14]px; color: @muted; }
#Primary { background: @accent; color: white; border: none; border-radius: [10]px; font-size: [24]px;
    font-weight: bold; padding: 0 [12]px; }
#Primary:pressed { background: #0b4a83; }
#Primary:focus { border: [3]px solid #ffd666; }
#Segment { background: #f4f6f8; border: [1]px solid @line; font-size: [15]px; padding: 0 [4]px;
    border-radius: [6]px; }
#Segment:checked { background: @accent; border-color: @accent; color: white; font-weight: bold; }
#Segment:focus { border: [2]px solid #e0a800; }
#LanguageButtons { background: @ink; }
#LanguageSegment { background: @ink; color: white; border: [1]px solid #6b7f94; font-size: [14]px;
    border-radius: [6]px; min-height: [44]px; padding: 0 [12]px; }
#LanguageSegment:checked { background: white; color: @ink; }
#LanguageSegment:focus { border: [2]px solid #ffd666; }
QComboBox, QLineEdit { font-size: [15]px; }
QLineEdit { background: #f4f6f8; border: [1]px solid @line; border-radius: [6]px; padding: 0 [8]px;
    selection-background-color: @accent; }
QLineEdit:focus { border: [2]px solid @accent; }
QComboBox { combobox-popup: 0; }
QComboBox QListView { background: white; border: [1]px solid @line; outline: 0; }
QComboBox QListView::item { background: white; min-height: [44]px; padding: 0 [8]px; }
QComboBox QListView::item:selected { background: @accent; color: white; }
#Banner { background: @failure; color: white; font-size: [16]px; font-weight: bold; border: none;
    padding: [10]px [16]px; text-align: left; }
QListView, QTableView { background: white; border: none; outline: 0; font-size: [13]px; }
QTableView { alternate-background-color: #f4f7fa; selection-background-color: #dbe8f4;
    selection-color: @ink; }
QTableView::item:selected { background: #dbe8f4; color: @ink; border: none; }
QHeaderView { background: white; border: none; }
QHeaderView::section { background: white; color: @muted; border: none; border-bottom: [2]px solid @line;
    padding: 0 3px; font-size: [12]px; font-weight: bold; }
QScrollArea { border: none; }
QMessageBox { background: white; }
QMessageBox QLabel { font-size: [16]px; }
QMessageBox #Primary { font-size: [16]px; border-radius: [6]px; min-width: [110]px; min-height: [44]px; }
QScrollBar:vertical { background: transparent; width: [14]px; margin: 0; }
QScrollBar::handle:vertical { background: #b4bfca; border-radius: [5]px; min-height: [40]px;
    margin: [2]px; }
QScrollBar::add-line, QScrollBar::sub-line { height: 0; width: 0; }
QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }
)";

} // namespace

double scaleFor(const QSize& window) {
    return std::max(1.0, std::min(window.width() / DesignWidth, window.height() / DesignHeight));
}

int pixels(double design, double scale) {
    return static_cast<int>(std::lround(design * scale));
}

QFont font(double designPixels, double scale, QFont::Weight weight) {
    QFont result(QString::fromStdString(fontFamily()));
    result.setPixelSize(std::max(8, pixels(designPixels, scale)));
    result.setWeight(weight);
    return result;
}

QString styleSheet(double scale) {
    QString sheet = Sheet;
    sheet.replace("@family", font(DesignTextSize, scale).family());
    for (const auto& [name, color] : {std::pair{"@ink", Ink},
                                      {"@muted", Muted},
                                      {"@ground", Ground},
                                      {"@line", Line},
                                      {"@accent", Accent},
                                      {"@failure", Failure}})
        sheet.replace(name, color.name());
    for (int length = 1; length <= LongestLength; ++length)
        sheet.replace(QString("[%1]").arg(length), QString::number(std::max(1, pixels(length, scale))));
    return sheet;
}

} // namespace kova::host_look
