#pragma once
#include <string>

namespace kova {

class Control;

/// What assistive technology calls a control that carries no caption of its own: the labels beside and above
/// it, as a person reads them; else the frame, page or window that it stands on. Hidden labels name nothing.
std::string spokenNameOf(const Control& control);

} // namespace kova
