#pragma once
#include <string>

namespace kova {

class ProcessState;
class ReportGrid;
struct ComponentOptions;

/// Lists the movements of one day in the grid. The date is a text as the date field holds it; one that is no
/// date shows a message and leaves the grid alone. Any other failure is logged and leaves the grid broken
/// off, with what it had until then.
void carica_Movimenti_Giornata(ProcessState& process, ReportGrid& grid, const std::string& date,
                               const ComponentOptions& options);

/// Names what loading would ask for: the same text, the same list, but for what was entered meanwhile. Empty
/// for a text that is no date.
std::string movementRequest(ProcessState& process, const std::string& date, const ComponentOptions& options);

} // namespace kova
