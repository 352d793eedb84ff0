#include "adapters/qt/report_grid_view.h"
#include "adapters/qt/save_file.h"
#include "adapters/qt/window_frame.h"

#include <QClipboard>
#include <QFileInfo>
#include <QGuiApplication>

#include <algorithm>

namespace kova {

void ReportGridView::openMenu(const QRect& beside) {
    if (model() == nullptr)
        return;
    showBoard(false);
    if (menu_ == nullptr) {
        menu_ = new ChoicePanel(frame());
        menu_->setObjectName(objectName() + "_choices");
    }
    std::vector<ChoicePanel::Choice> choices;
    const auto add = [&](const std::string& words, bool enabled, auto action) {
        choices.push_back({QString::fromStdString(words), enabled, std::move(action)});
    };
    const auto& words = model()->menuTexts();
    const bool empty = model()->order().empty();
    add(words.copy, !model()->selectedRecords().empty(), [this] { copySelection(); });
    add(words.selectAll, !empty, [this] { act([](ReportGrid& grid) { grid.selectAll(); }); });
    add(words.save, !empty, [this] { saveList(); });
    const auto& groups = model()->groupColumns();
    for (std::size_t column = 0; column < model()->columns().size(); ++column)
        add(frame().words()(Word::GroupBy) + ": " + model()->columns()[column].caption,
            std::ranges::find(groups, column) == groups.end(),
            [this, column] { act([=](ReportGrid& grid) { grid.groupBy(column); }); });
    add(frame().words()(Word::Ungroup), !groups.empty(),
        [this] { act([](ReportGrid& grid) { grid.ungroup(); }); });
    menu_->open(QString::fromStdString(frame().words()(Word::ListMenu)), choices,
                {scale(), look::toQt(model()->window().backColor()), beside});
}

void ReportGridView::closeMenu() {
    if (menu_)
        menu_->close();
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
                   commaSeparated(*model(), frame().regional().listSeparator), model()->writing(),
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
