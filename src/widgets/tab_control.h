#pragma once
#include "widgets/control.h"

#include <vector>

namespace kova {

class TabControl;

/// One page of a tab control; its caption stands on the tab.
class TabPage : public ControlOfKind<TabPage, CaptionedControl> {
  public:
    TabPage(TabControl& tabs, std::string name, const Rect& bounds, std::string caption);
};

/// Pages of which one is selected.
class TabControl : public ControlOfKind<TabControl> {
  public:
    using ControlOfKind::ControlOfKind;
    [[nodiscard]] const std::vector<TabPage*>& pages() const { return pages_; }
    [[nodiscard]] int selected() const { return selected_; }
    void select(int index) { assign(selected_, index, Property::SelectedTab); }
    /// The cashier's touch on a tab. Touching the selected one changes nothing.
    Gesture touchTab(int index);
    Signal<int> selectedChanged; ///< by touch; the index of the page now selected

  protected:
    [[nodiscard]] bool showsChild(const Control& child) const override;

  private:
    friend class TabPage;
    std::vector<TabPage*> pages_;
    int selected_ = 0;
};

} // namespace kova
