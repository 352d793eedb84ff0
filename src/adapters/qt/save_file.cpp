#include "adapters/qt/save_file.h"

#include <QDir>
#include <QFileDialog>
#include <QSaveFile>
#include <QStandardPaths>

namespace kova {
namespace {

/// Why the file could not be written; empty when it is.
QString write(const QString& name, const std::string& text) {
    QSaveFile file(name);
    const auto size = static_cast<qint64>(text.size());
    if (file.open(QIODevice::WriteOnly) && file.write(text.data(), size) == size && file.commit())
        return {};
    return file.errorString();
}

} // namespace

void askAndSave(QWidget& parent, const QString& suggestedName, std::string text, Saved done) {
    const QDir folder(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    auto* dialog = new QFileDialog(&parent, {}, folder.filePath(suggestedName), "CSV (*.csv)");
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix("csv");
    QObject::connect(dialog, &QFileDialog::fileSelected, &parent,
                     [text = std::move(text), done = std::move(done)](const QString& name) {
                         done(name, write(name, text));
                     });
    dialog->open();
}

} // namespace kova
