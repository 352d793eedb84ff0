#pragma once

class QAccessibleInterface;

namespace kova {

class ButtonGridView;

/// Tells assistive technology that the grid consists of buttons, which it can name and touch.
QAccessibleInterface* makeAccessibleButtonGrid(ButtonGridView& grid);

} // namespace kova
