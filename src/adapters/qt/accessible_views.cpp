#include "adapters/qt/accessible_views.h"

#include "adapters/qt/accessible_part.h"
#include "adapters/qt/button_grid_view.h"
#include "adapters/qt/buttons.h"
#include "adapters/qt/tab_control_view.h"
#include "screen/spoken_name.h"

#include <QApplication>

#include <algorithm>
#include <utility>

namespace kova {
namespace {

// Qt hands over any object of the process; this asks whether it is one of ours.
QAccessibleInterface* accessibleView(const QString&, QObject* object) {
    auto* const view = dynamic_cast<AccessibleView*>(object);
    return view == nullptr ? nullptr : view->makeAccessible();
}

QAccessible::UpdateHandler hostsHandler = nullptr;
/// What is to be told of a widget.
struct News {
    QPointer<QWidget> widget;
    QAccessible::Event what;
    friend bool operator==(const News&, const News&) = default;
};
std::vector<News> news;

void passOn(QAccessibleEvent* event) {
    if (hostsHandler != nullptr) {
        hostsHandler(event);
        return;
    }
    // The toolkit's own handler cannot be called: it is what there is without another.
    const QAccessible::UpdateHandler present = QAccessible::installUpdateHandler(nullptr);
    QAccessible::updateAccessibility(event);
    QAccessible::installUpdateHandler(present);
}

void tellNews() {
    const auto all = std::exchange(news, {});
    for (const News& told : all) {
        const auto isAround = [&](const News& other) {
            return other.what == QAccessible::ObjectShow && other.widget &&
                   other.widget->isAncestorOf(told.widget);
        };
        if (!told.widget || (told.what == QAccessible::ObjectShow &&
                             (!told.widget->isVisible() || std::ranges::any_of(all, isAround))))
            continue;
        QAccessibleEvent event(told.widget, told.what);
        passOn(&event);
    }
}

/// The widget that an event is about, or a part of which.
QWidget* widgetOf(const QAccessibleEvent& event) {
    QObject* object = event.object();
    if (object == nullptr)
        if (const QAccessibleInterface* const part = event.accessibleInterface())
            if (const QAccessibleInterface* const whole = part->parent())
                object = whole->object();
    return qobject_cast<QWidget*>(object);
}

/// Of a window of ours that is still being filled, nothing is told. What is shown is told later, when it is
/// known what it is a part of, and so is what is called something else, once; what goes, unless it is a part
/// of what does.
void tell(QAccessibleEvent* event) {
    QWidget* const widget = widgetOf(*event);
    if (widget == nullptr || dynamic_cast<const AccessibleView*>(widget->window()) == nullptr) {
        passOn(event);
        return;
    }
    if (!widget->window()->testAttribute(Qt::WA_WState_Created))
        return;
    const bool whole = event->object() == widget && event->child() < 0;
    const News told{widget, event->type()};
    switch (event->type()) {
    case QAccessible::ObjectHide:
        if (std::erase(news, News{widget, QAccessible::ObjectShow}) == 0 &&
            (widget->isWindow() || widget->parentWidget()->isVisible()))
            passOn(event);
        break;
    case QAccessible::ObjectShow:
    case QAccessible::NameChanged:
    case QAccessible::DescriptionChanged:
        if (whole) {
            std::erase_if(news, [](const News& old) { return !old.widget; }); // of an application that ended
            if (news.empty())
                QMetaObject::invokeMethod(qApp, &tellNews, Qt::QueuedConnection);
            if (std::ranges::find(news, told) == news.end())
                news.push_back(told);
            break;
        }
        [[fallthrough]];
    default:
        passOn(event);
    }
}

/// Whether a press of the widget, or of a part of it, reaches its model.
bool reaches(const QWidget& widget) {
    for (const QWidget* at = &widget; at != nullptr; at = at->parentWidget())
        if (const auto* const view = dynamic_cast<const ControlView*>(at))
            return widget.isEnabled() && widget.isVisible() && view->reachable() && !view->resting();
    return false;
}

class ButtonAccessible final : public QAccessibleWidget {
  public:
    ButtonAccessible(FaceButton& button, QAccessible::Role held)
        : QAccessibleWidget(&button), button_(button), held_(held) {}
    [[nodiscard]] QAccessible::Role role() const override {
        return button_.isCheckable() ? held_ : QAccessible::Button;
    }
    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.checkable = button_.isCheckable();
        state.checked = button_.isChecked();
        state.pressed = button_.isDown();
        return state;
    }
    [[nodiscard]] QStringList actionNames() const override {
        return reaches(button_) ? QStringList{pressAction()} + QAccessibleWidget::actionNames()
                                : QStringList();
    }
    void doAction(const QString& action) override {
        if (action != pressAction())
            QAccessibleWidget::doAction(action);
        else if (reaches(button_)) // later, as a press of a part is
            QMetaObject::invokeMethod(&button_, &QAbstractButton::click, Qt::QueuedConnection);
    }

