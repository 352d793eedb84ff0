#pragma once
#include <QString>

#include <functional>
#include <string>

class QWidget;

namespace kova {

/// Tells the file that was written, or was not: then `failure` says why, else it is empty.
using Saved = std::function<void(const QString& file, const QString& failure)>;
/// Does the work of writing, perhaps on another thread.
using Writing = std::function<void(const std::function<void()>& work)>;

/// Asks for a file in a window over `parent`, a part of a dialog, and writes the text whole or not at all; in
/// the folder of the dialog, if it has one, without asking and without replacing a file. Returns at once.
/// `done` is called when a file was chosen, while `parent` lives.
void askAndSave(QWidget& parent, const QString& suggestedName, std::string text, Writing writing, Saved done);

} // namespace kova
