#include "widgets/tab_control.h"

namespace kova {

TabPage::TabPage(TabControl& tabs, std::string name, const Rect& bounds, std::string caption)
    : ControlOfKind({&tabs, std::move(name), bounds}, std::move(caption), colors::White) {
    tabs.pages_.push_back(this);
}

bool TabControl::showsChild(const Control& child) const {
    const auto index = static_cast<std::size_t>(selected_);
    return index < pages_.size() && pages_[index] == &child;
}

Gesture TabControl::touchTab(int index) {
    const Gesture reached = reach();
    if (reached != Gesture::Done || index == selected_)
        return reached;
    select(index);
    selectedChanged(index); // may destroy this control
    return reached;
}

} // namespace kova
