#pragma once
#include <QAccessible>
#include <QAccessibleWidget>
#include <QPointer>
#include <QWidget>

#include <vector>

namespace kova {

/// A part of a widget that is no widget itself, but one to assistive technology: it has a name, a place and a
/// state, and can be pressed. It is known by its position, where later something else may stand, or nothing.
template <class Widget>
class AccessiblePart : public QAccessibleInterface, public QAccessibleActionInterface {
  public:
    explicit AccessiblePart(Widget& widget) : widget_(&widget) {}

    [[nodiscard]] QObject* object() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* parent() const override {
        return widget_ ? QAccessible::queryAccessibleInterface(static_cast<QWidget*>(widget_)) : nullptr;
    }
    [[nodiscard]] QAccessibleInterface* child(int) const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        return isValid() && kind == QAccessible::Name ? name() : QString();
    }
    void setText(QAccessible::Text, const QString&) override {}
    [[nodiscard]] QRect rect() const override {
        if (!isValid())
            return {};
        const QRect inside = place();
        return {widget_->mapToGlobal(inside.topLeft()), inside.size()};
    }
    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state;
        state.invalid = !isValid();
        if (isValid()) {
            state.disabled = !widget_->isEnabled();
            state.invisible = !widget_->isVisible();
            addTo(state);
        }
        return state;
    }
    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                    : nullptr;
    }

    /// None where a press would come to nothing, so that who asks for one is told no.
    [[nodiscard]] QStringList actionNames() const override {
        return isValid() && canPress() ? QStringList{pressAction()} : QStringList{};
    }
    /// The press comes later: it may end in a message that waits, and who asked waits for a moment only.
    void doAction(const QString& action) override {
        if (!actionNames().contains(action))
            return;
        const QAccessible::Id id = QAccessible::uniqueId(this);
        QMetaObject::invokeMethod(
            static_cast<QWidget*>(widget_),
            [id, this, action] {
                if (QAccessible::accessibleInterface(id) == this && isValid())
                    perform(action);
            },
            Qt::QueuedConnection);
    }
    [[nodiscard]] QStringList keyBindingsForAction(const QString&) const override { return {}; }

  protected:
    [[nodiscard]] Widget* widget() const { return widget_; } ///< null once it is gone
    // Called while valid.
    [[nodiscard]] virtual QString name() const = 0;
    [[nodiscard]] virtual QRect place() const = 0; ///< in the widget
    virtual void addTo(QAccessible::State& state) const = 0;
    [[nodiscard]] virtual bool canPress() const = 0;
    virtual void press() = 0;
    /// Another of the actions named.
    virtual void perform(const QString& action) {
        if (action == pressAction())
            press();
    }

  private:
    QPointer<Widget> widget_;
};

/// A widget whose children are parts: `Part` is made with the widget and its number, and says by `count` and
/// `at` how many there are and which one is at a point. QAccessible owns each from the first time it is asked
/// for; they go with this.
template <class Part, class Widget>
class AccessibleParts : public QAccessibleWidget {
  public:
    AccessibleParts(Widget& widget, QAccessible::Role role)
        : QAccessibleWidget(&widget, role), widget_(widget) {}
    AccessibleParts(const AccessibleParts&) = delete;
    AccessibleParts& operator=(const AccessibleParts&) = delete;
    ~AccessibleParts() override {
        for (const QAccessible::Id id : ids_)
            QAccessible::deleteAccessibleInterface(id);
    }

    [[nodiscard]] int childCount() const override { return Part::count(widget_); }
    [[nodiscard]] QAccessibleInterface* child(int index) const override {
        if (index < 0 || index >= childCount())
            return nullptr;
        while (ids_.size() <= static_cast<std::size_t>(index))
            ids_.push_back(
                QAccessible::registerAccessibleInterface(new Part(widget_, static_cast<int>(ids_.size()))));
        return QAccessible::accessibleInterface(ids_[static_cast<std::size_t>(index)]);
    }
    int indexOfChild(const QAccessibleInterface* wanted) const override {
        for (int index = 0; index < childCount(); ++index)
            if (child(index) == wanted)
                return index;
        return -1;
    }
    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override {
        return child(Part::at(widget_, widget_.mapFromGlobal(QPoint(x, y))));
    }

  protected:
    [[nodiscard]] Widget& shown() const { return widget_; }

  private:
    Widget& widget_;
    mutable std::vector<QAccessible::Id> ids_;
};

} // namespace kova
