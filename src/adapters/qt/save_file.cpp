#include "adapters/qt/save_file.h"

#include "adapters/qt/save_window.h"
#include "adapters/qt/window_frame.h"

#include <QFileInfo>
#include <QSaveFile>

namespace kova {
namespace {

/// Why the file could not be written; empty when it is.
QString write(const QString& name, const std::string& text, const Writing& writing) {
    QString failure;
    writing([&] {
        QSaveFile file(name);
        const auto size = static_cast<qint64>(text.size());
        if (!file.open(QIODevice::WriteOnly) || file.write(text.data(), size) != size || !file.commit())
            failure = file.errorString();
    });
    return failure;
}

/// The file in the folder, with a number where there is one of that name.
QString unusedName(const QString& folder, const QString& name) {
    const QFileInfo wanted(QDir(folder), name);
    QString file = wanted.filePath();
    for (int number = 2; QFileInfo::exists(file); ++number)
        file = QString("%1/%2 (%3).%4")
                   .arg(wanted.path(), wanted.completeBaseName())
                   .arg(number)
                   .arg(wanted.suffix());
    return file;
}

} // namespace

void askAndSave(QWidget& parent, const QString& suggestedName, std::string text, Writing writing,
                Saved done) {
    const auto* const frame = dynamic_cast<WindowFrame*>(parent.window());
    if (frame == nullptr || frame->model() == nullptr)
        return;
    if (const auto folder = QString::fromStdString(frame->model()->saveFolder()); !folder.isEmpty()) {
        const QString file = unusedName(folder, suggestedName);
        done(file, write(file, text, writing));
        return;
    }
    auto* const window =
        new SaveWindow(&parent, suggestedName, frame->words(),
                       look::windowStyle(look::toQt(frame->model()->backColor()), frame->scale()));
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->chosen = [&parent, text = std::move(text), writing = std::move(writing),
                      done = std::move(done)](const QString& file) {
        parent.window()->repaint(); // where the window was
        done(file, write(file, text, writing));
    };
    window->open();
}

} // namespace kova
