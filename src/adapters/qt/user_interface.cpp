#include "adapters/qt/user_interface.h"

#include "adapters/qt/input_filter.h"
#include "adapters/qt/waiting.h"
#include "adapters/qt/window_frame.h"
#include "adapters/qt/window_sheet.h"

#include <QAbstractButton>
#include <QApplication>
#include <QElapsedTimer>
#include <QMessageBox>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QWindow>

#include <algorithm>
#include <optional>
#include <system_error>
#include <utility>

namespace kova {
namespace {

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

QtUserInterface::QtUserInterface(QtEventLoop& loop, const RegionalSettings& regional, const QSize& surface)
    : loop_(loop), regional_(regional), surface_(surface), filter_(std::make_unique<InputFilter>(frames_)),
      gate_([this](const QWidget& target, QtEventLoop::Milliseconds age) { return tooLate(target, age); }) {}

QtUserInterface::~QtUserInterface() {
    for (WindowFrame* frame : std::exchange(frames_, {})) {
        frame->detach();
        loop_.deleteAfterHandlers(frame);
    }
}

void QtUserInterface::onTouch(std::function<void()> touched) {
    filter_->touched = std::move(touched);
}

// The offscreen platform has a screen of no particular shape: there the design's own size is used.
QSize QtUserInterface::surface() const {
    const QString platform = QGuiApplication::platformName();
    if (surface_.isEmpty() &&
        (platform == "offscreen" || platform == "minimal" || QGuiApplication::primaryScreen() == nullptr))
        return {static_cast<int>(DesignSurface.width), static_cast<int>(DesignSurface.height)};
    return surface_;
}

Scale QtUserInterface::scaleOf(const QScreen& screen) const {
    const QSize size = surface().isEmpty() ? screen.availableSize() : surface();
    return {size.width() / DesignSurface.width, size.height() / DesignSurface.height};
}

std::unique_ptr<WindowView> QtUserInterface::present(Window& window) {
    auto frame = std::make_unique<WindowFrame>(window, loop_, regional_, words_, surface(), hostWindow_);
    auto view = std::make_unique<FrameView>(*this, *frame);
    frames_.push_back(frame.get());
    frame.release(); // NOLINT: its view retires it
    return view;
}

/// Made when nothing could answer it, in one of our windows or one that stands in front of it.
bool QtUserInterface::tooLate(const QWidget& target, QtEventLoop::Milliseconds age) const {
    const QWidget* top = target.window();
    while (top->parentWidget() != nullptr)
        top = top->parentWidget()->window();
    return std::ranges::find(frames_, top) != frames_.end() && loop_.unansweredBefore(age);
}

void QtUserInterface::await(const Awaited& awaited, const std::function<void()>& work) {
    const auto text = [&](std::chrono::seconds gone) { return QString::fromStdString(awaited.text(gone)); };
    if (!awaited.onAnyThread) {
        const SignBeside sign = signBeside(text);
        return work();
    }
    QElapsedTimer clock;
    clock.start();
    std::optional<WatchedWork> watched;
    try {
        watched.emplace(workThread_, work);
    } catch (const std::system_error&) { // no thread is left: an answer matters more than a sign
        return work();
    }
    if (!watched->endsWithin(WaitingSign::Noticeable)) {
        const auto textNow = [&] { return text(std::chrono::seconds(clock.elapsed() / 1000)); };
        const auto sign = waitingSign(textNow());
        while (!watched->endsWithin(WaitingSign::Step)) {
            if (sign != nullptr)
                sign->step(textNow());
            stayAlive();
        }
        giveBackMemory(); // rows as they were read, of which a list may have been made
    }
    watched->rethrow();
}

/// The newest window of ours that is on the screen; null when none is.
WindowFrame* QtUserInterface::frameInSight() const {
    const auto shown = std::ranges::find_if(frames_.rbegin(), frames_.rend(), [](const WindowFrame* frame) {
        return frame->isVisible() && frame->windowHandle()->isExposed();
    });
    return shown == frames_.rend() ? nullptr : *shown;
}

/// Over a window of ours, else where the host's window is. Null while there is no screen.
std::unique_ptr<WaitingSign> QtUserInterface::waitingSign(const QString& text) const {
    if (WindowFrame* const shown = frameInSight())
        return std::make_unique<SignInWindow>(*shown, text);
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (screen == nullptr)
        return nullptr;
    QRect room = screen->availableGeometry();
    if (hostWindow_ != 0) {
        const std::unique_ptr<const QWindow> below(QWindow::fromWinId(hostWindow_));
        screen = below->screen();
        room = areaOf(*below);
    }
    return std::make_unique<SignOnScreen>(room, scaleOf(*screen), text);
}

/// In the same place.
SignBeside QtUserInterface::signBeside(const std::function<QString(std::chrono::seconds)>& text) const {
    const auto times = [](const Scale& scale, double ratio) {
        return Scale{scale.x * ratio, scale.y * ratio};
    };
    if (const WindowFrame* const shown = frameInSight())
        return {shown->winId(), times(shown->scale(), shown->devicePixelRatioF()), text};
    const QScreen* const screen = QGuiApplication::primaryScreen();
    if (surface().isEmpty() || screen == nullptr)
        return {hostWindow_, std::nullopt, text};
    return {hostWindow_, times(scaleOf(*screen), screen->devicePixelRatio()), text};
}

void QtUserInterface::retire(WindowFrame& frame) {
    std::erase(frames_, &frame);
    frame.detach();
    loop_.deleteAfterHandlers(&frame);
}

void QtUserInterface::runModal(Window& window) {
    if (!window.visible())
        return;
    QtEventLoop::Wait closed(loop_);
    QtEventLoop::Caller caller(loop_, [&] { closed.end(); });
    const auto hostWindows =
        frame(window)->takeHostWindows(); // it may stay on the screen when a handler fails
    const Connection closing = window.changed.connect([&](Property property) {
        if (property == Property::Visible && !window.visible())
            closed.end();
    });
    closed.run();
    caller.rethrow();
}

void QtUserInterface::fillMessageBox(QMessageBox& box, const PlatformMessage& message) const {
    const QWidget* const below = QApplication::activeWindow();
    const QScreen* const on = below != nullptr ? below->screen() : QGuiApplication::primaryScreen();
    const Scale scale = scaleOf(*on);
    box.setAttribute(Qt::WA_QuitOnClose, false);
    box.setObjectName("PlatformMessage");
    box.setWindowModality(Qt::ApplicationModal);
    box.setWindowTitle(QString::fromStdString(message.title));
    box.setTextFormat(Qt::PlainText);
    box.setText(QString::fromStdString(message.text));
    const auto style = look::windowStyle(backColor(), scale);
    if ((message.buttons & PlatformMessage::Information) != 0)
        box.setIconPixmap(informationPicture(static_cast<int>(48 * scale.smaller()), style.background));
    if (asksYesNo(message)) {
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        box.setDefaultButton(QMessageBox::Yes);
        nameAnswers(box);
    } else {
        box.addButton(QMessageBox::Ok)->setText("OK");
        box.setDefaultButton(QMessageBox::Ok);
    }
    box.setStyleSheet(look::windowSheet(style));
    for (QAbstractButton* const button : box.buttons())
        button->setIcon({}); // some desktops have one for each answer
}

/// Of the dialog that a message stands in front of.
QColor QtUserInterface::backColor() const {
    const auto shown = std::find_if(frames_.rbegin(), frames_.rend(), [](const WindowFrame* frame) {
        return frame->isVisible() && frame->model() != nullptr;
    });
    return shown == frames_.rend() ? palette::Paper : look::toQt((*shown)->model()->backColor());
}

void QtUserInterface::nameAnswers(const QMessageBox& box) const {
    if (QAbstractButton* const yes = box.button(QMessageBox::Yes))
        yes->setText(QString::fromStdString(words_(Word::Yes)));
    if (QAbstractButton* const no = box.button(QMessageBox::No))
        no->setText(QString::fromStdString(words_(Word::No)));
}

MessageAnswer QtUserInterface::messageBox(const PlatformMessage& message) {
    QtEventLoop::Caller caller(loop_);
    QMessageBox box;
    fillMessageBox(box, message);
    const Connection renaming = words_.changed.connect([&] { nameAnswers(box); });
    box.winId(); // makes the native window, so that it can be told which one it stands in front of
    if (const QWidget* const below = QApplication::activeWindow())
        box.windowHandle()->setTransientParent(below->window()->windowHandle());
    const HostWindows hostWindows(box);
    QtEventLoop::Wait answered(loop_);
    QObject::connect(&box, &QMessageBox::finished, &box, [&] { answered.end(); });
    box.show();
    answered.run();
    caller.rethrow();
    if (!asksYesNo(message))
        return MessageAnswer::Ok;
    return box.result() == QMessageBox::No ? MessageAnswer::No : MessageAnswer::Yes;
}

bool QtUserInterface::showsWindow() const {
    return std::ranges::any_of(frames_, [](const WindowFrame* frame) { return frame->isVisible(); });
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

} // namespace kova
