#pragma once
#include <vector>

class QAccessibleInterface;

namespace kova {

class ButtonGridView;

/// Tells assistive technology that the grid consists of buttons, which it can name and touch.
QAccessibleInterface* makeAccessibleButtonGrid(ButtonGridView& grid);

/// Tells assistive technology which buttons are marked, or no longer, since `known` was filled; fills it
/// anew.
void tellMarks(ButtonGridView& grid, std::vector<bool>& known);

} // namespace kova
