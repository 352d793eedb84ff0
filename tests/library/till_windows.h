#pragma once
#include "host.h"
#include "process_windows.h"

#include <windows.h>

#include <atomic>
#include <climits>
#include <future>
#include <memory>
#include <optional>
#include <set>
#include <thread>
#include <vector>

namespace kova::test {

using namespace std::chrono_literals;

inline HWND front() {
    const auto all = shownWindows(true);
    return all.empty() ? nullptr : all.front();
}

/// Whether it does so in ten seconds.
inline bool comes(const std::function<bool()>& state) {
    for (int i = 0; i < 500; ++i, std::this_thread::sleep_for(20ms))
        if (state())
            return true;
    return false;
}

/// Whether so many windows of Qt are open before long.
inline bool open(std::size_t windows) {
    return comes([&] { return shownWindows(true).size() == windows; });
}

inline void send(INPUT input) {
    SendInput(1, &input, sizeof(input));
    std::this_thread::sleep_for(60ms);
}

/// Touches the front window at a place that its width and height are parted by.
inline void touch(double x, double y) {
    RECT area;
    GetClientRect(front(), &area);
    POINT at{static_cast<LONG>(x * area.right), static_cast<LONG>(y * area.bottom)};
    ClientToScreen(front(), &at);
    SetCursorPos(at.x, at.y);
    for (const DWORD change : {MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP})
        send({.type = INPUT_MOUSE, .mi = {0, 0, 0, change, 0, 0}});
}

inline void press(WORD key) {
    for (const DWORD change : {0, KEYEVENTF_KEYUP})
        send({.type = INPUT_KEYBOARD, .ki = {key, 0, change, 0, 0}});
}

/// How many colours are painted in it.
inline std::size_t colors(HWND window) {
    RECT area;
    GetClientRect(window, &area);
    std::set<COLORREF> seen;
    const HDC drawing = GetDC(window);
    for (int x = 0; x < area.right; x += 9)
        for (int y = 0; y < area.bottom; y += 9)
            seen.insert(GetPixel(drawing, x, y));
    ReleaseDC(window, drawing);
    return seen.size();
}

/// The host's message loop, until then. Returns the exit code when the host is to end.
inline std::optional<WPARAM> handleMessages(const std::function<bool()>& until) {
    for (MSG message; !until(); DispatchMessageW(&message)) {
        if (GetMessageW(&message, nullptr, 0, 0) <= 0)
            return message.wParam;
        TranslateMessage(&message);
    }
    return {};
}

/// A host of plain Windows with four windows: no Qt, its own message loop and clock.
struct Till {
    std::atomic<int> ticks = 0;
    std::atomic<int> exitCode = 0; ///< of the end that the till's clock is to ask for
    int discardFrom = INT_MAX;     ///< by the till's clock
    HWND window = frame(L"Till", WS_VISIBLE);
    HWND entry = CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE | WS_BORDER, 10, 10, 200, 30, window,
                                 nullptr, nullptr, nullptr);
    HWND beside = frame(L"Beside", WS_VISIBLE);
    HWND disabled = frame(L"Disabled", WS_VISIBLE | WS_DISABLED);
    HWND hidden = frame(L"Hidden", 0);
    Host sink;
    std::shared_ptr<cls_Kova_Drawer_Man> drawer = createComponent();
    Connection connection = drawer->connect(sink);

    Till() {
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        SetTimer(window, 1, 50, [](HWND of, UINT, UINT_PTR, DWORD) {
            reinterpret_cast<Till*>(GetWindowLongPtrW(of, GWLP_USERDATA))->tick();
        });
        // The window manager has its own ideas of which new window is to be in front, and takes its time.
        handleMessages(20);
        SetForegroundWindow(window);
        SetFocus(entry);
        drawer->Inizializza(shop("INSERT INTO tabActivityDrawer VALUES (2,'Prelievo',-1,4,1,20,1,0);"
                                 "INSERT INTO tabPagamenti VALUES (1,'Contanti',1,'E',10);"));
        drawer->InserimentoAutomatico(true);
    }
    ~Till() { KillTimer(window, 1); }
    Till(const Till&) = delete;
    Till& operator=(const Till&) = delete;
    void tick() {
        if (++ticks >= discardFrom)
            drawer->DiscardForm();
        if (exitCode != 0)
            PostQuitMessage(exitCode.exchange(0));
    }
    /// For so many ticks of its clock.
    std::optional<WPARAM> handleMessages(int forTicks) {
        return test::handleMessages([this, end = ticks + forTicks] { return ticks >= end; });
    }
    static HWND frame(const wchar_t* title, DWORD style) {
        WNDCLASSW kind{};
        kind.lpfnWndProc = DefWindowProcW;
        kind.lpszClassName = L"Till";
        RegisterClassW(&kind);
        return CreateWindowExW(0, L"Till", title, WS_OVERLAPPEDWINDOW | style, 20, 20, 340, 420, nullptr,
                               nullptr, nullptr, nullptr);
    }
    /// Whether its windows are as it made them, but blocked where a cashier could use them.
    [[nodiscard]] bool blocked(bool whole = true) const {
        const auto enabled = [](HWND of) { return IsWindowEnabled(of) != 0; };
        return enabled(window) != whole && enabled(beside) != whole && !enabled(disabled) && enabled(hidden);
    }
    [[nodiscard]] bool takesInput() const { return blocked(false); }
};

/// The host's message loop, while someone works with the screen from outside, on a thread of their own.
inline void handleMessages(const std::future<void>& cashier) {
    handleMessages([&] { return cashier.wait_for(0s) == std::future_status::ready; });
}

} // namespace kova::test
