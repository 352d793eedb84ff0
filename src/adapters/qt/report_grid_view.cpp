#include "adapters/qt/report_grid_view.h"

#include "adapters/qt/accessible_views.h"
#include "adapters/qt/save_file.h"
#include "adapters/qt/window_frame.h"
#include "widgets/report_grid.h"

#include <QAccessible>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>

namespace kova {
namespace {

constexpr int LongTouchMilliseconds = 600;
constexpr double TouchSlack = 10; // design pixels that a touching finger may roll

ReportGrid::Extent extentOf(Qt::KeyboardModifiers keys) {
    return keys.testFlag(Qt::ControlModifier) ? ReportGrid::Extent::Toggle
           : keys.testFlag(Qt::ShiftModifier) ? ReportGrid::Extent::UpTo
                                              : ReportGrid::Extent::Single;
}

} // namespace

ReportGridView::ReportGridView(ReportGrid& grid, WindowFrame& frame, QWidget& parent)
    : QWidget(&parent), ModelView(grid, frame) {
    nameWidget();
    setFocusPolicy(Qt::ClickFocus);
    longTouch_.setSingleShot(true);
    longTouch_.setInterval(LongTouchMilliseconds);
    QObject::connect(&longTouch_, &QTimer::timeout, this, [this] { onLongTouch(); });
    QObject::connect(&scrollBar_, &QScrollBar::valueChanged, this, [this] { update(); });
}

ReportGridLayout ReportGridView::layout() const {
    return {*model(), size(),
            scale(),  scrollBar_.isVisibleTo(this),
            needs_,   static_cast<std::size_t>(scrollBar_.value())};
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

void ReportGridView::touchCell(int row, int column) {
    if (row < 0)
        act([&](ReportGrid& grid) { grid.touchHeader(static_cast<std::size_t>(column)); });
    else
        act([&](ReportGrid& grid) {
            grid.touchRow(static_cast<std::size_t>(row), ReportGrid::Extent::Single);
        });
}

void ReportGridView::layOut() {
    ModelView::layOut();
    if (model() == nullptr)
        return;
    needs_ = neededWidths(*model(), scale());
    fitScrollBar();
}

void ReportGridView::showProperty(Property property) {
    ModelView::showProperty(property);
    if (model() == nullptr || (property != Property::Records && property != Property::Rows))
        return;
    if (property == Property::Records) {
        needs_ = neededWidths(*model(), scale());
        scrollBar_.setValue(0);
    }
    fitScrollBar();
    if (QAccessible::isActive()) {
        QAccessibleTableModelChangeEvent changed(this, QAccessibleTableModelChangeEvent::ModelReset);
        QAccessible::updateAccessibility(&changed);
        QAccessibleEvent described(this, QAccessible::DescriptionChanged);
        QAccessible::updateAccessibility(&described);
    }
    if (property == Property::Records && model()->brokenOff()) {
        QAccessibleEvent alert(this, QAccessible::Alert);
        QAccessible::updateAccessibility(&alert);
    }
    update();
}

void ReportGridView::fitScrollBar() {
    const ReportGridLayout parts = layout();
    const int visible = parts.fullRows();
    const auto rows = static_cast<int>(model()->rows().size());
    scrollBar_.setVisible(rows > visible);
    scrollBar_.setRange(0, std::max(0, rows - visible));
    scrollBar_.setPageStep(std::max(1, visible - 1));
    scrollBar_.setGeometry(QRectF(width() - parts.scrollBarWidth, parts.headers.top(), parts.scrollBarWidth,
                                  parts.list.bottom() - parts.headers.top())
                               .toRect());
}

void ReportGridView::paintEvent(QPaintEvent*) {
    if (model() == nullptr)
        return;
    QPainter painter(this);
    const ReportGridLayout parts = layout();
    ReportGridPainter(painter, *model(), parts)
        .paint(static_cast<std::size_t>(scrollBar_.value()), touch_, isEnabled());
}

void ReportGridView::mousePressEvent(QMouseEvent* event) {
    if (model() == nullptr || event->button() != Qt::LeftButton)
        return;
    press_ = Press::Touch;
    pressedAt_ = event->position();
    scrolledFrom_ = scrollBar_.value();
    touch_ = {};
    const ReportGridLayout parts = layout();
    if (parts.headers.contains(pressedAt_)) {
        touch_.movedBorder = parts.borderAt(pressedAt_.x());
        if (!touch_.movedBorder)
            touch_.pressedHeader = parts.columnAt(pressedAt_.x());
    }
    if (!touch_.movedBorder)
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
    if (model() == nullptr || touch.movedBorder)
        return;
    if (press == Press::Touch)
        finishTouch(event->position(), extentOf(event->modifiers()));
    else if (press == Press::Drag && touch.draggedHeader && layout().groupArea.contains(event->position()))
        act([&](ReportGrid& grid) { grid.groupBy(*touch.draggedHeader); });
}

void ReportGridView::finishTouch(const QPointF& at, ReportGrid::Extent extent) {
    const ReportGridLayout parts = layout();
    if (parts.groupArea.contains(at))
        act([](ReportGrid& grid) { grid.ungroup(); });
    else if (const auto column = parts.columnAt(at.x()); column && parts.headers.contains(at))
        act([&](ReportGrid& grid) { grid.touchHeader(*column); });
    else if (const auto row = parts.rowAt(at))
        act([&](ReportGrid& grid) { grid.touchRow(*row, extent); });
}

void ReportGridView::onLongTouch() {
    if (model() == nullptr || press_ != Press::Touch)
        return;
    press_ = Press::Finished;
    const auto header = std::exchange(touch_, {}).pressedHeader;
    if (header)
        act([&](ReportGrid& grid) { grid.groupBy(*header); });
    else if (layout().list.contains(pressedAt_))
        openMenu(mapToGlobal(pressedAt_.toPoint()));
    update();
}

void ReportGridView::wheelEvent(QWheelEvent* event) {
    constexpr int EighthsPerRow = 40;
    scrollBar_.setValue(scrollBar_.value() - event->angleDelta().y() / EighthsPerRow);
}

void ReportGridView::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy))
        copySelection();
    else if (event->matches(QKeySequence::SelectAll))
        act([](ReportGrid& grid) { grid.selectAll(); });
    else if (event->key() == Qt::Key_Home)
        scrollBar_.triggerAction(QScrollBar::SliderToMinimum);
    else if (event->key() == Qt::Key_End)
        scrollBar_.triggerAction(QScrollBar::SliderToMaximum);
    else if (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down || event->key() == Qt::Key_PageUp ||
             event->key() == Qt::Key_PageDown)
        QCoreApplication::sendEvent(&scrollBar_, event);
    else
        QWidget::keyPressEvent(event);
}

