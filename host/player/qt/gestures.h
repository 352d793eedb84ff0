#pragma once
#include <QPointF>
#include <QWidget>

#include <functional>
#include <string>

namespace kova {

/// A finger that goes down and up at that point of the widget, which may be gone by then.
void touchAt(
    QWidget& widget, const QPointF& point, const std::function<void()>& whileDown = [] {});

/// Presses and releases the key of a character, whatever becomes of the widget meanwhile.
void typeInto(QWidget& target, char32_t character);

/// What the key of a character is called on the on-screen keyboard.
std::string keyNamed(const std::string& character);

} // namespace kova
