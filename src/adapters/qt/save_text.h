#pragma once
#include <QString>

#include <string>

class QWidget;

namespace kova {

/// Asks for a file in a window over `parent` and writes the text to it, whole or not at all; says why when
/// that failed. Returns at once.
void askAndSave(QWidget& parent, const QString& suggestedName, std::string text);

} // namespace kova
