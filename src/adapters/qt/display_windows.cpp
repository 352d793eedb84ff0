#include "adapters/qt/display.h"
#include "base/error.h"

#include <QAbstractNativeEventFilter>
#include <QApplication>
#include <QWidget>
#include <QWindow>

#include <windows.h>

#include <ole2.h>

#include <optional>
#include <utility>
#include <vector>

namespace kova {
namespace {

/// Qt leaves threads, hooks and window classes behind that lead into this code.
void stayLoaded() {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_PIN,
                       reinterpret_cast<LPCWSTR>(&stayLoaded), &module);
}

/// A plugin's application leaves alone how the process sees the screen's resolution. Afterwards the same
/// attribute would let dialogs take the focus from a host's window.
void setPlugin(bool plugin) {
    const QtMessageHandler before = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext&, const QString&) {}); // says it is late
    QCoreApplication::setAttribute(Qt::AA_PluginApplication, plugin);
    qInstallMessageHandler(before);
}

/// What the hook sees of the thread's messages; it has no argument of ours.
struct MessageWatch {
    int loops = 0;
    HHOOK hook = nullptr;
    std::optional<WPARAM> exitCode; ///< of a request that Qt has swallowed
};
MessageWatch watch;

LRESULT CALLBACK watchMessage(int code, WPARAM removed, LPARAM data) {
    const auto& message = *reinterpret_cast<const MSG*>(data);
    if (code == HC_ACTION && removed == PM_REMOVE && message.message == WM_QUIT) {
        watch.exitCode = message.wParam;
        if (QWidget* const modal = QApplication::activeModalWidget())
            QMetaObject::invokeMethod(modal, &QWidget::close, Qt::QueuedConnection);
    }
    return CallNextHookEx(nullptr, code, removed, data);
}

bool ofQt(HWND window) {
    return QWidget::find(reinterpret_cast<WId>(window)) != nullptr;
}

} // namespace

std::unique_ptr<QApplication> openApplication(int& count, char** arguments) {
    // Qt goes on without it, and then fails wherever it talks to other programs.
    const HRESULT begun = OleInitialize(nullptr);
    if (FAILED(begun))
        throw Error(5, begun == RPC_E_CHANGED_MODE
                           ? "This thread cannot show windows: COM was initialized on it for many threads"
                           : "COM cannot be initialized");
    stayLoaded();
    setPlugin(true);
    auto application = std::make_unique<QApplication>(count, arguments);
    setPlugin(false);
    OleUninitialize(); // Qt's own stays until the application ends
    return application;
}

HostLoop::HostLoop() {
    if (watch.loops++ == 0)
        watch.hook = SetWindowsHookExW(WH_GETMESSAGE, watchMessage, nullptr, GetCurrentThreadId());
}

HostLoop::~HostLoop() {
    if (--watch.loops == 0)
        UnhookWindowsHookEx(watch.hook);
    if (const auto exitCode = std::exchange(watch.exitCode, {}))
        PostQuitMessage(static_cast<int>(*exitCode));
}

/// Its slots go with it.
struct HostWindows::Blocked final : QObject {
    explicit Blocked(QWidget& modal);
    void block(HWND window);
    static BOOL CALLBACK blockEach(HWND window, LPARAM self) {
        reinterpret_cast<Blocked*>(self)->block(window);
        return TRUE;
    }
    void end();

    HWND modal;
    HWND active; ///< the host's window in front; null when none is
    HWND focus;
    std::vector<HWND> windows; ///< from the front to the back
};

HostWindows::Blocked::Blocked(QWidget& widget)
    : modal(reinterpret_cast<HWND>(widget.winId())), active(GetActiveWindow()), focus(GetFocus()) {
    EnumThreadWindows(GetCurrentThreadId(), blockEach, reinterpret_cast<LPARAM>(this));
    if (active == nullptr && !windows.empty())
        active = windows.front();
    if (active == nullptr || ofQt(active))
        return;
    // It stays in front of the host's window. Later, since Qt says otherwise when it shows it.
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (active != nullptr)
                SetWindowLongPtrW(modal, GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(active));
        },
        Qt::QueuedConnection);
}

void HostWindows::Blocked::block(HWND window) {
    if (IsWindowVisible(window) == 0 || IsWindowEnabled(window) == 0 || ofQt(window))
        return;
    windows.push_back(window);
    EnableWindow(window, FALSE);
}

void HostWindows::Blocked::end() {
    for (const HWND window : std::exchange(windows, {}))
        EnableWindow(window, TRUE);
    const HWND owner = std::exchange(active, nullptr);
    if (owner == nullptr || ofQt(owner))
        return;
    SetWindowLongPtrW(modal, GWLP_HWNDPARENT, 0);
    // While the modal window is still there: without one in front the system would take another program's.
    if (GetActiveWindow() != modal)
        return;
    SetActiveWindow(owner);
    if (IsChild(owner, focus) != 0)
        SetFocus(focus);
}

HostWindows::HostWindows(QWidget& modal) : blocked_(std::make_unique<Blocked>(modal)) {
    QObject::connect(modal.windowHandle(), &QWindow::visibleChanged, blocked_.get(), [this](bool visible) {
        if (!visible)
            blocked_->end();
    });
}

HostWindows::~HostWindows() {
    blocked_->end();
}

namespace {

bool begins(UINT message) {
    switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case WM_RBUTTONDOWN:
    case WM_RBUTTONDBLCLK:
    case WM_MBUTTONDOWN:
    case WM_MBUTTONDBLCLK:
    case WM_MOUSEWHEEL:
    case WM_POINTERDOWN:
    case WM_TOUCH:
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
    case WM_CHAR:
        return true;
    default:
        return false;
    }
}

} // namespace

// Qt's own events tell when they were handled, not when they were made.
struct InputGate::Watch final : QAbstractNativeEventFilter {
    explicit Watch(Unwanted toAsk) : unwanted(std::move(toAsk)) { qApp->installNativeEventFilter(this); }
    bool nativeEventFilter(const QByteArray&, void* data, qintptr*) override {
        const auto& message = *static_cast<const MSG*>(data);
        const QWidget* const target =
            begins(message.message) ? QWidget::find(reinterpret_cast<WId>(message.hwnd)) : nullptr;
        return target != nullptr &&
               unwanted(*target, std::chrono::milliseconds(GetTickCount() - message.time));
    }

    Unwanted unwanted;
};

InputGate::InputGate(Unwanted unwanted) : watch_(std::make_unique<Watch>(std::move(unwanted))) {}

InputGate::~InputGate() = default;

std::thread quietThread(const std::function<void()>& work) {
    return std::thread(work); // the system's signals have threads of their own
}

// The system paints over a window whose thread has not looked for messages for five seconds. Looking removes
// none and delivers none.
void giveBackMemory() {} // what is free goes back by itself

void stayAlive() {
    MSG message;
    PeekMessageW(&message, nullptr, WM_KEYFIRST, WM_KEYFIRST, PM_NOREMOVE | PM_QS_INPUT);
}

QString standInFamily() {
    return "MS Shell Dlg 2"; // whatever the system's dialogs are drawn with
}

} // namespace kova
