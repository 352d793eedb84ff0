#include "player/qt/pointing.h"

#include "adapters/qt/button_grid_view.h"
#include "adapters/qt/buttons.h"
#include "adapters/qt/user_interface.h"
#include "player/qt/gestures.h"

#include <QAbstractScrollArea>
#include <QTabBar>

namespace kova {
namespace {

using Place = std::optional<TouchPoint>;

Place middle(QWidget& widget) {
    return widget.size().isEmpty() ? Place() : TouchPoint{&widget, QRectF(widget.rect()).center()};
}

Place cell(ButtonGridView& grid, const std::string& key) {
    for (int index = 0; index < grid.cellCount() && !grid.size().isEmpty(); ++index)
        if (grid.cellButton(index)->key == key) {
            grid.scrollTo(index);
            return TouchPoint{&grid, look::toQt(grid.cells().cell(index)).center()};
        }
    return std::nullopt;
}

Place tab(QTabBar& bar, const std::string& number) {
    for (int index = 0; index < bar.count(); ++index)
        if (const QPoint place = bar.tabRect(index).center();
            std::to_string(index) == number && bar.tabAt(place) == index)
            return TouchPoint{&bar, QPointF(place)};
    return std::nullopt;
}

Place key(const QWidget& board, const std::string& wanted) {
    for (QObject* const child : board.children())
        if (auto* const button = dynamic_cast<KeyButton*>(child);
            button != nullptr && (button->key() == wanted || button->key() == keyNamed(wanted)))
            return middle(*button);
    return std::nullopt;
}

} // namespace

std::optional<TouchPoint> touchPoint(const QtUserInterface& userInterface, Control& control,
                                     const std::optional<std::string>& part) {
    ControlView* const view = userInterface.view(control);
    if (view == nullptr)
        return std::nullopt;
    QWidget& widget = view->widget();
    if (!part) {
        auto* const scrolled = qobject_cast<QAbstractScrollArea*>(&widget);
        return middle(scrolled != nullptr ? *scrolled->viewport() : widget);
    }
    if (auto* const grid = dynamic_cast<ButtonGridView*>(view))
        return cell(*grid, *part);
    if (auto* const bar = widget.findChild<QTabBar*>(QString(), Qt::FindDirectChildrenOnly))
        return tab(*bar, *part);
    return key(widget, *part);
}

} // namespace kova
