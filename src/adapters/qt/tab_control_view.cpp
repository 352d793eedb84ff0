#include "adapters/qt/tab_control_view.h"

#include "adapters/qt/window_frame.h"
#include "screen/physical_keys.h"

#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace kova {
namespace {

const Font Selected{.points = look::LegiblePoints, .bold = true};
const Font Other{.points = look::LegiblePoints};

class AsTabControl : public ControlVisitor {
  public:
    void visit(TabControl& found) override { tabs = &found; }
    TabControl* tabs = nullptr;
};

TabControl& tabsOf(const TabPage& page) {
    AsTabControl parent;
    page.parent()->accept(parent); // a page stands on nothing else
    return *parent.tabs;
}

} // namespace

TouchTabBar::TouchTabBar(QWidget& parent) : QTabBar(&parent) {
    setDrawBase(false);
    setExpanding(false);
    setUsesScrollButtons(false);
    setElideMode(Qt::ElideRight);
    setFocusPolicy(Qt::TabFocus);
}

void TouchTabBar::setLooks(const Looks& looks) {
    looks_ = looks;
    setFont(look::font(Selected, looks.scale)); // also makes the tabs ask for their sizes again
    update();
}

QSize TouchTabBar::tabSizeHint(int index) const {
    const QFontMetrics metrics(look::font(Selected, looks_.scale));
    const double padding = 48 * looks_.scale.smaller();
    const double least = 160 * looks_.scale.x;
    return {static_cast<int>(std::max(least, metrics.horizontalAdvance(tabText(index)) + padding)), height()};
}

void TouchTabBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), looks_.backdrop);
    const double unit = looks_.scale.smaller();
    for (int index = 0; index < count(); ++index) {
        if (!isTabVisible(index))
            continue;
        const bool current = index == currentIndex();
        QColor fill = current ? looks_.page
                              : look::mixed(looks_.backdrop, palette::OtherTab,
                                            look::isDark(looks_.backdrop) ? 0.5 : 0.14);
        if (index == pressed_)
            fill = look::mixed(fill, look::accentOn(fill), 0.25);
        const QRectF tab = QRectF(tabRect(index)).adjusted(unit * 2, unit * 3, -unit * 2, unit * 8);
        painter.setPen(QPen(look::borderOn(fill, looks_.backdrop), look::lineWidth(unit)));
        painter.setBrush(fill);
        painter.drawRoundedRect(tab, look::BoardRadius * unit, look::BoardRadius * unit);
        if (current) { // the mark of the selected tab, besides its weight
            const QRectF mark(tab.left() + 10 * unit, tabRect(index).bottom() - 5 * unit,
                              tab.width() - 20 * unit, 4 * unit);
            painter.setPen(Qt::NoPen);
            painter.setBrush(look::accentOn(fill));
            painter.drawRoundedRect(mark, 2 * unit, 2 * unit);
        }
        if (current && hasFocus()) {
            painter.setPen(QPen(look::accentOn(fill), unit, Qt::DashLine));
            painter.setBrush(Qt::NoBrush);
            painter.drawRoundedRect(tab.adjusted(4 * unit, 4 * unit, -4 * unit, -14 * unit), 4 * unit,
                                    4 * unit);
        }
        const QColor text = look::inkOn(fill);
        painter.setPen(isEnabled() ? text : look::faded(text, fill));
        look::drawText(painter, QRectF(tabRect(index)).adjusted(10 * unit, 4 * unit, -10 * unit, -5 * unit),
                       tabText(index), look::font(current ? Selected : Other, looks_.scale),
                       {.wrapped = false});
    }
}

void TouchTabBar::mousePressEvent(QMouseEvent* event) {
    pressed_ = event->button() == Qt::LeftButton ? tabAt(event->position().toPoint()) : -1;
    update();
}

void TouchTabBar::mouseReleaseEvent(QMouseEvent* event) {
    const int released = std::exchange(pressed_, -1);
    update();
    if (released >= 0 && released == tabAt(event->position().toPoint()) && touched)
        touched(released);
}

void TouchTabBar::keyPressEvent(QKeyEvent* event) {
    const int step = event->key() == Qt::Key_Left ? -1 : event->key() == Qt::Key_Right ? 1 : 0;
    if (step == 0)
        event->ignore();
    else if (const int next = currentIndex() + step; next >= 0 && next < count() && touched)
        touched(next);
}

