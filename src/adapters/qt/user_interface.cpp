#include "adapters/qt/user_interface.h"

#include "adapters/qt/bounce_filter.h"
#include "adapters/qt/physical_keys.h"
#include "adapters/qt/window_frame.h"

#include <QAbstractButton>
#include <QApplication>
#include <QEventLoop>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace kova {
namespace {

const QSize DesignSurface(1013, 597);
constexpr int TitleBar = 32; // pixels that the window manager needs, about

bool isInput(QEvent::Type type) {
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletRelease:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
    case QEvent::InputMethod:
    case QEvent::ContextMenu:
    case QEvent::DragEnter:
    case QEvent::Drop:
        return true;
    default:
        return false;
    }
}

bool isKey(QEvent::Type type) {
    return type == QEvent::KeyPress || type == QEvent::KeyRelease || type == QEvent::InputMethod;
}

bool isTabulator(const QEvent& event) {
    if (event.type() != QEvent::KeyPress)
        return false;
    const auto& key = static_cast<const QKeyEvent&>(event);
    return (key.key() == Qt::Key_Tab || key.key() == Qt::Key_Backtab) &&
           (key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) == 0;
}

QPixmap informationPicture(int size, const QColor& background) {
    QPixmap picture(size, size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    look::drawInformation(painter, picture.rect(), background);
    return picture;
}

bool asksYesNo(const PlatformMessage& message) {
    return (message.buttons & PlatformMessage::YesNo) != 0;
}

} // namespace

/// Takes its frame off the screen when destroyed.
class QtUserInterface::FrameView final : public WindowView {
  public:
    FrameView(QtUserInterface& owner, WindowFrame& frame) : owner_(owner), frame_(&frame) {}
    FrameView(const FrameView&) = delete;
    FrameView& operator=(const FrameView&) = delete;
    ~FrameView() override {
        if (frame_)
            owner_.retire(*frame_);
    }

  private:
    QtUserInterface& owner_;
    QPointer<WindowFrame> frame_;
};

/// Keeps input from windows that a modal one blocks, gives the tabulator key to the models, which know the
/// order of the controls, and all others to a window that takes them itself.
class QtUserInterface::InputGuard final : public QObject {
  public:
    explicit InputGuard(const QtUserInterface& owner) : owner_(owner) { qApp->installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (!isInput(event->type()) || !watched->isWidgetType())
            return false;
        const QWidget* const top = static_cast<QWidget*>(watched)->window();
        const auto frame =
            std::ranges::find_if(owner_.frames_, [top](const auto* one) { return one == top; });
        if (frame == owner_.frames_.end() || (*frame)->model() == nullptr)
            return false;
        if ((*frame)->model()->blocked())
            return true;
        if (bounces_.swallows(*watched, *event))
            return true;
        if (event->type() == QEvent::KeyPress && keys_.take(**frame, static_cast<QKeyEvent&>(*event)))
            return true;
        if (!isTabulator(*event))
            return giveToWindow(**frame, *event);
        (*frame)->moveFocus(static_cast<QKeyEvent*>(event)->key() == Qt::Key_Tab &&
                            (static_cast<QKeyEvent*>(event)->modifiers() & Qt::ShiftModifier) == 0);
        return true;
    }

  private:
    static bool giveToWindow(WindowFrame& frame, const QEvent& event) {
        if (!frame.model()->takesKeys() || !isKey(event.type()))
            return false;
        frame.takeKey(event);
        return true;
    }
    const QtUserInterface& owner_;
    BounceFilter bounces_;
    PhysicalKeys keys_;
};

QtUserInterface::QtUserInterface(QtEventLoop& loop, const RegionalSettings& regional, const QSize& surface)
    : loop_(loop), regional_(regional), surface_(surface), guard_(std::make_unique<InputGuard>(*this)) {}

QtUserInterface::~QtUserInterface() {
    for (WindowFrame* frame : std::exchange(frames_, {})) {
        frame->detach();
        loop_.deleteAfterHandlers(frame);
    }
}

// The offscreen platform has a screen of no particular shape: there the design's own size is used.
QSize QtUserInterface::surface() const {
    if (!surface_.isEmpty())
        return surface_;
    const QString platform = QGuiApplication::platformName();
    if (platform == "offscreen" || platform == "minimal" || QGuiApplication::primaryScreen() == nullptr)
        return DesignSurface;
    return QGuiApplication::primaryScreen()->availableSize() - QSize(0, TitleBar);
}

