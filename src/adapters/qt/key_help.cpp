#include "adapters/qt/key_help.h"

#include "adapters/qt/window_frame.h"
#include "screen/physical_keys.h"

namespace kova {
namespace {

const QString ObjectName = "KeyHelp";

KeyHelp* helpOf(const WindowFrame& frame) {
    return static_cast<KeyHelp*>(frame.findChild<QLabel*>(ObjectName, Qt::FindDirectChildrenOnly));
}

QString cells(const std::string& key, const std::string& meaning) {
    return QString("<td><b>%1</b>&nbsp;&nbsp;&nbsp;</td><td>%2&nbsp;&nbsp;&nbsp;</td>")
        .arg(QString::fromStdString(key).toHtmlEscaped(), QString::fromStdString(meaning).toHtmlEscaped());
}

QString helpFor(const WindowFrame& frame) {
    QString lines;
    for (const KeyHelpLine& line : keyHelp(*frame.model(), frame.words())) {
        lines += "<tr>" + cells(line.key, line.meaning);
        if (!line.shiftedKey.empty())
            lines += cells(line.shiftedKey, line.shiftedMeaning);
        lines += "</tr>";
    }
    return "<table cellspacing='4'>" + lines + "</table>";
}

} // namespace

KeyHelp::KeyHelp(WindowFrame& frame) : QLabel(&frame) {
    setObjectName(ObjectName);
    setFocusPolicy(Qt::NoFocus);
    setAlignment(Qt::AlignCenter);
    setTextFormat(Qt::RichText);
    QFont font = look::font({.points = 13}, frame.scale());
    const QString text = helpFor(frame);
    setText(text);
    setStyleSheet(
        QString("background: %1; color: %2; border: 2px solid %3; border-radius: %4px; padding: 12px;")
            .arg(palette::Stripe.name(), palette::Ink.name(), palette::Blue.name())
            .arg(look::BoardRadius));
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
