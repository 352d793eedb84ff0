// A till of plain Windows: its own window and message loop, its own clock that goes on while the dialog is
// open, no Qt. Start it with a database file.
#define UNICODE
#include <kova_drawer_man.h>

#include <windows.h>

#include <shellapi.h>

namespace {

std::wstring wide(const std::string& utf8) {
    std::wstring text(utf8.size(), L'\0');
    const auto length = static_cast<int>(utf8.size());
    text.resize(
        static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, utf8.data(), length, text.data(), length)));
    return text;
}

class Till : public kova::EventSink {
  public:
    explicit Till(std::wstring database);
    void tick();
    void touched(WORD button);

  private:
    // The component: create, connect, options, Show.
    void openDrawer(std::int32_t modality) {
        if (!drawer_) {
            drawer_ = kova::createComponent();
            connection_ = drawer_->connect(*this);
            drawer_->InizializzaByConnString("Data Source=" + database_);
            drawer_->idCassa(1);
        }
        drawer_->Show(modality);
    }

    // What it asks of the till. Store the movement here; throw if you cannot.
    void SalvaPagamento(std::int32_t&, double& amount, std::string& currency, std::string& note,
                        std::int16_t&, std::int32_t&, bool& in) override {
        print((in ? "in " : "out ") + kova::formatAmount(amount, 2) + " " + currency + "  " + note);
    }
    void Stampa(std::string& day) override { print("print " + day); }
    void Anteprima(std::string& day) override { print("preview " + day); }
    void ApriCassetto() override { print("open the drawer"); }

    HWND child(const wchar_t* kind, const wchar_t* text, int row, int height, DWORD style, WORD id = 0) {
        return CreateWindowEx(0, kind, text, WS_CHILD | WS_VISIBLE | style, 10, row, 300, height, window_,
                              reinterpret_cast<HMENU>(std::uintptr_t{id}), nullptr, nullptr);
    }
    void print(const std::string& line) {
        SendMessage(receipt_, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(wide(line).c_str()));
    }

    static constexpr WORD Modal = 1;
    static constexpr WORD Modeless = 2;
    std::string database_;
    HWND window_;
    HWND clock_;
    HWND receipt_;
    std::shared_ptr<kova::cls_Kova_Drawer_Man> drawer_;
    kova::Connection connection_;
};

LRESULT CALLBACK windowProcedure(HWND window, UINT message, WPARAM word, LPARAM data) {
    auto* const till = reinterpret_cast<Till*>(GetWindowLongPtr(window, GWLP_USERDATA));
    try {
        if (message == WM_TIMER)
            till->tick();
        if (message == WM_COMMAND && data != 0)
            till->touched(LOWORD(word));
        if (message == WM_DESTROY)
            PostQuitMessage(0);
    } catch (const kova::Error& failure) {
        MessageBox(window, wide(failure.what()).c_str(), L"Till", MB_ICONERROR);
    }
    return DefWindowProc(window, message, word, data);
}

Till::Till(std::wstring database) {
    const auto length = static_cast<int>(database.size());
    database_.resize(database.size() * 3);
    database_.resize(
        static_cast<std::size_t>(WideCharToMultiByte(CP_UTF8, 0, database.data(), length, database_.data(),
                                                     static_cast<int>(database_.size()), nullptr, nullptr)));
    WNDCLASS kind{};
    kind.lpfnWndProc = windowProcedure;
    kind.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    kind.hCursor = LoadCursor(nullptr, IDC_ARROW);
    kind.lpszClassName = L"Till";
    RegisterClass(&kind);
    window_ = CreateWindowEx(0, L"Till", L"Till", WS_OVERLAPPEDWINDOW, 20, 20, 340, 420, nullptr, nullptr,
                             nullptr, nullptr);
    SetWindowLongPtr(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    clock_ = child(L"STATIC", L"", 10, 20, 0);
    SetFocus(child(L"EDIT", L"", 40, 26, WS_BORDER));
    child(L"BUTTON", L"Cash drawer", 80, 40, 0, Modal);
    child(L"BUTTON", L"Cash drawer, beside the till", 130, 40, 0, Modeless);
    receipt_ = child(L"LISTBOX", L"", 180, 180, WS_BORDER);
    SetTimer(window_, 1, 100, nullptr);
    ShowWindow(window_, SW_SHOW);
}

void Till::tick() {
    SYSTEMTIME now;
    GetLocalTime(&now);
    wchar_t text[16];
    wsprintfW(text, L"%02d:%02d:%02d.%d", now.wHour, now.wMinute, now.wSecond, now.wMilliseconds / 100);
    SetWindowText(clock_, text);
}

void Till::touched(WORD button) {
    if (button == Modal || button == Modeless)
        openDrawer(button == Modal ? 1 : 0);
}

} // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    int count = 0;
    wchar_t** const arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    Till till(count > 1 ? arguments[1] : L"shop.db");
    MSG message;
    while (GetMessage(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessage(&message);
    }
    return 0;
}
