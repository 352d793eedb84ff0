#include "adapters/qt/window_frame.h"

#include "adapters/qt/accessible_views.h"
#include "adapters/qt/key_help.h"
#include "adapters/qt/notice_views.h"
#include "screen/physical_keys.h"

#include <QAccessibleWidget>
#include <QApplication>
#include <QCloseEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>
#include <QWindow>

#include <algorithm>
#include <cmath>

namespace kova {
namespace {

constexpr double KeptMargin = 24; // around what is kept in sight, in design pixels: its title, the title bar
constexpr double LargestShare = 0.96; // of the screen, for a window in front of the dialog

int rounded(double value) {
    return static_cast<int>(std::lround(value));
}

/// Moved as little as it takes; what is larger begins where the room does.
QRect movedInto(const QRect& room, QRect place) {
    place.moveLeft(std::max(room.left(), std::min(place.left(), room.right() - place.width() + 1)));
    place.moveTop(std::max(room.top(), std::min(place.top(), room.bottom() - place.height() + 1)));
    return place;
}

/// The nearest place beside `kept` that is on the screen; where there is none, the same one.
QRect movedOff(const QRect& kept, const QRect& place, const QRect& screen) {
    if (!place.intersects(kept))
        return place;
    const QPoint moves[] = {{kept.right() + 1 - place.left(), 0},
                            {kept.left() - 1 - place.right(), 0},
                            {0, kept.bottom() + 1 - place.top()},
                            {0, kept.top() - 1 - place.bottom()}};
    QPoint least;
    for (const QPoint& move : moves)
        if (screen.contains(place.translated(move)) &&
            (least.isNull() || move.manhattanLength() < least.manhattanLength()))
            least = move;
    return place.translated(least);
}

} // namespace

WindowFrame::WindowFrame(Window& window, QtEventLoop& loop, const RegionalSettings& regional, Wording& words,
                         const QSize& surface, WId hostWindow)
    : window_(&window), loop_(loop), regional_(regional), words_(words), surface_(surface),
      hostWindow_(hostWindow) {
    makeViewsAccessible();
    setObjectName(QString::fromStdString(window.name()));
    setAttribute(Qt::WA_QuitOnClose, false);
    setAttribute(Qt::WA_OpaquePaintEvent);
    if (hostWindow_ != 0) // X11 is told of a window below for dialogs alone
        setWindowFlag(Qt::Dialog);
    setWindowTitle(QString::fromStdString(window.caption()));
    makeViews();
    resize(initialSize(room(windowBelow())));
    layOut();
    connections_.push_back(window.changed.connect([this](Property property) { showProperty(property); }));
    connections_.push_back(window.activated.connect([this] { comeToFront(); }));
    connections_.push_back(words.changed.connect([this] { showWords(); }));
    showOrHide();
}

WindowFrame::~WindowFrame() = default;

QAccessibleInterface* WindowFrame::makeAccessible() {
    return new QAccessibleWidget(this, QAccessible::Dialog);
}

void WindowFrame::makeViews() {
    for (Control* control : window_->controls()) {
        ControlView* const above = control->parent() == window_ ? nullptr : view(*control->parent());
        views_[control] = makeView(*control, *this, above == nullptr ? *this : above->widget());
    }
    if (PageNotice* const notice = window_->notice()) {
        ControlView* const page = view(notice->page());
        notice_ = new PageNoticeView(*notice, *this, page == nullptr ? *this : page->widget());
    }
    complete_ = true;
}

void WindowFrame::detach() {
    window_ = nullptr;
    connections_.clear();
    for (const auto& [control, view] : views_)
        view->detach();
    views_.clear();
    if (notice_ != nullptr)
        notice_->detach();
    hide();
}

ControlView* WindowFrame::view(const Control& control) const {
    const auto found = views_.find(&control);
    return found == views_.end() ? nullptr : found->second;
}

// Edges are rounded on the whole surface, so that neighbours stay neighbours at every scale.
QRect WindowFrame::pixels(const Control& parent, const Rect& bounds) const {
    Twips left;
    Twips top;
    for (const Control* above = &parent; above != window_; above = above->parent()) {
        left = left + above->bounds().left;
        top = top + above->bounds().top;
    }
    const auto x = [this](Twips at) { return rounded(designPixels(at) * scale_.x); };
    const auto y = [this](Twips at) { return rounded(designPixels(at) * scale_.y); };
    const QPoint origin(x(left), y(top));
    const QPoint topLeft(x(left + bounds.left), y(top + bounds.top));
    const QPoint bottomRight(x(left + bounds.right()), y(top + bounds.bottom()));
    return QRect(topLeft - origin, QSize(bottomRight.x() - topLeft.x(), bottomRight.y() - topLeft.y()));
}

QRect WindowFrame::pixels(const Control& control) const {
    return pixels(*control.parent(), control.bounds());
}

bool WindowFrame::fillsScreen() const {
    return surface_.isEmpty() && designPixels(window_->bounds().width) >= DesignSurface.width &&
           designPixels(window_->bounds().height) >= DesignSurface.height;
}

// The window manager frames it as it frames the one below, which shows how much of the screen it leaves.
QRect WindowFrame::room(const QWindow* below) const {
    if (below == nullptr)
        return screen()->availableGeometry();
    QRect free = below->screen()->availableGeometry();
    if (below->windowStates().testFlag(Qt::WindowMaximized))
        free &= below->frameGeometry();
    return free.marginsRemoved(below->frameMargins());
}

QSize WindowFrame::initialSize(const QRect& room) const {
    const QSize surface = surface_.isEmpty() ? room.size() : surface_;
    const double x = surface.width() / DesignSurface.width;
    const double y = surface.height() / DesignSurface.height;
    const double width = designPixels(window_->bounds().width);
    const double height = designPixels(window_->bounds().height);
    if (width >= DesignSurface.width && height >= DesignSurface.height)
        return surface;
    const double whole = std::min(surface.width() / width, surface.height() / height);
    double both = std::min(x, y);
    if (height > DesignSurface.height / 2) // it covers the dialog anyway: fingers need the room that is left
        both = std::max(both, LargestShare * whole);
    both = std::min(both, whole);
    return {rounded(width * both), rounded(height * both)};
}

void WindowFrame::layOut() {
    if (window_ == nullptr)
        return;
    laidOut_ = size();
    scale_ = {width() / std::max(1.0, designPixels(window_->bounds().width)),
              height() / std::max(1.0, designPixels(window_->bounds().height))};
    for (Control* control : window_->controls())
        if (ControlView* const drawn = view(*control))
            drawn->showAll();
    if (notice_ != nullptr)
        notice_->layOut();
}

void WindowFrame::neighbourMoved() {
    if (!complete_)
        return;
    for (const auto& [control, view] : views_)
        view->neighbourMoved();
    neighbourRenamed();
}

void WindowFrame::neighbourRenamed() {
    if (!complete_)
        return;
    for (const auto& [control, view] : views_)
        view->updateSpokenName();
}

void WindowFrame::showProperty(Property property) {
    switch (property) {
    case Property::Visible:
        showOrHide();
        break;
    case Property::Caption:
    case Property::Title:
        setWindowTitle(QString::fromStdString(window_->caption()));
        neighbourRenamed();
        break;
    case Property::Focus:
        followFocus();
        break;
    case Property::Bounds:
        resize(initialSize(room(windowBelow())));
        layOut();
        break;
    default:
        update();
        break;
    }
}

void WindowFrame::showWords() {
    for (const auto& [control, view] : views_)
        view->showWords();
    // Later, since the captions that the help repeats change after this.
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (window_ != nullptr && hideKeyHelp(*this))
                showKeyHelp(*this);
        },
        Qt::QueuedConnection);
}

