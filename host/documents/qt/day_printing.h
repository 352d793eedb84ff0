#pragma once

class QPrinter;

namespace kova {

struct DayDocument;

/// Prints the pages and copies that the printer is set to. Throws Error when it does not take them.
void printPages(const DayDocument& document, QPrinter& printer);

// Both open a dialog in front of the window in use, which goes on when they return. They throw Error when the
// printer that was chosen does not take the document. `scale` is that of the host's windows.

void printWithDialog(const DayDocument& document, double scale);
void showPreview(const DayDocument& document, double scale);

} // namespace kova
