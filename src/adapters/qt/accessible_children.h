#pragma once
#include <QAccessible>

#include <vector>

namespace kova {

/// The parts of one widget that assistive technology sees as children, by their number. QAccessible owns each
/// from the first time it is asked for; they go with this.
template <class Child, class Widget>
class AccessibleChildren {
  public:
    explicit AccessibleChildren(Widget& widget) : widget_(widget) {}
    AccessibleChildren(const AccessibleChildren&) = delete;
    AccessibleChildren& operator=(const AccessibleChildren&) = delete;
    ~AccessibleChildren() {
        for (const QAccessible::Id id : ids_)
            QAccessible::deleteAccessibleInterface(id);
    }
    /// Null for a number that is not in [0, `count`).
    [[nodiscard]] QAccessibleInterface* at(int index, int count) {
        if (index < 0 || index >= count)
            return nullptr;
        while (ids_.size() <= static_cast<std::size_t>(index))
            ids_.push_back(
                QAccessible::registerAccessibleInterface(new Child(widget_, static_cast<int>(ids_.size()))));
        return QAccessible::accessibleInterface(ids_[static_cast<std::size_t>(index)]);
    }
    /// -1 for a stranger.
    [[nodiscard]] int indexOf(const QAccessibleInterface* wanted, int count) {
        for (int index = 0; index < count; ++index)
            if (at(index, count) == wanted)
                return index;
        return -1;
    }

  private:
    Widget& widget_;
    std::vector<QAccessible::Id> ids_;
};

} // namespace kova
