#include "adapters/qt/display.h"
#include "base/error.h"

#include <QAbstractNativeEventFilter>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QInputEvent>
#include <QString>
#include <QStringList>
#include <QWidget>
#include <QWindow>

#include <dlfcn.h>
#ifdef __GLIBC__
#include <malloc.h>
#endif

#include <algorithm>
#include <csignal>
#include <cstdint>

namespace kova {
namespace {

/// A library of the system that may be missing.
class OptionalLibrary {
  public:
    explicit OptionalLibrary(const char* file) : handle_(dlopen(file, RTLD_LAZY | RTLD_LOCAL)) {}
    OptionalLibrary(const OptionalLibrary&) = delete;
    OptionalLibrary& operator=(const OptionalLibrary&) = delete;
    ~OptionalLibrary() {
        if (handle_ != nullptr)
            dlclose(handle_);
    }
    template <class Function>
    Function* function(const char* name) const {
        return handle_ == nullptr ? nullptr : reinterpret_cast<Function*>(dlsym(handle_, name));
    }

  private:
    void* handle_;
};

bool opensX() {
    const OptionalLibrary xcb("libxcb.so.1");
    auto* const connect = xcb.function<void*(const char*, int*)>("xcb_connect");
    auto* const failed = xcb.function<int(void*)>("xcb_connection_has_error");
    auto* const disconnect = xcb.function<void(void*)>("xcb_disconnect");
    if (connect == nullptr || failed == nullptr || disconnect == nullptr)
        return false;
    void* const connection = connect(nullptr, nullptr); // never null, also when it failed
    const bool opened = failed(connection) == 0;
    disconnect(connection);
    return opened;
}

bool opensWayland() {
    if (qEnvironmentVariableIsSet("WAYLAND_SOCKET"))
        return true; // already connected by who started the process; a try would use it up
    const OptionalLibrary wayland("libwayland-client.so.0");
    auto* const connect = wayland.function<void*(const char*)>("wl_display_connect");
    auto* const disconnect = wayland.function<void(void*)>("wl_display_disconnect");
    void* const display = connect == nullptr || disconnect == nullptr ? nullptr : connect(nullptr);
    if (display != nullptr)
        disconnect(display);
    return display != nullptr;
}

bool installed(const QString& platform) {
    QStringList folders;
    for (const QString& folder : QCoreApplication::libraryPaths())
        folders << folder + "/platforms";
    folders << qEnvironmentVariable("QT_QPA_PLATFORM_PLUGIN_PATH");
    return std::ranges::any_of(folders, [&](const QString& folder) {
        return !folder.isEmpty() && !QDir(folder).entryList({"libq" + platform + "*.so"}).isEmpty();
    });
}

/// The platforms that Qt tries, in its order.
QStringList platforms() {
    if (const QString chosen = qEnvironmentVariable("QT_QPA_PLATFORM"); !chosen.isEmpty())
        return chosen.split(';');
    const bool wayland =
        qEnvironmentVariableIsSet("WAYLAND_DISPLAY") || qEnvironmentVariable("XDG_SESSION_TYPE") == "wayland";
    if (!installed("xcb") && !wayland)
        return {"of this build"};
    return wayland ? QStringList{"wayland", "xcb"} : QStringList{"xcb"};
}

bool canShow(const QString& platform) {
    const QString name = platform.section(':', 0, 0);
    if (name.startsWith("wayland"))
        return installed("wayland") && opensWayland();
    return name != "xcb" || opensX();
}

} // namespace

std::unique_ptr<QApplication> openApplication(int& count, char** arguments) {
    if (!std::ranges::any_of(platforms(), canShow))
        throw Error(5, "No display can be opened");
    return std::make_unique<QApplication>(count, arguments);
}

/// Qt hands on the display's own time of an event, milliseconds in 32 bits. On this machine that is the clock
/// of the kernel; one that is another machine's tells ages older than this object, which count as none.
struct InputGate::Watch final : QObject, QAbstractNativeEventFilter {
    explicit Watch(Unwanted toAsk) : unwanted(std::move(toAsk)) {
        lifetime.start();
        qApp->installEventFilter(this);
        qApp->installNativeEventFilter(this);
    }
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool nativeEventFilter(const QByteArray& kind, void* message, qintptr*) override;
    [[nodiscard]] bool refuses(WId window, std::uint64_t time) const;

    Unwanted unwanted;
    QElapsedTimer lifetime;
};

bool InputGate::Watch::refuses(WId window, std::uint64_t time) const {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    const auto ticks = std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
    const std::uint32_t age = static_cast<std::uint32_t>(ticks) - static_cast<std::uint32_t>(time);
    const QWidget* const target = QWidget::find(window);
    return target != nullptr &&
           unwanted(*target, std::chrono::milliseconds(age <= lifetime.elapsed() ? age : 0));
}

// On its way to a window: on the way from there to a widget a touch has moved the focus already.
bool InputGate::Watch::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::TouchBegin:
    case QEvent::TabletPress:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::ShortcutOverride:
        return event->spontaneous() && watched->isWindowType() &&
               refuses(static_cast<QWindow*>(watched)->winId(),
                       static_cast<QInputEvent*>(event)->timestamp());
    default:
        return false;
    }
}

// Where assistive technology listens, Qt asks it about each key, and hands on a copy that has no time.
bool InputGate::Watch::nativeEventFilter(const QByteArray& kind, void* message, qintptr*) {
    struct Key { ///< of X11's protocol
        std::uint8_t type, code;
        std::uint16_t sequence;
        std::uint32_t time, root, window;
    };
    constexpr unsigned KeyPress = 2, SentByPrograms = 0x80;
    const auto& key = *static_cast<const Key*>(message);
    return kind == "xcb_generic_event_t" && (key.type & ~SentByPrograms) == KeyPress &&
           refuses(key.window, key.time);
}

InputGate::InputGate(Unwanted unwanted) : watch_(std::make_unique<Watch>(std::move(unwanted))) {}

InputGate::~InputGate() = default;

std::thread quietThread(const std::function<void()>& work) {
    sigset_t all, before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    const std::shared_ptr<void> restored(nullptr,
                                         [&](void*) { pthread_sigmask(SIG_SETMASK, &before, nullptr); });
    return std::thread(work);
}

void giveBackMemory() {
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

void stayAlive() {} // window managers ask only when a window is to be closed

QString standInFamily() {
    return "DejaVu Sans";
}

HostLoop::HostLoop() = default;
HostLoop::~HostLoop() {}

struct HostWindows::Blocked {};
HostWindows::HostWindows(QWidget&) {}
HostWindows::~HostWindows() = default;

} // namespace kova
