#pragma once
#include <QEvent>
#include <QPointF>
#include <QWidget>

#include <string>

namespace kova {

/// A finger at that point of the widget; `held` are the buttons after the event.
void sendMouse(QWidget& widget, QEvent::Type type, const QPointF& point, Qt::MouseButtons held);

/// Presses and releases the key of a character, whatever becomes of the widget meanwhile.
void typeInto(QWidget& target, char32_t character);

/// What the key of a character is called on the on-screen keyboard.
std::string keyNamed(const std::string& character);

} // namespace kova
