#include "adapters/qt/key_help.h"

#include "adapters/qt/window_frame.h"
#include "screen/physical_keys.h"

#include <QLabel>

namespace kova {
namespace {

const QString ObjectName = "KeyHelp";

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

class KeyHelp final : public QLabel {
  public:
    explicit KeyHelp(WindowFrame& frame) : QLabel(&frame) {
        setObjectName(ObjectName);
        setFocusPolicy(Qt::NoFocus);
        setAlignment(Qt::AlignCenter);
        setTextFormat(Qt::RichText);
        setText(helpFor(frame));
        setStyleSheet(
            QString("background: %1; color: %2; border: 2px solid %3; border-radius: %4px; padding: 12px;")
                .arg(palette::Stripe.name(), palette::Ink.name(), palette::Blue.name())
                .arg(look::BoardRadius));
        QFont font = look::font({.points = 13}, frame.scale());
        do { // many activities make a long list
            setFont(font);
            font.setPixelSize(font.pixelSize() - 1);
        } while ((sizeHint().height() > frame.height() || sizeHint().width() > frame.width()) &&
                 font.pixelSize() > 8);
        const QSize size = sizeHint().boundedTo(frame.size());
        setGeometry(
            QRect(QPoint((frame.width() - size.width()) / 2, (frame.height() - size.height()) / 2), size));
    }

  protected:
    void mousePressEvent(QMouseEvent*) override {
        setObjectName({}); // no longer found, though it is deleted later
        hide();
        deleteLater();
    }
};

} // namespace

void showKeyHelp(WindowFrame& frame) {
    hideKeyHelp(frame);
    auto* const help = new KeyHelp(frame);
    help->show();
    help->raise();
}

bool hideKeyHelp(const WindowFrame& frame) {
    const QLabel* const help = frame.findChild<QLabel*>(ObjectName, Qt::FindDirectChildrenOnly);
    delete help;
    return help != nullptr;
}

} // namespace kova
