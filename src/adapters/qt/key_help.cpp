#include "adapters/qt/key_help.h"

#include "adapters/qt/spoken_name.h"
#include "adapters/qt/window_frame.h"
#include "widgets/button_grid.h"
#include "widgets/captioned_controls.h"
#include "widgets/control.h"
#include "widgets/keyboards.h"
#include "widgets/text_box.h"

#include <algorithm>

namespace kova {
namespace {

const QString ObjectName = "KeyHelp";

KeyHelp* helpOf(const WindowFrame& frame) {
    return static_cast<KeyHelp*>(frame.findChild<QLabel*>(ObjectName, Qt::FindDirectChildrenOnly));
}

QString cells(const QString& key, const QString& meaning) {
    return QString("<td><b>%1</b>&nbsp;&nbsp;&nbsp;</td><td>%2&nbsp;&nbsp;&nbsp;</td>")
        .arg(key.toHtmlEscaped(), meaning.toHtmlEscaped());
}

QString line(const QString& key, const QString& meaning) {
    return "<tr>" + cells(key, meaning) + "</tr>";
}

/// What the arrow keys choose in, and what the decimal key enters.
class PartsOfWindow : public ControlVisitor {
  public:
    void visit(NumericKeypad& keypad) override { decimalMark = QString::fromStdString(keypad.decimalMark()); }
    void visit(ButtonGrid& grid) override {
        if (isReachable(&grid) && !grid.buttons().empty())
            names << QString::fromStdString(spokenNameOf(grid));
    }
    QStringList names;
    QString decimalMark = ",";
};

/// A line for each key, with and without Shift.
QString functionKeys(const ButtonGrid& grid) {
    constexpr std::size_t KeysOfARow = 11;
    const auto& buttons = grid.buttons();
    QString lines;
    for (std::size_t i = 0; i < std::min(buttons.size(), KeysOfARow); ++i) {
        const QString key = QString("F%1").arg(i + 2);
        lines += "<tr>" + cells(key, QString::fromStdString(buttons[i].caption));
        if (i + KeysOfARow < buttons.size())
            lines += cells("\u21E7 " + key, QString::fromStdString(buttons[i + KeysOfARow].caption));
        lines += "</tr>";
    }
    return lines;
}

QString helpFor(const WindowFrame& frame) {
    const KeyTargets& targets = frame.model()->keyTargets();
    PartsOfWindow parts;
    for (Control* control : frame.model()->controls())
        control->accept(parts);
    QString lines = line("F1", frame.words(Word::Keys));
    if (isReachable(targets.entry))
        lines +=
            line("0 \u2026 9  " + parts.decimalMark, QString::fromStdString(spokenNameOf(*targets.entry)));
    if (isReachable(targets.confirm))
        lines += line("\u21B5", QString::fromStdString(targets.confirm->caption()));
    for (const PushButton* button : targets.close)
        if (isReachable(button)) {
            lines += line("Esc", QString::fromStdString(button->caption()));
            break;
        }
    lines += line("\u21E5", frame.words(Word::NextField));
    if (!parts.names.isEmpty())
        lines += line("\u2190 \u2191 \u2193 \u2192  \u2423", parts.names.join(", "));
    if (isReachable(targets.functionKeys))
        lines += functionKeys(*targets.functionKeys);
    return "<table cellspacing='4'>" + lines + "</table>";
}

} // namespace

KeyHelp::KeyHelp(WindowFrame& frame) : QLabel(&frame) {
    setObjectName(ObjectName);
    setFocusPolicy(Qt::NoFocus);
    setAlignment(Qt::AlignCenter);
    setTextFormat(Qt::RichText);
    QFont font = look::font({"Tahoma", 13, false}, frame.scale());
    const QString text = helpFor(frame);
    setText(text);
    setStyleSheet("background: #f7f9fb; color: #14202c; border: 2px solid #0f62ac; border-radius: 6px;"
                  " padding: 12px;");
    do { // many activities make a long list
        setFont(font);
        font.setPixelSize(font.pixelSize() - 1);
    } while ((sizeHint().height() > frame.height() || sizeHint().width() > frame.width()) &&
             font.pixelSize() > 8);
    const QSize size = sizeHint().boundedTo(frame.size());
    setGeometry(
        QRect(QPoint((frame.width() - size.width()) / 2, (frame.height() - size.height()) / 2), size));
}

void KeyHelp::showOn(WindowFrame& frame) {
    hideOn(frame);
    auto* const help = new KeyHelp(frame);
    help->show();
    help->raise();
}

void KeyHelp::hideOn(WindowFrame& frame) {
    delete helpOf(frame);
}

bool KeyHelp::isShownOn(const WindowFrame& frame) {
    return helpOf(frame) != nullptr;
}

void KeyHelp::mousePressEvent(QMouseEvent*) {
    setObjectName({});
    hide();
    deleteLater();
}

} // namespace kova
