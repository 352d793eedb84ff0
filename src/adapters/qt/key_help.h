#pragma once

namespace kova {

class WindowFrame;

/// Lists over the window which keys do what there and then. The list takes no focus; a touch on it hides it.
void showKeyHelp(WindowFrame& frame);
/// Whether it was shown.
bool hideKeyHelp(const WindowFrame& frame);

} // namespace kova