TabControlView::TabControlView(TabControl& tabs, WindowFrame& frame, QWidget& parent)
    : QWidget(&parent), ModelView(tabs, frame), bar_(new TouchTabBar(*this)) {
    nameWidget();
    bar_->setObjectName(objectName() + "_tabs");
    bar_->setAccessibleName(accessibleName());
    bar_->touched = [this](int index) { act([=](TabControl& target) { target.touchTab(index); }); };
    bar_->chosen = [this](int index) {
        bar_->touched(index);
        focusPage();
    };
    for (TabPage* page : tabs.pages())
        pages_.push_back(page->changed.connect([this](Property) { layOut(); }));
    pages_.push_back(tabs.window().changed.connect([this](Property property) {
        if (property == Property::BackColor)
            layOut();
    }));
}

// Who chose the page without a finger is where the focus is, which must not stay on one that is hidden.
void TabControlView::focusPage() {
    if (model() == nullptr || isReachable(model()->window().focus()))
        return;
    const auto& pages = model()->pages();
    const auto selected = static_cast<std::size_t>(model()->selected());
    if (selected < pages.size())
        if (Control* const first = firstTabStop(model()->window(), *pages[selected]))
            act([&](TabControl& tabs) { tabs.window().moveFocus(*first); });
}

void TabControlView::showSpokenName(const QString& name) {
    ControlView::showSpokenName(name);
    bar_->setAccessibleName(name);
}

QAccessibleInterface* TabControlView::makeAccessible() {
    return new QAccessibleWidget(this, QAccessible::Grouping);
}

void TabControlView::detach() {
    pages_.clear();
    ModelView::detach();
}

void TabControlView::layOut() {
    ControlView::layOut();
    int height = 0;
    for (const TabPage* page : model()->pages())
        height = frame().pixels(*page).top();
    bar_->setGeometry(0, 0, width(), height);
    showTabs();
}

void TabControlView::showTabs() {
    const auto& pages = model()->pages();
    const auto count = static_cast<int>(pages.size());
    while (bar_->count() < count)
        bar_->addTab({});
    QColor background = backdrop();
    for (int index = 0; index < count; ++index) {
        const TabPage& page = *pages[static_cast<std::size_t>(index)];
        bar_->setTabText(index, QString::fromStdString(page.caption()));
        bar_->setTabVisible(index, page.visible());
        if (index == model()->selected())
            background = look::toQt(page.backColor());
    }
    bar_->setLooks({scale(), backdrop(), background});
    const int before = bar_->currentIndex();
    bar_->setCurrentIndex(model()->selected()); // which tells of the new one
    if (before != model()->selected() && before >= 0) {
        QAccessibleEvent left(bar_, QAccessible::SelectionRemove);
        left.setChild(before);
        QAccessible::updateAccessibility(&left);
    }
    bar_->setEnabled(model()->enabled());
}

void TabControlView::showProperty(Property property) {
    if (property == Property::SelectedTab || property == Property::Enabled)
        showTabs();
    ControlView::showProperty(property);
}

TabPageView::TabPageView(TabPage& page, WindowFrame& frame, QWidget& parent)
    : QWidget(&parent), ModelView(page, frame) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    nameWidget();
    selection_ = tabsOf(page).changed.connect([this](Property property) {
        if (property == Property::SelectedTab)
            showProperty(Property::Visible);
    });
}

void TabPageView::detach() {
    selection_.disconnect();
    ModelView::detach();
}

bool TabPageView::drawnVisible() const {
    const TabControl& tabs = tabsOf(*model());
    const auto selected = static_cast<std::size_t>(tabs.selected());
    return model()->visible() && selected < tabs.pages().size() && tabs.pages()[selected] == model();
}

void TabPageView::showProperty(Property property) {
    if (property == Property::Caption)
        frame().neighbourRenamed();
    ControlView::showProperty(property);
}

QAccessibleInterface* TabPageView::makeAccessible() {
    return new QAccessibleWidget(this, QAccessible::Pane);
}

void TabPageView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), model() != nullptr ? look::toQt(model()->backColor()) : palette::Paper);
}

} // namespace kova
