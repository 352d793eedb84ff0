#pragma once
#include "adapters/qt/window_sheet.h"
#include "screen/spoken_name.h"

#include <QDialog>
#include <QDir>

#include <functional>

class QBoxLayout;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace kova {

/// Asks where a file is to be written, for fingers: folders are rows that open at a touch; home, documents
/// and removable drives are a touch away. A file that exists is replaced by a second touch only.
class SaveWindow final : public QDialog {
  public:
    /// The name's ending is kept. It speaks the language that `words` have now.
    SaveWindow(QWidget* parent, const QString& suggestedName, const Wording& words,
               const look::WindowStyle& style);

    std::function<void(const QString& file)> chosen; ///< before it closes

  private:
    QWidget* makePlaces(const Wording& words);
    void addNaming(QBoxLayout& layout, const Wording& words);
    void enter(const QString& folder);
    void accept() override;
    void reconsider();
    [[nodiscard]] QString file() const;

    QString suffix_; ///< with its point
    QString save_, replace_, question_;
    QDir folder_;
    // Owned by this widget.
    QLabel* path_;
    QListWidget* folders_;
    QLineEdit* name_;
    QLabel* hint_;
    QPushButton* confirm_;
    bool asked_ = false; ///< whether to replace the file
};

} // namespace kova
