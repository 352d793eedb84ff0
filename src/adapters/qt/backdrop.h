#pragma once
#include <QColor>

namespace kova {

class Control;

/// What is painted behind a control: the background of the frame, page or window that it stands on.
QColor backdropOf(const Control& control);

} // namespace kova
