#include "adapters/qt/save_window.h"

#include <QBoxLayout>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QScreen>
#include <QScroller>
#include <QShortcut>
#include <QStandardPaths>
#include <QStorageInfo>
#include <QStyle>
#include <QTimer>

#include <algorithm>
#include <utility>
#include <vector>

namespace kova {
namespace {

// Design pixels.
constexpr double WindowWidth = 620, WindowHeight = 460;
constexpr double FolderIcon = 24;
constexpr int MostDrives = 3;
constexpr int QuestionRest = 500; // milliseconds

using Place = std::pair<QString, QString>; ///< its name, its path

/// Where a stick or a card is mounted.
std::vector<Place> removableDrives() {
    std::vector<Place> drives;
    for (const QStorageInfo& one : QStorageInfo::mountedVolumes()) {
        const QString root = one.rootPath();
        const bool letter = root.size() == 3 && root.at(1) == ':';
        const bool removable =
            letter ? root != QDir::rootPath() : root.startsWith("/media/") || root.startsWith("/run/media/");
        if (removable && one.isReady() && !one.isReadOnly() && drives.size() < MostDrives)
            drives.emplace_back(one.name().isEmpty() ? QDir::toNativeSeparators(root) : one.name(), root);
    }
    return drives;
}

} // namespace

SaveWindow::SaveWindow(QWidget* parent, const QString& suggestedName, const Wording& words,
                       const look::WindowStyle& style)
    : QDialog(parent), path_(new QLabel), folders_(new QListWidget), name_(new QLineEdit), hint_(new QLabel),
      confirm_(new QPushButton) {
    const auto say = [&](Word word) { return QString::fromStdString(words(word)); };
    const QFileInfo suggested(suggestedName);
    suffix_ = '.' + suggested.suffix();
    save_ = say(Word::SaveFile);
    replace_ = say(Word::ReplaceFile);
    question_ = say(Word::FileExists);
    setObjectName("SaveWindow");
    setWindowTitle(save_);
    setStyleSheet(look::windowSheet(style));
    path_->setTextFormat(Qt::PlainText);
    folders_->setIconSize(QSize(1, 1) * static_cast<int>(FolderIcon * style.scale.smaller()));
    folders_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    QScroller::grabGesture(folders_->viewport(), QScroller::TouchGesture);
    name_->setText(suggested.fileName());
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(makePlaces(words));
    layout->addWidget(path_);
    layout->addWidget(folders_, 1);
    addNaming(*layout, words);
    const auto open = [this] {
        if (const QListWidgetItem* const item = folders_->currentItem())
            enter(folder_.filePath(item->text()));
    };
    connect(folders_, &QListWidget::itemClicked, this, open);
    new QShortcut(Qt::Key_Return, folders_, open, Qt::WidgetShortcut);
    new QShortcut(
        Qt::Key_Backspace, folders_, [this] { enter(folder_.filePath("..")); }, Qt::WidgetShortcut);
    const QSize room = (parent != nullptr ? parent->screen() : screen())->availableSize();
    resize((QSizeF(WindowWidth, WindowHeight) * style.scale.smaller()).toSize().boundedTo(room));
    enter(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
}

void SaveWindow::addNaming(QBoxLayout& layout, const Wording& words) {
    const auto say = [&](Word word) { return QString::fromStdString(words(word)); };
    hint_->setObjectName("Question");
    name_->setAccessibleName(say(Word::FileName));
    name_->setValidator(
        new QRegularExpressionValidator(QRegularExpression(R"([^/\\:*?"<>|]*)"), name_)); // of no system
    confirm_->setDefault(true);
    auto* const cancel = new QPushButton(say(Word::Cancel));
    cancel->setAutoDefault(false);
    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(hint_, 1);
    buttons->addWidget(confirm_);
    buttons->addWidget(cancel);
    auto* const naming = new QHBoxLayout;
    naming->addWidget(new QLabel(say(Word::FileName)));
    naming->addWidget(name_, 1);
    layout.addLayout(naming);
    layout.addLayout(buttons);
    connect(name_, &QLineEdit::textChanged, this, [this] { reconsider(); });
    connect(confirm_, &QPushButton::clicked, this, [this] { accept(); });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

QWidget* SaveWindow::makePlaces(const Wording& words) {
    auto* const row = new QWidget;
    auto* const layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    const auto add = [&](const QString& name, std::function<void()> clicked) {
        auto* const button = new QPushButton(name);
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, std::move(clicked));
        layout->addWidget(button);
    };
    const auto say = [&](Word word) { return QString::fromStdString(words(word)); };
    add(say(Word::FolderAbove), [this] { enter(folder_.filePath("..")); });
    std::vector<Place> places{
        {say(Word::HomeFolder), QDir::homePath()},
        {say(Word::DocumentsFolder), QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)}};
    std::ranges::copy(removableDrives(), std::back_inserter(places));
    for (const auto& [name, path] : places)
        add(name, [this, path = path] { enter(path); });
    layout->addStretch();
    return row;
}

/// The home folder where there is no such one.
void SaveWindow::enter(const QString& folder) {
    folder_ = QDir(QDir::cleanPath(QDir(folder).exists() ? folder : QDir::homePath()));
    path_->setText(QDir::toNativeSeparators(folder_.path()));
    folders_->setAccessibleName(path_->text());
    folders_->clear();
    const QIcon icon = style()->standardIcon(QStyle::SP_DirIcon);
    for (const QString& name : folder_.entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::Readable,
                                                 QDir::Name | QDir::IgnoreCase | QDir::LocaleAware))
        new QListWidgetItem(icon, name, folders_);
    reconsider();
}

QString SaveWindow::file() const {
    const QString name = name_->text().trimmed();
    return folder_.filePath(name.endsWith(suffix_, Qt::CaseInsensitive) ? name : name + suffix_);
}

void SaveWindow::reconsider() {
    asked_ = false;
    hint_->clear();
    confirm_->setText(save_);
    confirm_->setEnabled(!name_->text().trimmed().isEmpty());
}

void SaveWindow::accept() {
    if (!asked_ && QFileInfo::exists(file())) {
        asked_ = true;
        hint_->setText(question_);
        confirm_->setText(replace_);
        confirm_->setEnabled(false); // a bounced touch is no answer
        QTimer::singleShot(QuestionRest, this, [this] { confirm_->setEnabled(true); });
        return;
    }
    QDialog::accept(); // out of the way of what is said while it is written
    if (chosen)
        chosen(file());
}

} // namespace kova
