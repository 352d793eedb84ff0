#include "adapters/qt/report_grid_view.h"
#include "adapters/qt/window_frame.h"

#include <QKeyEvent>

#include <algorithm>
#include <array>

namespace kova {
namespace {

/// A character that a search may begin with.
bool isTyped(const QKeyEvent& event) {
    const auto command = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    return (event.modifiers() & command) == 0 && !event.text().isEmpty() && event.text().front().isPrint() &&
           event.text() != " ";
}

} // namespace

std::optional<ReportGridView::CellPlace> ReportGridView::focusedCell() const {
    if (!hasFocus() || model() == nullptr || model()->columns().empty())
        return std::nullopt;
    // A search, or a group that collapses, may have left fewer.
    return CellPlace{std::min(focus_.row, static_cast<int>(model()->rows().size()) - 1),
                     std::min(focus_.column, static_cast<int>(model()->columns().size()) - 1)};
}

void ReportGridView::focusCell(const CellPlace& place) {
    keyboard_ = this;
    takeFocus();
    if (model() == nullptr)
        return;
    setFocus(Qt::OtherFocusReason);
    focusSeen_ = true;
    focus_.column = place.column;
    goTo(place.row);
    tellFocus();
    update();
}

void ReportGridView::tellFocus() {
    if (focusedCell())
        tellReportGrid(*this, ToldOfGrid::Focus);
}

bool ReportGridView::moveFocusInside(bool forward) {
    const std::array<QWidget*, 3> parts{this, &tools_->field(), &tools_->menuButton()};
    const auto at = std::ranges::find(parts, keyboard_);
    const bool last = forward ? at + 1 >= parts.end() : at == parts.begin() || at == parts.end();
    if (!last)
        (*(forward ? at + 1 : at - 1))->setFocus(Qt::TabFocusReason);
    else
        keyboard_ = this; // where it comes in again
    if (last || keyboard_ != &tools_->field())
        showBoard(false);
    return !last;
}

void ReportGridView::focusInEvent(QFocusEvent* event) {
    keyboard_ = this;
    focusSeen_ = event->reason() != Qt::MouseFocusReason && press_ == Press::None;
    update();
    QWidget::focusInEvent(event);
    // After the toolkit's own word that it is somewhere in the list. A finger has yet to say where.
    const auto tell = [this] {
        if (press_ == Press::None)
            tellFocus();
    };
    QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
}

void ReportGridView::focusOutEvent(QFocusEvent* event) {
    update();
    QWidget::focusOutEvent(event);
    tellReportGrid(*this, ToldOfGrid::Focus);
}

void ReportGridView::keyPressEvent(QKeyEvent* event) {
    if (model() == nullptr)
        return;
    focusSeen_ = true;
    if (event->matches(QKeySequence::Copy))
        copySelection();
    else if (event->matches(QKeySequence::SelectAll))
        act([](ReportGrid& grid) { grid.selectAll(); });
    else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || event->key() == Qt::Key_Space)
        useFocused(event->modifiers());
    else if (isTyped(*event)) {
        tools_->field().setFocus(Qt::OtherFocusReason);
        tools_->field().end(false);
        tools_->field().insert(event->text());
    } else if (!moveByKey(event->key())) {
        QWidget::keyPressEvent(event);
    }
    tellFocus();
    update();
}

/// Above the rows are the headers, above them the search field.
bool ReportGridView::moveByKey(int key) {
    const int page = std::max(1, layout().fullRows() - 1);
    const int last = static_cast<int>(model()->columns().size()) - 1;
    switch (key) {
    case Qt::Key_Up:
        if (focus_.row < 0)
            tools_->field().setFocus(Qt::OtherFocusReason);
        else
            goTo(focus_.row - 1);
        return true;
    case Qt::Key_Down:
        goTo(focus_.row + 1);
        return true;
    case Qt::Key_PageUp:
        goTo(std::max(0, focus_.row - page));
        return true;
    case Qt::Key_PageDown:
        goTo(focus_.row + page);
        return true;
    case Qt::Key_Home:
        goTo(focus_.row == 0 ? -1 : 0);
        return true;
    case Qt::Key_End:
        goTo(static_cast<int>(model()->rows().size()) - 1);
        return true;
    case Qt::Key_Left:
        focus_.column = std::max(0, focus_.column - 1);
        return true;
    case Qt::Key_Right:
        focus_.column = std::clamp(focus_.column + 1, 0, std::max(0, last));
        return true;
    default:
        return false;
    }
}

/// To a row that there is, or the headers, and into sight.
void ReportGridView::goTo(int row) {
    focus_.row = std::clamp(row, -1, static_cast<int>(model()->rows().size()) - 1);
    if (focus_.row < 0)
        return;
    const int first = scrollBar_.value();
    scrollBar_.setValue(std::clamp(first, focus_.row - std::max(1, layout().fullRows()) + 1, focus_.row));
}

void ReportGridView::useFocused(Qt::KeyboardModifiers keys) {
    if (const auto place = focusedCell())
        touchCell(place->row, place->column, extentOf(keys));
}

} // namespace kova
