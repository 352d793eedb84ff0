// What a guest may do in a foreign process: plays the part that its first argument names, each in a process
// of its own, which has to end as such.

#include "process_windows.h"
#include "till_windows.h"

#include <windows.h>

#include <ole2.h>
#include <shellscalingapi.h>

#include <xmmintrin.h>

#include <cfenv>
#include <clocale>
#include <map>

namespace {

using namespace kova::test;

void modal() {
    Till till;
    const auto order = shownWindows(false);
    const auto cashier = std::async(std::launch::async, [&] {
        expect(open(1) && comes([&] { return till.blocked(); }), "the till's windows are blocked");
        expect(comes([&] { return GetWindow(front(), GW_OWNER) == till.window; }),
               "the dialog belongs to the till");
        expect(comes([&, since = till.ticks.load()] { return till.ticks > since + 3; }),
               "the till's clock goes on");
        const auto showsInFront = [&](std::size_t windows, const std::string& what) {
            expect(open(windows) && till.blocked(), what + ", and the till's windows are blocked");
            std::this_thread::sleep_for(300ms);
        };
        showsInFront(1, "the dialog");
        touch(0.04, 0.145);
        showsInFront(2, "a coin count");
        touch(0.21, 0.93); // cancels it
        showsInFront(1, "the dialog after the coin count");
        touch(0.81, 0.945); // confirmation of nothing
        showsInFront(2, "a message");
        press(VK_RETURN);
        showsInFront(1, "the dialog after the message");
        press(VK_ESCAPE);
    });
    till.drawer->Show();
    expect(till.takesInput(), "exactly what was blocked takes input again");
    expect(GetFocus() == till.entry && GetForegroundWindow() == till.window, "the focus is where it was");
    expect(shownWindows(false) == order, "the windows stand as they stood");
    handleMessages(cashier);
}

/// The till ends while a message stands in front of a modal dialog.
void quit() {
    Till till;
    const auto cashier = std::async(std::launch::async, [&] {
        expect(open(1), "the dialog is open");
        std::this_thread::sleep_for(300ms);
        touch(0.81, 0.945);
        expect(open(2), "a message is open in front");
        till.exitCode = 7;
    });
    till.drawer->Show();
    expect(till.handleMessages(20) == 7 && till.takesInput(), "the till ends, and nothing is left blocked");
    till.drawer->Show(0);
    PostQuitMessage(8);
    kova::processEvents();
    expect(till.handleMessages(20) == 8, "handling events does not swallow the end");
}

LONG WINAPI ownFilter(EXCEPTION_POINTERS*) {
    return EXCEPTION_CONTINUE_SEARCH;
}

/// What belongs to the process and its thread, in words.
std::vector<std::string> belongings() {
    PROCESS_DPI_AWARENESS awareness{};
    GetProcessDpiAwareness(nullptr, &awareness);
    std::string environment;
    for (char** variable = _environ; *variable != nullptr; ++variable)
        environment += *variable;
    const LPTOP_LEVEL_EXCEPTION_FILTER filter = SetUnhandledExceptionFilter(ownFilter);
    std::fenv_t arithmetic{};
    std::fegetenv(&arithmetic);
    return {"screen " + std::to_string(awareness),
            "screen of the thread " +
                std::to_string(GetAwarenessFromDpiAwarenessContext(GetThreadDpiAwarenessContext())),
            std::string("locale ") + std::setlocale(LC_ALL, nullptr),
            "locale of the thread " + std::to_string(GetThreadLocale()),
            "floating point " + std::to_string(arithmetic.__control_word) + ' ' +
                std::to_string(_mm_getcsr() & ~0x3fU),
            "folder " + std::filesystem::current_path().string(),
            std::string("filter ") + (filter == ownFilter ? "own" : "other"),
            "error mode " + std::to_string(GetErrorMode()),
            "environment " + std::to_string(std::hash<std::string>()(environment))};
}

/// Brings the library's calls of a function of the system here.
void redirect(const std::string& function, const void* here) {
    auto* const library = reinterpret_cast<unsigned char*>(GetModuleHandleW(L"Kova_Drawer_Man.dll"));
    const auto* const headers =
        reinterpret_cast<IMAGE_NT_HEADERS*>(library + reinterpret_cast<IMAGE_DOS_HEADER*>(library)->e_lfanew);
    const auto imports = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    auto* from = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(library + imports);
    int found = 0;
    for (; from->Name != 0; ++from) {
        const auto* name = reinterpret_cast<IMAGE_THUNK_DATA*>(library + from->OriginalFirstThunk);
        auto* call = reinterpret_cast<IMAGE_THUNK_DATA*>(library + from->FirstThunk);
        for (; name->u1.AddressOfData != 0; ++name, ++call) {
            if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal) ||
                function != reinterpret_cast<IMAGE_IMPORT_BY_NAME*>(library + name->u1.AddressOfData)->Name)
                continue;
            DWORD protection = 0;
            VirtualProtect(call, sizeof(*call), PAGE_READWRITE, &protection);
            call->u1.Function = reinterpret_cast<std::uintptr_t>(here);
            ++found;
        }
    }
    expect(found == 1, "the library calls " + function);
}

