#pragma once
#include "host.h"
#include "kova-script-host/fingers.h"

#include <atomic>
#include <climits>
#include <future>
#include <memory>

namespace kova::test {

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
