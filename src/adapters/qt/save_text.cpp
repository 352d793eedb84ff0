#include "adapters/qt/save_text.h"

#include <QDir>
#include <QFileDialog>
#include <QMessageBox>
#include <QSaveFile>
#include <QStandardPaths>

namespace kova {
namespace {

void save(QWidget& parent, const QString& name, const std::string& text) {
    QSaveFile file(name);
    const auto size = static_cast<qint64>(text.size());
    if (file.open(QIODevice::WriteOnly) && file.write(text.data(), size) == size && file.commit())
        return;
    auto* box = new QMessageBox(QMessageBox::Warning, name, file.errorString(), QMessageBox::Ok, &parent);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
}

} // namespace

void askAndSave(QWidget& parent, const QString& suggestedName, std::string text) {
    const QDir folder(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    auto* dialog = new QFileDialog(&parent, {}, folder.filePath(suggestedName), "CSV (*.csv)");
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix("csv");
    QObject::connect(dialog, &QFileDialog::fileSelected, &parent,
                     [&parent, text = std::move(text)](const QString& name) { save(parent, name, text); });
    dialog->open();
}

} // namespace kova