int callsAboutTheScreen = 0;

void process() {
    std::thread([] {
        CoInitializeEx(nullptr, COINIT_MULTITHREADED);
        expect(throws([] { (void)kova::createComponent(); }) && newRecords() == 1,
               "no windows on such a thread");
        CoUninitialize();
    }).join();
    // Wine has no process that may still decide on it, so that only the attempt can be seen.
    for (const char* const function : {"SetProcessDpiAwareness", "SetProcessDpiAwarenessContext"})
        redirect(function, reinterpret_cast<const void*>(+[] { return ++callsAboutTheScreen, 0; }));
    SetUnhandledExceptionFilter(ownFilter);
    std::fesetround(FE_DOWNWARD);
    std::setlocale(LC_ALL, "German_Germany.1252");
    SetThreadLocale(MAKELCID(MAKELANGID(LANG_FRENCH, SUBLANG_DEFAULT), SORT_DEFAULT));
    const auto before = belongings();
    {
        // Before the host has any window, since these settle how the process sees the screen.
        const auto first = kova::createComponent();
        Till till;
        till.drawer->Show(0);
        till.handleMessages(10);
        expect(till.takesInput(), "the till takes input beside a dialog");
        kova::shutDown();
    }
    expect(callsAboutTheScreen == 0, "how the process sees the screen is left to the host");
    const auto after = belongings();
    for (std::size_t i = 0; i < before.size(); ++i)
        expect(after[i] == before[i], before[i] + " is " + after[i]);
}

void growth() {
    Till till;
    std::map<std::string, std::size_t> before;
    for (int shows = -20; shows < 100; ++shows) {
        if (shows == 0)
            before = resources();
        till.discardFrom = till.ticks + 1;
        till.drawer->Show(shows % 2);
        till.drawer->DiscardForm();
        till.handleMessages(1);
    }
    for (const auto& [name, count] : resources()) {
        std::cout << name << ": " << before[name] << ", after 100 shows " << count << std::endl;
        expect(count <= before[name] + 8, "no growth of " + name);
    }
}

/// The example, a process of its own, which ends while its dialog is open.
void example() {
    _wputenv_s(L"KOVA_LOG", L"NUL"); // it has no shop
    STARTUPINFOW start{};
    start.cb = sizeof(start);
    PROCESS_INFORMATION till{};
    wchar_t command[] = L"win32_till.exe none.db";
    CreateProcessW(nullptr, command, nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &till);
    const auto window = [] { return FindWindowW(L"Till", L"Till"); };
    expect(comes([&] { return window() != nullptr && IsWindowVisible(window()) != 0; }),
           "the till has a window");
    const auto clock = [&] {
        std::wstring text(32, L'\0');
        SendMessageW(FindWindowExW(window(), nullptr, L"STATIC", nullptr), WM_GETTEXT, text.size(),
                     reinterpret_cast<LPARAM>(text.data()));
        return text;
    };
    PostMessageW(FindWindowExW(window(), nullptr, L"BUTTON", L"Cash drawer, beside the till"), BM_CLICK, 0,
                 0);
    expect(comes([&] { return !shownWindows(true, till.dwProcessId).empty(); }), "the dialog is open");
    expect(comes([&, then = clock()] { return clock() != then; }), "the clock goes on");
    PostMessageW(window(), WM_CLOSE, 0, 0);
    DWORD code = EXIT_FAILURE;
    expect(WaitForSingleObject(till.hProcess, 20'000) == WAIT_OBJECT_0 &&
               GetExitCodeProcess(till.hProcess, &code) != 0 && code == EXIT_SUCCESS,
           "the till ends");
}

int status() {
    return failures == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}

/// Whose dialog is open when the process ends.
Till& lastTill() {
    static Till till;
    till.drawer->Show(0);
    return till;
}

void exitInsideAnEvent() {
    Till& till = lastTill();
    till.sink.onEvent = [] { std::exit(status()); };
    till.drawer->ApriCassetto();
}

const std::map<std::string, void (*)()> parts{
    {"modal", modal},
    {"end-of-the-loop", quit},
    {"example", example},
    {"left-alone", process},
    {"100-shows", growth},
    {"exit-by-returning", [] { lastTill(); }},
    {"exit-inside-an-event", exitInsideAnEvent},
    {"exit-at-once", [] { lastTill(), ExitProcess(status()); }},
    {"exit-of-the-thread", [] { std::thread([] { (new Till)->drawer->Show(0); }).join(); }}};

} // namespace

int main(int, char** arguments) {
    endWithCrashes();
    _wputenv_s(L"KOVA_LOG", logFile.c_str());
    parts.at(arguments[1])();
    expect(newRecords() == 0, "nothing of all this is a failure");
    std::filesystem::remove(logFile);
    return status();
}
