#include "adapters/qt/report_grid_view.h"

#include "adapters/qt/accessible_views.h"
#include "adapters/qt/notice_views.h"
#include "adapters/qt/window_frame.h"
#include "widgets/report_grid.h"

#include <QAccessible>
#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>

namespace kova {
namespace {

constexpr int LongTouchMilliseconds = 600;
constexpr double TouchSlack = 10; // design pixels that a touching finger may roll

} // namespace

ReportGridView::ReportGridView(ReportGrid& grid, WindowFrame& frame, QWidget& parent)
    : QWidget(&parent), ModelView(grid, frame) {
    nameWidget();
    setFocusPolicy(Qt::ClickFocus);
    tools_ = new ReportGridTools(
        parent, objectName(),
        {.search = [this](const std::string& text) { act([&](ReportGrid& list) { list.search(text); }); },
         .touchField =
             [this] {
                 keyboard_ = &tools_->field();
                 takeFocus();
                 showBoard(true);
             },
         .openMenu =
             [this] {
                 keyboard_ = &tools_->menuButton();
                 takeFocus();
                 openMenu({keyboard_->mapTo(&this->frame(), QPoint()), keyboard_->size()});
             },
         .focusMoved = [this] { keyboard_ = parentWidget()->focusWidget(); },
         .leave =
             [this] {
                 showBoard(false);
                 setFocus(Qt::OtherFocusReason);
             }});
    board_ = new SearchBoard(parent, objectName(), tools_->field());
    board_->done = [this] { showBoard(false); };
    if (PageNotice* const notice = grid.notice())
        notice_ = new PageNoticeView(*notice, frame, parent);
    ReportGridView::showWords();
    longTouch_.setSingleShot(true);
    longTouch_.setInterval(LongTouchMilliseconds);
    QObject::connect(&longTouch_, &QTimer::timeout, this, [this] { onLongTouch(); });
    QObject::connect(&scrollBar_, &QScrollBar::valueChanged, this, [this] { update(); });
}

ReportGridLayout ReportGridView::layout() const {
    const int covered = board_->isHidden() ? 0 : SearchBoard::height(scale());
    return {*model(), size(), scale(), needs_, static_cast<std::size_t>(scrollBar_.value()), covered};
}

void ReportGridView::detach() {
    if (notice_ != nullptr)
        notice_->detach();
    tools_->detach();
    board_->hide();
    closeMenu();
    ModelView::detach();
}

void ReportGridView::showWords() {
    closeMenu();
    updateSpokenName();
    tools_->showWords(frame().words());
    board_->showWords(frame().words());
    update();
}

QAccessibleInterface* ReportGridView::makeAccessible() {
    return makeAccessibleReportGrid(*this);
}

QRectF ReportGridView::cell(int row, int column) const {
    const ReportGridLayout parts = layout();
    const QRectF header = parts.header(static_cast<std::size_t>(column));
    if (row < 0)
        return header;
    const QRectF line = parts.row(static_cast<std::size_t>(row)) & parts.list;
    return {header.left(), line.top(), header.width(), std::max(0.0, line.height())};
}

ReportGridView::CellPlace ReportGridView::cellAt(const QPointF& point) const {
    if (model() != nullptr) {
        const ReportGridLayout parts = layout();
        if (const auto column = parts.columnAt(point.x())) {
            if (parts.headers.contains(point))
                return {-1, static_cast<int>(*column)};
            if (const auto row = parts.rowAt(point))
                return {static_cast<int>(*row), static_cast<int>(*column)};
        }
    }
    return {-2, 0};
}

ReportGrid::Extent ReportGridView::extentOf(Qt::KeyboardModifiers keys) {
    return keys.testFlag(Qt::ControlModifier) ? ReportGrid::Extent::Toggle
           : keys.testFlag(Qt::ShiftModifier) ? ReportGrid::Extent::UpTo
                                              : ReportGrid::Extent::Single;
}

void ReportGridView::touchCell(int row, int column, ReportGrid::Extent extent) {
    if (row < 0)
        act([&](ReportGrid& grid) { grid.touchHeader(static_cast<std::size_t>(column)); });
    else
        act([&](ReportGrid& grid) { grid.touchRow(static_cast<std::size_t>(row), extent); });
}

void ReportGridView::switchGroup(int column) {
    act([at = static_cast<std::size_t>(column)](ReportGrid& grid) {
        if (std::ranges::find(grid.groupColumns(), at) == grid.groupColumns().end())
            grid.groupBy(at);
        else
            grid.ungroup();
    });
}

void ReportGridView::layOut() {
    ModelView::layOut();
    if (model() == nullptr)
        return;
    measure();
    const ReportGridLayout parts = layout();
    tools_->layOut(parts.tools.translated(pos()).toRect(), scale());
    if (notice_ != nullptr)
        notice_->layOut();
}

void ReportGridView::measure() {
    needs_ = neededWidths(*model(), scale());
    fitParts();
}

void ReportGridView::showBoard(bool shown) {
    if (board_->isVisibleTo(parentWidget()) == shown || model() == nullptr)
        return;
    board_->setVisible(shown);
    board_->raise();
    fitParts();
    update();
}

void ReportGridView::showProperty(Property property) {
    ModelView::showProperty(property);
    if (model() == nullptr)
        return;
    switch (property) {
    case Property::Visible:
        tools_->setVisible(drawnVisible());
        break;
    case Property::Enabled: // or stale, or no longer
        tools_->setEnabled(drawnEnabled());
        break;
    case Property::ZOrder:
        tools_->raise();
        break;
    case Property::Text: // the font may be another
        measure();
        break;
    case Property::Records:
        closeMenu();
        if (model()->searched().empty())
            tools_->empty();
        measure();
        showNewest();
        break;
    case Property::Order:
        scrollBar_.setValue(0);
        goTo(std::min(focus_.row, 0));
        fitParts();
        break;
    case Property::Rows:
        fitParts();
        break;
    default:
        return;
    }
    tellChanged(property);
    update();
}

/// A new list shows its newest record, which may be its last.
void ReportGridView::showNewest() {
    const auto newest = static_cast<int>(model()->newest().value_or(0));
    scrollBar_.setValue(newest - layout().fullRows() + 1);
    focus_.column = 0;
    goTo(newest);
}

void ReportGridView::tellChanged(Property property) {
    if (property != Property::Records && property != Property::Order && property != Property::Rows &&
        property != Property::Enabled)
        return;
    tellReportGrid(*this, property == Property::Enabled ? ToldOfGrid::Description : ToldOfGrid::All);
    tellFocus();
    if (property == Property::Records && model()->brokenOff()) {
        QAccessibleEvent alert(this, QAccessible::Alert);
        QAccessible::updateAccessibility(&alert);
    }
}

void ReportGridView::fitParts() {
    const ReportGridLayout parts = layout();
    const int visible = parts.fullRows();
    const auto rows = static_cast<int>(model()->rows().size());
    scrollBar_.setVisible(rows > visible);
    scrollBar_.setRange(0, std::max(0, rows - visible));
    scrollBar_.setPageStep(std::max(1, visible - 1));
    scrollBar_.setGeometry(QRectF(width() - parts.scrollBarWidth, parts.headers.top(), parts.scrollBarWidth,
                                  parts.list.bottom() - parts.headers.top())
                               .toRect());
    if (!board_->isHidden()) {
        const int high = SearchBoard::height(scale());
        board_->layOut(QRect(x() + 1, y() + static_cast<int>(parts.footer.top()) - high, width() - 2, high),
                       scale());
    }
}

void ReportGridView::paintEvent(QPaintEvent*) {
    if (model() == nullptr)
        return;
    QPainter painter(this);
    const ReportGridLayout parts = layout();
    ReportGridTouch touch = touch_;
    if (focusSeen_)
        touch.focus = focusedCell();
    ReportGridPainter(painter, *model(), parts, frame().words())
        .paint(static_cast<std::size_t>(scrollBar_.value()), touch, isEnabled());
}

void ReportGridView::mousePressEvent(QMouseEvent* event) {
    if (model() == nullptr || event->button() != Qt::LeftButton)
        return;
    keyboard_ = this;
    takeFocus();
    focusSeen_ = false;
    if (model() == nullptr)
        return;
    showBoard(false);
    if (PageNotice* const notice = model()->notice())
        notice->goOn();
    press_ = Press::Touch;
    pressedAt_ = event->position();
    scrolledFrom_ = scrollBar_.value();
    touch_ = {};
    const ReportGridLayout parts = layout();
    if (parts.headers.contains(pressedAt_)) {
        touch_.movedBorder = parts.borderAt(pressedAt_.x());
        touch_.pressedHeader = parts.columnAt(pressedAt_.x());
    }
    longTouch_.start();
    update();
}

void ReportGridView::mouseMoveEvent(QMouseEvent* event) {
    if (model() == nullptr || press_ == Press::None || press_ == Press::Finished)
        return;
    const QPointF at = event->position();
    touch_.at = at;
    const ReportGridLayout parts = layout();
    if (press_ == Press::Touch && (at - pressedAt_).manhattanLength() > TouchSlack * scale().smaller()) {
        press_ = Press::Drag;
        longTouch_.stop();
        if (touch_.movedBorder)
            touch_.pressedHeader.reset();
        touch_.draggedHeader = touch_.pressedHeader;
    }
    if (press_ != Press::Drag)
        return;
    if (const auto border = touch_.movedBorder)
        act([&](ReportGrid& grid) {
            grid.adoptWidths(parts.widths());
            grid.resizeColumn(*border, parts.characters(at.x() - parts.edges[*border]));
        });
    else if (parts.list.contains(pressedAt_))
        scrollBar_.setValue(scrolledFrom_ + static_cast<int>((pressedAt_.y() - at.y()) / parts.rowHeight));
    update();
}

void ReportGridView::mouseReleaseEvent(QMouseEvent* event) {
    longTouch_.stop();
    const Press press = std::exchange(press_, Press::None);
    const ReportGridTouch touch = std::exchange(touch_, {});
    update();
    if (model() == nullptr)
        return;
    if (press == Press::Touch)
        finishTouch(event->position(), extentOf(event->modifiers()));
    else if (press == Press::Drag && touch.draggedHeader && layout().groupArea.contains(event->position()))
        act([&](ReportGrid& grid) { grid.groupBy(*touch.draggedHeader); });
}

void ReportGridView::finishTouch(const QPointF& at, ReportGrid::Extent extent) {
    if (layout().groupArea.contains(at))
        act([](ReportGrid& grid) { grid.ungroup(); });
    else if (const CellPlace place = cellAt(at); place.row >= -1) {
        focus_ = place;
        touchCell(place.row, place.column, extent);
        tellFocus();
    }
}

void ReportGridView::onLongTouch() {
    if (model() == nullptr || press_ != Press::Touch)
        return;
    press_ = Press::Finished;
    const auto header = std::exchange(touch_, {}).pressedHeader;
    if (header)
        act([&](ReportGrid& grid) { grid.groupBy(*header); });
    else if (layout().list.contains(pressedAt_))
        openMenu({mapTo(&frame(), pressedAt_.toPoint()), QSize(1, 1)});
    update();
}

void ReportGridView::wheelEvent(QWheelEvent* event) {
    constexpr int EighthsPerRow = 40;
    scrollBar_.setValue(scrollBar_.value() - event->angleDelta().y() / EighthsPerRow);
}

void ReportGridView::takeFocus() {
    act([](ReportGrid& grid) { grid.window().moveFocus(grid); });
}

void ReportGridView::hideEvent(QHideEvent* event) {
    showBoard(false);
    closeMenu();
    QWidget::hideEvent(event);
}

void ReportGridView::contextMenuEvent(QContextMenuEvent* event) {
    if (model() != nullptr && layout().list.contains(event->pos()))
        openMenu({mapTo(&frame(), event->pos()), QSize(1, 1)});
}

} // namespace kova
