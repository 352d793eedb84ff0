#include "adapters/qt/accessible_views.h"

#include "adapters/qt/accessible_part.h"
#include "adapters/qt/button_grid_view.h"
#include "adapters/qt/tab_control_view.h"
#include "screen/spoken_name.h"

#include <utility>

namespace kova {
namespace {

// Qt hands over any object of the process; this asks whether it is one of ours.
QAccessibleInterface* accessibleView(const QString&, QObject* object) {
    auto* const view = dynamic_cast<AccessibleView*>(object);
    return view == nullptr ? nullptr : view->makeAccessible();
}

/// One button of a grid: a rebuilt grid has its new buttons at once.
class CellAccessible final : public AccessiblePart<ButtonGridView> {
  public:
    CellAccessible(ButtonGridView& grid, int index) : AccessiblePart(grid), index_(index) {}
    static int count(const ButtonGridView& grid) { return grid.cellCount(); }
    static int at(const ButtonGridView& grid, const QPoint& point) {
        return grid.cells().at({double(point.x()), double(point.y())});
    }

    [[nodiscard]] bool isValid() const override {
        return widget() && widget()->cellButton(index_) != nullptr;
    }
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::Button; }
    /// The key, which is not spoken, tells scripts which button it is.
    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        return isValid() && kind == QAccessible::UserText
                   ? QString::fromStdString(widget()->cellButton(index_)->key)
                   : AccessiblePart::text(kind);
    }

  protected:
    [[nodiscard]] QString name() const override {
        return QString::fromStdString(spokenNameOf(*widget()->cellButton(index_)));
    }
    [[nodiscard]] QRect place() const override {
        return look::toQt(widget()->cells().cell(index_)).toAlignedRect();
    }
    void addTo(QAccessible::State& state) const override {
        state.checkable = true;
        state.checked = widget()->cellButton(index_)->marked;
        state.offscreen = !widget()->cells().inSight(index_);
        state.focusable = widget()->isEnabled();
        state.focused = widget()->hasFocus() && widget()->currentCell() == index_;
    }
    void press() override { widget()->touchCell(index_); }

  private:
    int index_;
};

class GridAccessible final : public AccessibleParts<CellAccessible, ButtonGridView> {
  public:
    explicit GridAccessible(ButtonGridView& grid) : AccessibleParts(grid, QAccessible::Grouping) {}
    [[nodiscard]] QAccessibleInterface* focusChild() const override {
        return shown().hasFocus() ? child(shown().currentCell()) : nullptr;
    }
};

class TabAccessible final : public AccessiblePart<TouchTabBar> {
  public:
    TabAccessible(TouchTabBar& bar, int index) : AccessiblePart(bar), index_(index) {}
    static int count(const TouchTabBar& bar) { return bar.count(); }
    static int at(const TouchTabBar& bar, const QPoint& point) { return bar.tabAt(point); }

    [[nodiscard]] bool isValid() const override { return widget() && index_ < widget()->count(); }
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::PageTab; }

  protected:
    [[nodiscard]] QString name() const override { return widget()->tabText(index_); }
    [[nodiscard]] QRect place() const override { return widget()->tabRect(index_); }
    void addTo(QAccessible::State& state) const override {
        state.invisible = !widget()->isVisible() || !widget()->isTabVisible(index_);
        state.selectable = true;
        state.selected = widget()->currentIndex() == index_;
        state.focusable = true;
        state.focused = state.selected && widget()->hasFocus();
    }
    void press() override {
        if (widget()->touched)
            widget()->touched(index_);
    }

  private:
    int index_;
};

} // namespace

void makeViewsAccessible() {
    QAccessible::installFactory(&accessibleView); // installs the same one once
}

QAccessibleInterface* makeAccessibleButtonGrid(ButtonGridView& grid) {
    return new GridAccessible(grid);
}

QAccessibleInterface* makeAccessibleTabBar(TouchTabBar& bar) {
    return new AccessibleParts<TabAccessible, TouchTabBar>(bar, QAccessible::PageTabList);
}

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

} // namespace kova
