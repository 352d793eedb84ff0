#pragma once
#include <QAccessible>
#include <QWidget>

#include <vector>

namespace kova::test {

/// A part of a window as assistive technology finds it.
struct AccessiblePart {
    QAccessibleInterface* accessible;
    QString path; ///< names from the window on
    [[nodiscard]] QAccessible::Role role() const { return accessible->role(); }
    [[nodiscard]] QString name() const { return accessible->text(QAccessible::Name); }
};

inline void addAccessibleParts(QAccessibleInterface* at, const QString& path,
                               std::vector<AccessiblePart>& found) {
    if (at == nullptr || !at->isValid() || at->state().invisible)
        return;
    const QString here = path + '/' + at->text(QAccessible::Name);
    found.push_back({at, here});
    for (int i = 0; i < at->childCount(); ++i)
        addAccessibleParts(at->child(i), here, found);
}

/// All that is visible, the window first.
inline std::vector<AccessiblePart> accessibleTree(QWidget& window) {
    std::vector<AccessiblePart> found;
    addAccessibleParts(QAccessible::queryAccessibleInterface(&window), {}, found);
    return found;
}

} // namespace kova::test
