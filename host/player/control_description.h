#pragma once
#include <string>

namespace kova {

class ButtonGrid;
class Control;
class Trace;

/// `control NAME …` with the attributes of the control's kind.
std::string describedControl(Control& control);
/// `grid NAME …` and a line for each button.
void traceGrid(Trace& trace, const ButtonGrid& grid);

} // namespace kova
