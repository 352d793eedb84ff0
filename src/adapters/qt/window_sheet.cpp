#include "adapters/qt/window_sheet.h"

#include "adapters/qt/window_frame.h"

#include <QApplication>

#include <algorithm>

namespace kova::look {
namespace {

// @name stands for a colour, [number] for design pixels.
constexpr const char* Sheet = R"(
* { font-family: "@family"; font-size: [16]px; color: @ink; }
QDialog, QMainWindow, QPrintPreviewDialog, QMessageBox { background: @background; }
QLabel { background: transparent; }
QPushButton, QToolButton { background: @face; color: @text; border: [1]px solid @border;
    border-bottom: [2]px solid @border; border-radius: [5]px; min-height: [41]px; padding: 0 [10]px;
    outline: 0; }
QPushButton { min-width: [110]px; }
QToolButton { min-width: [34]px; padding: 0 [4]px; font-size: [24]px; }
QPushButton:default, QPushButton#Primary { background: @accent; color: @onAccent; border-color: @accent;
    font-weight: bold; }
QPushButton:focus, QToolButton:focus, QListView:focus { border: [2]px solid @focus; }
QPushButton:pressed, QToolButton:pressed { background: @pressed; color: @onPressed; }
#Question, #Heading { font-weight: bold; }
QPushButton:disabled, QToolButton:disabled { color: @faded; border-style: dashed; }
QLineEdit { background: white; color: black; border: [1]px solid @border; border-radius: [4]px;
    min-height: [41]px; padding: 0 [8]px; selection-background-color: @blue; selection-color: white; }
QLineEdit:focus { border: [2]px solid @focus; }
QListView { background: @face; color: @text; border: [1]px solid @border; border-radius: [4]px; outline: 0; }
QListView::item { min-height: [43]px; padding: 0 [8]px; color: @text; }
QListView::item:selected { background: @chosen; color: @onChosen; border-left: [5]px solid @focus; }
QScrollBar:vertical { background: transparent; width: [24]px; margin: 0; }
QScrollBar::handle:vertical { background: @border; border-radius: [5]px; min-height: [43]px; margin: [4]px; }
QScrollBar::add-line, QScrollBar::sub-line { height: 0; width: 0; }
QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }
)";
constexpr int LongestLength = 110; // in the sheet
constexpr double Darker = 0.25;    // than a dark dialog, which white texts on it need

} // namespace

WindowStyle windowStyle(const QColor& dialog, const Scale& scale) {
    return {isDark(dialog) ? mixed(dialog, Qt::black, Darker) : palette::Header, scale};
}

std::optional<WindowStyle> styleInForce() {
    for (QWidget* one = QApplication::activeWindow(); one != nullptr; one = one->parentWidget())
        if (const auto* const frame = dynamic_cast<WindowFrame*>(one); frame && frame->model() != nullptr)
            return windowStyle(toQt(frame->model()->backColor()), frame->scale());
    return std::nullopt;
}

QString windowSheet(const WindowStyle& style) {
    const bool dark = isDark(style.background);
    const QColor face = dark ? toQt(colors::DarkFace).darker(125) : palette::Key;
    const QColor accent = accentOn(style.background);
    const QColor pressed = filling({.color = face, .down = true});
    const QColor chosen = dark ? mixed(face, Qt::black, 0.4) : palette::Chosen;
    QString sheet = Sheet;
    sheet.replace("@family", font({}, {}).family());
    const std::pair<const char*, QColor> colours[] = {{"@background", style.background},
                                                      {"@face", face},
                                                      {"@text", inkOn(face)},
                                                      {"@border", borderOn(face, style.background)},
                                                      {"@onAccent", inkOn(accent)},
                                                      {"@accent", accent},
                                                      {"@focus", accent},
                                                      {"@onPressed", inkOn(pressed)},
                                                      {"@pressed", pressed},
                                                      {"@onChosen", inkOn(chosen)},
                                                      {"@chosen", chosen},
                                                      {"@faded", faded(inkOn(face), face)},
                                                      {"@blue", palette::Blue},
                                                      {"@ink", inkOn(style.background)}};
    for (const auto& [name, color] : colours)
        sheet.replace(name, color.name());
    for (int length = 1; length <= LongestLength; ++length)
        sheet.replace(QString("[%1]").arg(length),
                      QString::number(std::max(1, qRound(length * style.scale.smaller()))));
    return sheet;
}

} // namespace kova::look
