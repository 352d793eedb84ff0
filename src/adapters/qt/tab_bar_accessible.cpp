#include "adapters/qt/tab_bar_accessible.h"

#include "adapters/qt/accessible_children.h"
#include "adapters/qt/tab_control_view.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QPointer>

namespace kova {
namespace {

class TabAccessible final : public QAccessibleInterface, public QAccessibleActionInterface {
  public:
    TabAccessible(TouchTabBar& bar, int index) : bar_(&bar), index_(index) {}

    [[nodiscard]] bool isValid() const override { return bar_ && index_ < bar_->count(); }
    [[nodiscard]] QObject* object() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* parent() const override {
        return bar_ ? QAccessible::queryAccessibleInterface(static_cast<QWidget*>(bar_)) : nullptr;
    }
    [[nodiscard]] QAccessibleInterface* child(int) const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::PageTab; }
    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        return isValid() && kind == QAccessible::Name ? bar_->tabText(index_) : QString();
    }
    void setText(QAccessible::Text, const QString&) override {}
    [[nodiscard]] QRect rect() const override {
        if (!isValid())
            return {};
        const QRect tab = bar_->tabRect(index_);
        return {bar_->mapToGlobal(tab.topLeft()), tab.size()};
    }
    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state;
        state.invalid = !isValid();
        if (isValid()) {
            state.disabled = !bar_->isEnabled();
            state.invisible = !bar_->isVisible() || !bar_->isTabVisible(index_);
            state.selectable = true;
            state.selected = bar_->currentIndex() == index_;
            state.focusable = true;
            state.focused = state.selected && bar_->hasFocus();
        }
        return state;
    }
    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                    : nullptr;
    }

    [[nodiscard]] QStringList actionNames() const override { return {pressAction()}; }
    void doAction(const QString& action) override {
        if (isValid() && action == pressAction() && bar_->touched)
            bar_->touched(index_);
    }
    [[nodiscard]] QStringList keyBindingsForAction(const QString&) const override { return {}; }

  private:
    QPointer<TouchTabBar> bar_;
    int index_;
};

class TabBarAccessible final : public QAccessibleWidget {
  public:
    explicit TabBarAccessible(TouchTabBar& bar)
        : QAccessibleWidget(&bar, QAccessible::PageTabList), bar_(bar) {}

    [[nodiscard]] int childCount() const override { return bar_.count(); }
    [[nodiscard]] QAccessibleInterface* child(int index) const override {
        return tabs_.at(index, childCount());
    }
    int indexOfChild(const QAccessibleInterface* wanted) const override {
        return tabs_.indexOf(wanted, childCount());
    }
    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override {
        return child(bar_.tabAt(bar_.mapFromGlobal(QPoint(x, y))));
    }

  private:
    TouchTabBar& bar_;
    mutable AccessibleChildren<TabAccessible, TouchTabBar> tabs_{bar_};
};

} // namespace

QAccessibleInterface* makeAccessibleTabBar(TouchTabBar& bar) {
    return new TabBarAccessible(bar);
}

} // namespace kova