std::unique_ptr<WindowView> QtUserInterface::present(Window& window) {
    auto frame = std::make_unique<WindowFrame>(window, loop_, regional_, words_, surface());
    auto view = std::make_unique<FrameView>(*this, *frame);
    frames_.push_back(frame.get());
    frame.release(); // NOLINT: its view retires it
    return view;
}

void QtUserInterface::retire(WindowFrame& frame) {
    std::erase(frames_, &frame);
    frame.detach();
    loop_.deleteAfterHandlers(&frame);
}

void QtUserInterface::runModal(Window& window) {
    if (!window.visible())
        return;
    QEventLoop loop;
    QtEventLoop::Caller caller(loop_, &loop);
    const Connection closing = window.changed.connect([&](Property property) {
        if (property == Property::Visible && !window.visible())
            loop.quit();
    });
    loop.exec();
    caller.rethrow();
}

void QtUserInterface::fillMessageBox(QMessageBox& box, const PlatformMessage& message) const {
    const QSize size = surface();
    const Scale scale{size.width() / static_cast<double>(DesignSurface.width()),
                      size.height() / static_cast<double>(DesignSurface.height())};
    box.setAttribute(Qt::WA_QuitOnClose, false);
    box.setObjectName("PlatformMessage");
    box.setWindowModality(Qt::ApplicationModal);
    box.setWindowTitle(QString::fromStdString(message.title));
    box.setTextFormat(Qt::PlainText);
    box.setText(QString::fromStdString(message.text));
    if ((message.buttons & PlatformMessage::Information) != 0)
        box.setIconPixmap(
            informationPicture(static_cast<int>(48 * scale.smaller()), box.palette().window().color()));
    if (asksYesNo(message)) {
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        box.setDefaultButton(QMessageBox::Yes);
        nameAnswers(box);
    } else {
        box.addButton(QMessageBox::Ok)->setText("OK");
        box.setDefaultButton(QMessageBox::Ok);
    }
    const QFont font = look::font({"Tahoma", 12, false}, scale);
    box.setFont(font);
    box.setStyleSheet(QString("QPushButton { min-width: %1px; min-height: %2px; font-size: %3px; }")
                          .arg(static_cast<int>(110 * scale.smaller()))
                          .arg(static_cast<int>(40 * scale.smaller()))
                          .arg(font.pixelSize()));
}

void QtUserInterface::nameAnswers(const QMessageBox& box) const {
    if (QAbstractButton* const yes = box.button(QMessageBox::Yes))
        yes->setText(words_(Word::Yes));
    if (QAbstractButton* const no = box.button(QMessageBox::No))
        no->setText(words_(Word::No));
}

MessageAnswer QtUserInterface::messageBox(const PlatformMessage& message) {
    QtEventLoop::Caller caller(loop_);
    QMessageBox box;
    fillMessageBox(box, message);
    const Connection renaming = words_.changed.connect([&] { nameAnswers(box); });
    box.winId(); // makes the native window, so that it can be told which one it stands in front of
    if (const QWidget* const below = QApplication::activeWindow())
        box.windowHandle()->setTransientParent(below->window()->windowHandle());
    const int pressed = box.exec();
    caller.rethrow();
    if (!asksYesNo(message))
        return MessageAnswer::Ok;
    return pressed == QMessageBox::No ? MessageAnswer::No : MessageAnswer::Yes;
}

WindowFrame* QtUserInterface::frame(const Window& window) const {
    const auto found =
        std::ranges::find_if(frames_, [&](const WindowFrame* frame) { return frame->model() == &window; });
    return found == frames_.end() ? nullptr : *found;
}

ControlView* QtUserInterface::view(Control& control) const {
    const WindowFrame* const drawn = frame(control.window());
    return drawn == nullptr ? nullptr : drawn->view(control);
}

std::optional<TouchPoint> QtUserInterface::touchPoint(Control& control,
                                                      const std::optional<std::string>& part) const {
    ControlView* const drawn = view(control);
    return drawn == nullptr ? std::nullopt : drawn->touchPoint(part);
}

} // namespace kova
