#pragma once
#include <QAccessible>

#include <string>
#include <utility>
#include <vector>

namespace kova {

class ButtonGridView;
class FaceButton;
class ReportGridView;
class TouchTabBar;

/// A view that knows what it is to assistive technology.
class AccessibleView {
  public:
    virtual ~AccessibleView() = default;
    /// Null where the toolkit knows it already. The toolkit owns what it is given.
    virtual QAccessibleInterface* makeAccessible() = 0;
};

/// From now on the toolkit asks each view, and tells of a window that is still being filled, or that goes, as
/// a whole. Calling it again is no error.
void makeViewsAccessible();

/// A button whose being held down is its model's business: it is pressed, and `held` is what it is while it
/// can be held down.
QAccessibleInterface* makeAccessibleButton(FaceButton& button,
                                           QAccessible::Role held = QAccessible::CheckBox);

/// Buttons, which can be named and touched.
QAccessibleInterface* makeAccessibleButtonGrid(ButtonGridView& grid);
/// What was last told of each button: its name, and whether it is marked. Buttons that a grid lost are kept.
using ToldButtons = std::vector<std::pair<std::string, bool>>;
/// Tells what has changed of the buttons since `told` was filled, and fills it again.
void tellButtons(ButtonGridView& grid, ToldButtons& told);

/// A table: column headers, and below them its rows.
QAccessibleInterface* makeAccessibleReportGrid(ReportGridView& view);
enum class ToldOfGrid { All, Description, Focus };
/// Tells what a change of the model's records or rows means, or of what the list is said to be, or which cell
/// the keys have reached; nothing where that is as it was.
void tellReportGrid(ReportGridView& view, ToldOfGrid what);

/// Which tabs there are and which one is selected, as the toolkit's own tab bar does not.
QAccessibleInterface* makeAccessibleTabBar(TouchTabBar& bar);

} // namespace kova
