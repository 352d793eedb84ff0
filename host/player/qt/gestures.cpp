#include "player/qt/gestures.h"

#include "base/utf8.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>

namespace kova {
namespace {

int keyOf(char32_t character) {
    switch (character) {
    case U'\b':
        return Qt::Key_Backspace;
    case U'\n':
    case U'\r':
        return Qt::Key_Return;
    default:
        break;
    }
    const char32_t upper = upperCase(character);
    const bool latin = upper >= 0x20 && upper <= 0xFF && upper != 0x7F;
    return latin ? static_cast<int>(upper) : static_cast<int>(Qt::Key_unknown); // Qt numbers Latin-1 keys so
}

void sendMouse(QWidget& widget, QEvent::Type type, const QPointF& point, Qt::MouseButtons held) {
    QMouseEvent event(type, point, widget.mapToGlobal(point), Qt::LeftButton, held, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
}

} // namespace

void touchAt(QWidget& widget, const QPointF& point, const std::function<void()>& whileDown) {
    const QPointer<QWidget> touched = &widget;
    sendMouse(widget, QEvent::MouseButtonPress, point, Qt::LeftButton);
    whileDown();
    if (touched)
        sendMouse(*touched, QEvent::MouseButtonRelease, point, Qt::NoButton);
}

void typeInto(QWidget& target, char32_t character) {
    const QPointer<QWidget> widget = &target;
    const QString text = QString::fromUcs4(&character, 1);
    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, keyOf(character), Qt::NoModifier, text);
        if (widget)
            QApplication::sendEvent(widget, &event);
    }
}

std::string keyNamed(const std::string& character) {
    if (character == "\b")
        return "Backspace";
    if (character == "\n")
        return "Enter";
    if (character == " ")
        return "Space";
    const std::u32string letters = fromUtf8(character);
    return letters.size() == 1 ? toUtf8(std::u32string(1, lowerCase(letters.front()))) : character;
}

} // namespace kova