void WindowFrame::showOrHide() {
    if (!window_->visible()) {
        hide();
        return;
    }
    setWindowModality(window_->modal() ? Qt::ApplicationModal : Qt::NonModal);
    QWindow* const below = windowBelow();
    moveToPlace(below);
    winId(); // makes the native window, so that it can be told which one it stands in front of
    if (below != nullptr)
        windowHandle()->setTransientParent(below);
    connect(windowHandle(), &QWindow::screenChanged, this, &WindowFrame::frameChanged, Qt::UniqueConnection);
    if (window_->modal())
        hostWindows_ = std::make_unique<HostWindows>(*this);
    QWidget::show();
    followFocus();
}

QWindow* WindowFrame::windowBelow() {
    if (const QWidget* const active = QApplication::activeWindow())
        return active == this ? nullptr : active->window()->windowHandle();
    if (hostWindow_ != 0)
        hostWindowHandle_.reset(QWindow::fromWinId(hostWindow_));
    return hostWindowHandle_.get();
}

QRect WindowFrame::keptInSight() const {
    const Control* const kept = window_->keptInSight();
    if (kept == nullptr)
        return {};
    for (const QWidget* const one : QApplication::topLevelWidgets()) {
        const auto* const frame = dynamic_cast<const WindowFrame*>(one);
        ControlView* const drawn = frame == nullptr ? nullptr : frame->view(*kept);
        if (drawn == nullptr || !drawn->widget().isVisible())
            continue;
        const int margin = rounded(KeptMargin * frame->scale().smaller());
        return QRect(drawn->widget().mapToGlobal(QPoint()), drawn->widget().size())
            .marginsAdded({margin, margin, margin, margin});
    }
    return {};
}

// X11's part of Qt asks nothing about other toolkits' windows.
QRect areaOf(const QWindow& window) {
    const QRect area(window.mapToGlobal(QPoint()), window.size());
    return area.isEmpty() ? window.screen()->availableGeometry() : area;
}

