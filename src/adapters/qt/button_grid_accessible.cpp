#include "adapters/qt/button_grid_accessible.h"

#include "adapters/qt/accessible_children.h"
#include "adapters/qt/button_grid_view.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QPointer>

namespace kova {
namespace {

/// One button of a grid, by its position: a rebuilt grid has its new buttons at once.
class CellAccessible final : public QAccessibleInterface, public QAccessibleActionInterface {
  public:
    CellAccessible(ButtonGridView& grid, int index) : grid_(&grid), index_(index) {}

    [[nodiscard]] bool isValid() const override { return grid_ && grid_->cellButton(index_) != nullptr; }
    [[nodiscard]] QObject* object() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* parent() const override {
        return grid_ ? QAccessible::queryAccessibleInterface(static_cast<QWidget*>(grid_)) : nullptr;
    }
    [[nodiscard]] QAccessibleInterface* child(int) const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::Button; }
    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        if (!isValid() || kind != QAccessible::Name)
            return {};
        const auto& button = *grid_->cellButton(index_);
        return QString::fromStdString(button.caption.empty() ? button.key : button.caption);
    }
    void setText(QAccessible::Text, const QString&) override {}
    [[nodiscard]] QRect rect() const override {
        if (!isValid())
            return {};
        const QRect cell = grid_->cell(index_).toAlignedRect();
        return {grid_->mapToGlobal(cell.topLeft()), cell.size()};
    }
    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state;
        state.invalid = !isValid();
        if (isValid()) {
            state.disabled = !grid_->isEnabled();
            state.invisible = !grid_->isVisible();
            state.checkable = true;
            state.checked = grid_->cellButton(index_)->marked;
            state.offscreen = !grid_->inSight(index_);
            state.focusable = grid_->isEnabled();
            state.focused = grid_->hasFocus() && grid_->currentCell() == index_;
        }
        return state;
    }
    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                    : nullptr;
    }

    [[nodiscard]] QStringList actionNames() const override { return {pressAction()}; }
    void doAction(const QString& action) override {
        if (isValid() && action == pressAction())
            grid_->touchCell(index_);
    }
    [[nodiscard]] QStringList keyBindingsForAction(const QString&) const override { return {}; }

  private:
    QPointer<ButtonGridView> grid_;
    int index_;
};

class GridAccessible final : public QAccessibleWidget {
  public:
    explicit GridAccessible(ButtonGridView& grid)
        : QAccessibleWidget(&grid, QAccessible::Grouping), grid_(grid) {}

    [[nodiscard]] int childCount() const override { return grid_.cellCount(); }
    [[nodiscard]] QAccessibleInterface* child(int index) const override {
        return cells_.at(index, childCount());
    }
    int indexOfChild(const QAccessibleInterface* wanted) const override {
        return cells_.indexOf(wanted, childCount());
    }
    [[nodiscard]] QAccessibleInterface* focusChild() const override {
        return grid_.hasFocus() ? child(grid_.currentCell()) : nullptr;
    }
    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override {
        return child(grid_.cellAt(QPointF(grid_.mapFromGlobal(QPoint(x, y)))));
    }

  private:
    ButtonGridView& grid_;
    mutable AccessibleChildren<CellAccessible, ButtonGridView> cells_{grid_};
};

} // namespace

void tellMarks(ButtonGridView& grid, std::vector<bool>& known) {
    const std::vector<bool> before = std::exchange(known, {});
    for (int index = 0; index < grid.cellCount(); ++index) {
        const bool marked = grid.cellButton(index)->marked;
        known.push_back(marked);
        const auto place = static_cast<std::size_t>(index);
        if (!QAccessible::isActive() || marked == (place < before.size() && before[place]))
            continue;
        QAccessible::State changed;
        changed.checked = true;
        QAccessibleStateChangeEvent event(
            QAccessible::queryAccessibleInterface(static_cast<QWidget*>(&grid))->child(index), changed);
        QAccessible::updateAccessibility(&event);
    }
}

QAccessibleInterface* makeAccessibleButtonGrid(ButtonGridView& grid) {
    return new GridAccessible(grid);
}

} // namespace kova
