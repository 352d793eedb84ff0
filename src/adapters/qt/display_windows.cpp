#include "adapters/qt/display.h"

namespace kova {

// Each session of Windows has a desktop to draw on, that of a service too, though nobody sees it.
void requireDisplay() {}

QString standInFamily() {
    return "MS Shell Dlg 2"; // whatever the system's dialogs are drawn with
}

} // namespace kova
