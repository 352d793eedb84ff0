#include "adapters/qt/waiting.h"

#include <QImage>
#include <QPainter>
#include <QThread>

#include <windows.h>

#include <utility>

namespace kova {
namespace {

using namespace std::chrono_literals;

QRect clientArea(HWND window) {
    RECT inside{};
    POINT corner{};
    if (GetClientRect(window, &inside) == 0 || ClientToScreen(window, &corner) == 0)
        return {};
    return {corner.x, corner.y, inside.right, inside.bottom};
}

/// Of the screen that `window` is on; of the first one without a window.
QRect workArea(HWND window) {
    MONITORINFO screen{};
    screen.cbSize = sizeof(screen);
    GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTOPRIMARY), &screen);
    const RECT& area = screen.rcWork;
    return {area.left, area.top, area.right - area.left, area.bottom - area.top};
}

/// Takes neither keys nor touches, which reach what is below, and has no owner, whose thread's input would
/// wait for this one's.
HWND makeWindow(const QString& title) {
    return CreateWindowExW(WS_EX_LAYERED | WS_EX_TRANSPARENT | WS_EX_NOACTIVATE | WS_EX_TOOLWINDOW |
                               WS_EX_TOPMOST,
                           L"STATIC", reinterpret_cast<const wchar_t*>(title.utf16()), WS_POPUP, 0, 0, 0, 0,
                           nullptr, nullptr, nullptr, nullptr);
}

/// The window has no other picture: the system asks nobody to paint.
void putUp(const QImage& picture, HWND window, const QRect& place) {
    const HDC memory = CreateCompatibleDC(nullptr);
    const HBITMAP bitmap = picture.toHBITMAP();
    const HGDIOBJ before = SelectObject(memory, bitmap);
    POINT corner{place.x(), place.y()}, from{};
    SIZE size{place.width(), place.height()};
    UpdateLayeredWindow(window, nullptr, &corner, &size, memory, &from, 0, nullptr, ULW_OPAQUE);
    SelectObject(memory, before);
    DeleteObject(bitmap);
    DeleteDC(memory);
}

void handleMessages() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0)
        DispatchMessageW(&message);
}

} // namespace

/// Begins when the timer runs out, for a thread costs more than most of the work that it would be for. One of
/// Qt's, so that what Qt keeps for it goes with it.
class SignBeside::Thread final : public QThread {
  public:
    Thread(WId over, const std::optional<Scale>& scale, std::function<QString(std::chrono::seconds)> text)
        : over_(reinterpret_cast<HWND>(over)), scale_(scale), text_(std::move(text)),
          timer_(CreateThreadpoolTimer(begin, this, nullptr)) {
        using FileTime = std::chrono::duration<std::int64_t, std::ratio<1, 10'000'000>>;
        const std::int64_t fromNow = -std::chrono::duration_cast<FileTime>(WaitingSign::Noticeable).count();
        FILETIME due{static_cast<DWORD>(fromNow), static_cast<DWORD>(fromNow >> 32)};
        if (timer_ != nullptr)
            SetThreadpoolTimer(timer_, &due, 0, 0);
    }
    ~Thread() override {
        if (timer_ == nullptr)
            return;
        SetThreadpoolTimer(timer_, nullptr, 0, 0);
        WaitForThreadpoolTimerCallbacks(timer_, TRUE);
        CloseThreadpoolTimer(timer_);
        if (ended_ == nullptr)
            return;
        SetEvent(ended_);
        wait();
        CloseHandle(ended_);
    }

  protected:
    void run() override {
        try {
            show();
        } catch (...) { // the work matters more than a sign
        }
    }

  private:
    static void CALLBACK begin(PTP_CALLBACK_INSTANCE, void* self, PTP_TIMER) {
        auto& thread = *static_cast<Thread*>(self);
        thread.ended_ = CreateEventW(nullptr, TRUE, FALSE, nullptr);
        if (thread.ended_ != nullptr)
            thread.start();
    }

    void show() {
        ImmDisableIME(0);
        SetThreadDpiAwarenessContext(GetWindowDpiAwarenessContext(over_));
        const QRect screen = workArea(over_), below = clientArea(over_);
        const Scale scale = scale_.value_or(
            Scale{screen.width() / DesignSurface.width, screen.height() / DesignSurface.height});
        const QRect place = WaitingPicture::place(below.isEmpty() ? screen : below, scale);
        QImage image(place.size(), QImage::Format_RGB32);
        WaitingPicture picture{text()};
        const HWND window = makeWindow(picture.text);
        if (window == nullptr)
            return;
        const std::shared_ptr<void> gone(window, DestroyWindow);
        do {
            handleMessages();
            picture.text = text();
            {
                QPainter painter(&image);
                picture.paint(painter, image.rect(), scale);
            }
            putUp(image, window, place);
            // Again and again, over the pale picture of a window whose thread hears nothing, too.
            SetWindowPos(window, HWND_TOPMOST, 0, 0, 0, 0,
                         SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_SHOWWINDOW);
            ++picture.steps;
        } while (WaitForSingleObject(ended_, WaitingSign::Step.count()) == WAIT_TIMEOUT);
    }

    [[nodiscard]] QString text() const {
        return text_(std::chrono::floor<std::chrono::seconds>(std::chrono::steady_clock::now() - begun_));
    }

    const HWND over_;
    const std::optional<Scale> scale_;
    const std::function<QString(std::chrono::seconds)> text_;
    const std::chrono::steady_clock::time_point begun_ = std::chrono::steady_clock::now();
    HANDLE ended_ = nullptr;
    const PTP_TIMER timer_;
};

SignBeside::SignBeside(WId over, const std::optional<Scale>& scale,
                       const std::function<QString(std::chrono::seconds)>& text) noexcept {
    try {
        thread_ = std::make_unique<Thread>(over, scale, text);
    } catch (const std::bad_alloc&) { // the work matters more than a sign
    }
}

SignBeside::~SignBeside() = default;

} // namespace kova