void ReportGridView::contextMenuEvent(QContextMenuEvent* event) {
    if (model() != nullptr && layout().list.contains(event->pos()))
        openMenu(event->globalPos());
}

void ReportGridView::openMenu(const QPoint& at) {
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setStyleSheet(QString("QMenu { font-size: %1px; } QMenu::item { padding: %2px %3px; }")
                            .arg(pixels(15))
                            .arg(pixels(11))
                            .arg(pixels(24)));
    const auto& words = model()->menuTexts();
    const bool empty = model()->recordCount() == 0;
    menu->addAction(QString::fromStdString(words.copy), this, [this] { copySelection(); })
        ->setEnabled(!model()->selectedRecords().empty());
    menu->addAction(QString::fromStdString(words.selectAll), this,
                    [this] { act([](ReportGrid& grid) { grid.selectAll(); }); })
        ->setEnabled(!empty);
    menu->addAction(QString::fromStdString(words.save), this, [this] { saveList(); })->setEnabled(!empty);
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
        askAndSave(*this, "movimenti.csv", commaSeparated(*model(), frame().regional().listSeparator),
                   [this](const QString& file, const QString& failure) { showSaved(file, failure); });
}

void ReportGridView::showSaved(const QString& file, const QString& failure) {
    if (failure.isEmpty())
        return;
    auto* box = new QMessageBox(QMessageBox::Warning, file, failure, QMessageBox::Ok, this);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
}

} // namespace kova
