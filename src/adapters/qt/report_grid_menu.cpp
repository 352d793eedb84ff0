#include "adapters/qt/report_grid_view.h"
#include "adapters/qt/save_file.h"
#include "adapters/qt/window_frame.h"

#include <QClipboard>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMenu>
#include <QScreen>

#include <algorithm>

namespace kova {

void ReportGridView::openMenu(const QPoint& at) {
    if (model() == nullptr)
        return;
    showBoard(false);
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setStyleSheet(QString("QMenu { font-size: %1px; } QMenu::item { padding: %2px %3px; }")
                            .arg(pixels(15))
                            .arg(pixels(13))
                            .arg(pixels(24)));
    const auto add = [&](const std::string& words, bool enabled, auto action) {
        menu->addAction(QString::fromStdString(words).replace('&', "&&"), this, action)->setEnabled(enabled);
    };
    const auto& words = model()->menuTexts();
    const bool empty = model()->order().empty();
    add(words.copy, !model()->selectedRecords().empty(), [this] { copySelection(); });
    add(words.selectAll, !empty, [this] { act([](ReportGrid& grid) { grid.selectAll(); }); });
    add(words.save, !empty, [this] { saveList(); });
    menu->addSeparator();
    const auto& groups = model()->groupColumns();
    for (std::size_t column = 0; column < model()->columns().size(); ++column)
        add(frame().words()(Word::GroupBy) + ": " + model()->columns()[column].caption,
            std::ranges::find(groups, column) == groups.end(),
            [this, column] { act([=](ReportGrid& grid) { grid.groupBy(column); }); });
    add(frame().words()(Word::Ungroup), !groups.empty(),
        [this] { act([](ReportGrid& grid) { grid.ungroup(); }); });
    menu->popup(at);
}

void ReportGridView::copySelection() {
    if (model() == nullptr)
        return;
    const auto records = model()->selectedRecords();
    if (!records.empty())
        QGuiApplication::clipboard()->setText(QString::fromStdString(tabSeparated(*model(), records)));
}

void ReportGridView::saveList() {
    if (model() != nullptr)
        askAndSave(*this, QString::fromStdString(model()->fileName()),
                   commaSeparated(*model(), frame().regional().listSeparator),
                   [this](const QString& file, const QString& failure) { showSaved(file, failure); });
}

void ReportGridView::showSaved(const QString& file, const QString& failure) {
    PageNotice* const notice = model() == nullptr ? nullptr : model()->notice();
    if (notice == nullptr)
        return;
    const bool saved = failure.isEmpty();
    const QString text =
        QString::fromStdString(frame().words()(saved ? Word::ListSaved : Word::ListNotSaved)) + ": " +
        QFileInfo(file).fileName() + (saved ? "" : "\n" + failure);
    notice->show(text.toStdString(), saved ? PageNotice::Kind::Success : PageNotice::Kind::Failure);
}

} // namespace kova
