#pragma once

class QAccessibleInterface;

namespace kova {

class TouchTabBar;

/// Tells assistive technology which tabs there are and which one is selected, as the toolkit's own tab bar
/// does not.
QAccessibleInterface* makeAccessibleTabBar(TouchTabBar& bar);

} // namespace kova
