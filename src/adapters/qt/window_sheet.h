#pragma once
#include "adapters/qt/look.h"

#include <optional>

/// The look of the windows that are made of a toolkit's own parts: messages, questions, files, documents.
/// They belong to the same family as the dialog that they stand in front of.
namespace kova::look {

struct WindowStyle {
    QColor background;
    Scale scale;
};

/// Of the dialog in use, in whose scheme a window in front of it is drawn; nothing where there is none.
std::optional<WindowStyle> styleInForce();
/// The same scheme at any scale.
WindowStyle windowStyle(const QColor& dialog, const Scale& scale);

/// A style sheet: texts that are read at arm's length, buttons and rows a finger high, the default button
/// filled with the accent.
QString windowSheet(const WindowStyle& style);

} // namespace kova::look
