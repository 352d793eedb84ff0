#pragma once
// What a cashier does at the screen, as the system knows it, and the end of who crashes meanwhile.

#include <windows.h>

#include <array>
#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace kova::test {

using namespace std::chrono_literals;

/// The visible windows of a process, from the front to the back; of all processes for 0.
inline std::vector<HWND> shownWindows(bool ofQt, DWORD of = GetCurrentProcessId()) {
    std::vector<HWND> all;
    for (HWND window = GetTopWindow(nullptr); window != nullptr; window = GetWindow(window, GW_HWNDNEXT)) {
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        std::array<char, 64> kind{};
        GetClassNameA(window, kind.data(), kind.size());
        if ((of == 0 || process == of) && IsWindowVisible(window) != 0 &&
            (std::string(kind.data()).rfind("Qt", 0) == 0) == ofQt)
            all.push_back(window);
    }
    return all;
}

inline HWND front(DWORD of = GetCurrentProcessId()) {
    const auto all = shownWindows(true, of);
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

/// Where on the screen a window's width and height are parted so.
inline POINT place(HWND window, double x, double y) {
    RECT area;
    GetClientRect(window, &area);
    POINT at{static_cast<LONG>(x * area.right), static_cast<LONG>(y * area.bottom)};
    ClientToScreen(window, &at);
    return at;
}

inline void touch(POINT at) {
    SetCursorPos(at.x, at.y);
    for (const DWORD change : {MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP})
        send({.type = INPUT_MOUSE, .mi = {0, 0, 0, change, 0, 0}});
}

/// Touches the front window there.
inline void touch(double x, double y) {
    touch(place(front(), x, y));
}

inline void press(WORD key) {
    for (const DWORD change : {0, KEYEVENTF_KEYUP})
        send({.type = INPUT_KEYBOARD, .ki = {key, 0, change, 0, 0}});
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

/// A crash ends the process with an exit code of its own, and asks nobody.
inline void endWithCrashes() {
    AddVectoredExceptionHandler(1, [](EXCEPTION_POINTERS* failure) -> LONG {
        if (failure->ExceptionRecord->ExceptionCode == EXCEPTION_ACCESS_VIOLATION)
            TerminateProcess(GetCurrentProcess(), 99);
        return EXCEPTION_CONTINUE_SEARCH;
    });
}

} // namespace kova::test
