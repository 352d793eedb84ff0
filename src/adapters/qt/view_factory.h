#pragma once

class QWidget;

namespace kova {

class Control;
class ControlView;
class WindowFrame;

/// Makes the view of a control inside `parent`, whose widget then owns it.
ControlView* makeView(Control& control, WindowFrame& frame, QWidget& parent);

} // namespace kova
