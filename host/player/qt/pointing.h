#pragma once
#include <QPointF>

#include <optional>
#include <string>

class QWidget;

namespace kova {

class Control;
class QtUserInterface;

/// Where on the screen a finger goes.
struct TouchPoint {
    QWidget* widget;
    QPointF point;
};

/// Where to touch a control, or the part of it with that key: a button's key, a keypad's text, a keyboard's
/// character in either letter case, a tab's number. A button that is out of sight is brought into sight.
/// Nothing when no such part is drawn.
std::optional<TouchPoint> touchPoint(const QtUserInterface& userInterface, Control& control,
                                     const std::optional<std::string>& part = {});

} // namespace kova