void WindowFrame::moveToPlace(QWindow* below) {
    if (fillsScreen()) { // all of it, unless a window manager knows better
        setGeometry((below != nullptr ? below->screen() : screen())->availableGeometry());
        setWindowState(Qt::WindowMaximized);
        return;
    }
    const QRect room = this->room(below);
    QRect place(QPoint(), initialSize(room));
    place.moveCenter((below != nullptr ? areaOf(*below) : room).center());
    if (const QRect kept = keptInSight(); !kept.isEmpty())
        place = movedOff(kept, place, room);
    const QMargins edge = below != nullptr ? below->frameMargins() : QMargins();
    resize(place.size());
    move(movedInto(room, place).topLeft() - QPoint(edge.left(), edge.top()));
}

// As it may not after it was restored, moved to another screen or framed unlike the window below.
void WindowFrame::stayInRoom() {
    if (window_ == nullptr || !surface_.isEmpty() || !isVisible() || isMinimized())
        return;
    const QRect room = screen()->availableGeometry().marginsRemoved(windowHandle()->frameMargins());
    constexpr int Rounded = 1; // where a pixel of the toolkit is several of the screen
    if (room.marginsAdded({Rounded, Rounded, Rounded, Rounded}).contains(geometry()))
        return;
    const QRect place(geometry().topLeft(), initialSize(room).boundedTo(room.size()));
    setGeometry(movedInto(room, place));
}

void WindowFrame::comeToFront() {
    const auto modality = window_->modal() ? Qt::ApplicationModal : Qt::NonModal;
    if (windowModality() != modality) { // takes effect only when it is shown again
        hide();
        showOrHide();
    }
    if (QGuiApplication::platformName() != "offscreen") // which would complain
        raise();
    activateWindow();
}

void WindowFrame::followFocus() {
    if (window_ == nullptr || !complete_ || window_->focus() == nullptr)
        return;
    ControlView* const focused = view(*window_->focus());
    if (focused == nullptr)
        return;
    QWidget& keyboard = focused->keyboardWidget();
    if (focusWidget() != &keyboard && keyboard.isEnabled() && keyboard.isVisibleTo(this))
        keyboard.setFocus(Qt::OtherFocusReason);
}

void WindowFrame::moveFocus(bool forward) {
    if (window_ == nullptr)
        return;
    ControlView* const focused = window_->focus() == nullptr ? nullptr : view(*window_->focus());
    if (focused != nullptr && focused->moveFocusInside(forward))
        return;
    if (Control* const target = nextTabStop(*window_, forward))
        loop_.runHandler([&] { window_->moveFocus(*target); });
}

void WindowFrame::takeKey(const QEvent& event) {
    QString text;
    if (event.type() == QEvent::InputMethod) {
        text = static_cast<const QInputMethodEvent&>(event).commitString();
    } else if (event.type() == QEvent::KeyPress) {
        const auto& key = static_cast<const QKeyEvent&>(event);
        if ((key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) == 0)
            text = key.text();
    }
    for (const char32_t character : text.toStdU32String())
        loop_.runHandler([&] {
            if (window_ != nullptr) // the key before may have closed it
                window_->typeCharacter(character);
        });
}

void WindowFrame::closeEvent(QCloseEvent* event) {
    event->ignore();
    // It has no time. Nobody sees that the screen goes on, and wants it closed, as soon as this.
    constexpr std::chrono::milliseconds Reaction{150};
    if (event->spontaneous() && loop_.unansweredBefore(Reaction))
        return;
    if (Window* const asked = window_)
        loop_.runHandler([&] { asked->requestClose(); });
}

void WindowFrame::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), window_ != nullptr ? look::toQt(window_->backColor()) : palette::Paper);
}

void WindowFrame::resizeEvent(QResizeEvent*) {
    if (complete_ && size() != laidOut_) // the toolkit tells the first size again when it shows it
        layOut();
    frameChanged();
}

void WindowFrame::moveEvent(QMoveEvent*) {
    const QMargins edge = windowHandle() != nullptr ? windowHandle()->frameMargins() : QMargins();
    if (std::exchange(edge_, edge) != edge)
        frameChanged();
}

// Later, when the toolkit knows all of what it was told.
void WindowFrame::frameChanged() {
    QMetaObject::invokeMethod(this, &WindowFrame::stayInRoom, Qt::QueuedConnection);
}

void WindowFrame::keyboardGiven(const QWidget& keyboard) {
    if (window_ == nullptr || !complete_ || &keyboard == this)
        return;
    for (Control* control : window_->controls()) {
        ControlView* const drawn = view(*control);
        if (drawn == nullptr || &drawn->keyboardWidget() != &keyboard || control == window_->focus())
            continue;
        loop_.runHandler([&] { window_->moveFocus(*control); });
        return;
    }
}

} // namespace kova
