#include "adapters/qt/accessible_views.h"

#include "adapters/qt/control_view.h"
#include "adapters/qt/page_notice_view.h"
#include "adapters/qt/read_back_view.h"
#include "adapters/qt/tab_bar_accessible.h"
#include "adapters/qt/tab_control_view.h"
#include "adapters/qt/window_frame.h"

#include <QAccessibleWidget>

namespace kova {
namespace {

QAccessibleInterface* accessibleView(const QString&, QObject* object) {
    if (auto* const view = dynamic_cast<ControlView*>(object))
        return view->makeAccessible();
    if (auto* const frame = dynamic_cast<WindowFrame*>(object))
        return new QAccessibleWidget(frame, QAccessible::Dialog);
    if (auto* const notice = dynamic_cast<PageNoticeView*>(object))
        return new QAccessibleWidget(notice, QAccessible::AlertMessage);
    if (auto* const readBack = dynamic_cast<ReadBackView*>(object))
        return new QAccessibleWidget(readBack, QAccessible::StaticText);
    if (auto* const bar = dynamic_cast<TouchTabBar*>(object))
        return makeAccessibleTabBar(*bar);
    return nullptr;
}

} // namespace

void makeViewsAccessible() {
    QAccessible::installFactory(&accessibleView); // installs the same one once
}

} // namespace kova
