#pragma once
#include <vector>

class QAccessibleInterface;

namespace kova {

class ButtonGridView;
class ReportGridView;
class TouchTabBar;

/// A view that knows what it is to assistive technology.
class AccessibleView {
  public:
    virtual ~AccessibleView() = default;
    /// Null where the toolkit knows it already. The toolkit owns what it is given.
    virtual QAccessibleInterface* makeAccessible() = 0;
};

/// From now on the toolkit asks each view. Calling it again is no error.
void makeViewsAccessible();

/// Buttons, which can be named and touched.
QAccessibleInterface* makeAccessibleButtonGrid(ButtonGridView& grid);
/// Tells which buttons are marked, or no longer, since `known` was filled, and fills it again.
void tellMarks(ButtonGridView& grid, std::vector<bool>& known);

/// A table: column headers, and below them its rows.
QAccessibleInterface* makeAccessibleReportGrid(ReportGridView& view);

/// Which tabs there are and which one is selected, as the toolkit's own tab bar does not.
QAccessibleInterface* makeAccessibleTabBar(TouchTabBar& bar);

} // namespace kova