  private:
    FaceButton& button_;
    QAccessible::Role held_;
};

/// One button of a grid: a rebuilt grid has its new buttons at once.
class CellAccessible final : public AccessiblePart<ButtonGridView> {
  public:
    CellAccessible(ButtonGridView& grid, int index) : AccessiblePart(grid), index_(index) {}
    static int count(const ButtonGridView& grid) { return grid.cellCount(); }
    static int at(const ButtonGridView& grid, const QPoint& point) {
        return grid.cells().at({double(point.x()), double(point.y())});
    }

    [[nodiscard]] bool isValid() const override {
        return widget() && widget()->cellButton(index_) != nullptr;
    }
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::RadioButton; }
    /// The key, which is not spoken, tells scripts which button it is.
    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        return isValid() && kind == QAccessible::UserText
                   ? QString::fromStdString(widget()->cellButton(index_)->key)
                   : AccessiblePart::text(kind);
    }

  protected:
    [[nodiscard]] QString name() const override {
        return QString::fromStdString(spokenNameOf(*widget()->cellButton(index_)));
    }
    [[nodiscard]] QRect place() const override {
        return look::toQt(widget()->cells().cell(index_)).toAlignedRect();
    }
    void addTo(QAccessible::State& state) const override {
        state.checkable = true;
        state.checked = widget()->cellButton(index_)->marked;
        state.offscreen = !widget()->cells().inSight(index_);
        state.focusable = widget()->isEnabled();
        state.focused = widget()->hasFocus() && widget()->currentCell() == index_;
    }
    [[nodiscard]] bool canPress() const override { return reaches(*widget()); }
    void press() override { widget()->touchCell(index_); }

  private:
    int index_;
};

class GridAccessible final : public AccessibleParts<CellAccessible, ButtonGridView> {
  public:
    explicit GridAccessible(ButtonGridView& grid) : AccessibleParts(grid, QAccessible::Grouping) {}
    [[nodiscard]] QAccessibleInterface* focusChild() const override {
        return shown().hasFocus() ? child(shown().currentCell()) : nullptr;
    }
};

class TabAccessible final : public AccessiblePart<TouchTabBar> {
  public:
    TabAccessible(TouchTabBar& bar, int index) : AccessiblePart(bar), index_(index) {}
    static int count(const TouchTabBar& bar) { return bar.count(); }
    static int at(const TouchTabBar& bar, const QPoint& point) { return bar.tabAt(point); }

    [[nodiscard]] bool isValid() const override { return widget() && index_ < widget()->count(); }
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::PageTab; }

  protected:
    [[nodiscard]] QString name() const override { return widget()->tabText(index_); }
    [[nodiscard]] QRect place() const override { return widget()->tabRect(index_); }
    void addTo(QAccessible::State& state) const override {
        state.invisible = !widget()->isVisible() || !widget()->isTabVisible(index_);
        state.selectable = true;
        state.selected = widget()->currentIndex() == index_;
        state.focusable = true;
        state.focused = state.selected && widget()->hasFocus();
    }
    [[nodiscard]] bool canPress() const override {
        return reaches(*widget()) && widget()->isTabVisible(index_);
    }
    void press() override {
        if (widget()->chosen)
            widget()->chosen(index_);
    }

  private:
    int index_;
};

} // namespace

void makeViewsAccessible() {
    QAccessible::installFactory(&accessibleView); // installs the same one once
    if (const auto before = QAccessible::installUpdateHandler(&tell); before != &tell)
        hostsHandler = before;
}

QAccessibleInterface* makeAccessibleButton(FaceButton& button, QAccessible::Role held) {
    return new ButtonAccessible(button, held);
}

QAccessibleInterface* makeAccessibleButtonGrid(ButtonGridView& grid) {
    return new GridAccessible(grid);
}

QAccessibleInterface* makeAccessibleTabBar(TouchTabBar& bar) {
    return new AccessibleParts<TabAccessible, TouchTabBar>(bar, QAccessible::PageTabList);
}

void tellButtons(ButtonGridView& grid, ToldButtons& told) {
    QAccessibleInterface* const whole =
        QAccessible::isActive() ? QAccessible::queryAccessibleInterface(static_cast<QWidget*>(&grid))
                                : nullptr;
    for (int index = 0; index < grid.cellCount(); ++index) {
        const ButtonGrid::Button& button = *grid.cellButton(index);
        const auto place = static_cast<std::size_t>(index);
        std::pair now(spokenNameOf(button), button.marked);
        const bool known = place < told.size();
        const auto before = known ? std::exchange(told[place], now) : std::pair(now.first, false);
        if (!known)
            told.push_back(now);
        if (whole == nullptr)
            continue;
        if (before.first != now.first) {
            QAccessibleEvent renamed(whole->child(index), QAccessible::NameChanged);
            QAccessible::updateAccessibility(&renamed);
        }
        if (before.second != now.second) {
            QAccessible::State changed;
            changed.checked = true;
            QAccessibleStateChangeEvent event(whole->child(index), changed);
            QAccessible::updateAccessibility(&event);
        }
    }
}

} // namespace kova
