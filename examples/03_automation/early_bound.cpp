// A till compiled against the header made from the component's type library, without a line of the
// component's own C++ interface: any compiler. Its argument is a connection text.
//
//   g++ -std=c++17 -Iinclude/kova early_bound.cpp -o till.exe -static -lole32 -loleaut32 -luuid
//   cl /std:c++17 /EHsc /Iinclude\kova /Fe:till.exe early_bound.cpp ole32.lib oleaut32.lib uuid.lib
//   shell32.lib
#include <windows.h>

#include <initguid.h> // defines the identifiers that the header below declares

#include <kova_drawer_man_automation.h>
#include <ocidl.h>
#include <shellapi.h>

#include <cstdio>
#include <string>

namespace {

std::string utf8(const wchar_t* text) {
    const int length = WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
    std::string result(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text, -1, &result[0], length, nullptr, nullptr);
    return result.c_str();
}

/// What the component asks of the till. Arguments come from the last to the first, each by reference: what is
/// written into them reaches the component. Lives as long as the program, so that nobody needs to count.
class Till final : public __cls_Kova_Drawer_Man {
  public:
    std::string stored;

    HRESULT STDMETHODCALLTYPE Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* given, VARIANT*,
                                     EXCEPINFO* failure, UINT*) override {
        const VARIANT* const argument = given->rgvarg;
        if (event == 1)
            return save(*argument[6].plVal, *argument[5].pdblVal, *argument[4].pbstrVal,
                        *argument[3].pbstrVal, *argument[2].piVal, *argument[1].plVal, *argument[0].pboolVal,
                        failure);
        if (event == 2 || event == 3)
            std::printf("%s %s\n", event == 2 ? "print" : "preview", utf8(*argument[0].pbstrVal).c_str());
        if (event == 4)
            std::printf("open the drawer\n");
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** found) override {
        *found =
            id == IID_IUnknown || id == IID_IDispatch || id == DIID___cls_Kova_Drawer_Man ? this : nullptr;
        return *found == nullptr ? E_NOINTERFACE : S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return E_NOTIMPL;
    }

  private:
    HRESULT save(LONG payment, double amount, const wchar_t* currency, const wchar_t* note, short drawer,
                 LONG activity, VARIANT_BOOL in, EXCEPINFO* failure) {
        if (amount > 1000) { // the cashier keeps the entry and reads why
            failure->scode = E_ACCESSDENIED;
            failure->bstrSource = SysAllocString(L"Till");
            failure->bstrDescription = SysAllocString(L"More than 1000 is the manager's");
            std::printf("refused %g\n", amount);
            return DISP_E_EXCEPTION;
        }
        char line[64];
        std::snprintf(line, sizeof line, "%s %g ", in != VARIANT_FALSE ? "in" : "out", amount);
        stored += line + utf8(currency);
        std::snprintf(line, sizeof line, ", payment %ld, drawer %d, activity %ld: ", payment, drawer,
                      activity);
        stored += line + utf8(note) + "\n";
        return S_OK;
    }
};

/// A failed call leaves its text with the thread.
HRESULT told(const char* what, HRESULT code) {
    IErrorInfo* details = nullptr;
    BSTR text = nullptr;
    if (SUCCEEDED(code))
        return code;
    if (GetErrorInfo(0, &details) == S_OK) {
        details->GetDescription(&text);
        details->Release();
    }
    std::printf("%s: %08lx %s\n", what, static_cast<unsigned long>(code),
                text != nullptr ? utf8(text).c_str() : "");
    SysFreeString(text);
    return code;
}

IConnectionPoint* eventsOf(_cls_Kova_Drawer_Man* drawer) {
    IConnectionPointContainer* container = nullptr;
    IConnectionPoint* point = nullptr;
    if (SUCCEEDED(
            drawer->QueryInterface(IID_IConnectionPointContainer, reinterpret_cast<void**>(&container)))) {
        container->FindConnectionPoint(DIID___cls_Kova_Drawer_Man, &point);
        container->Release();
    }
    return point;
}

void work(_cls_Kova_Drawer_Man* drawer, const wchar_t* connectionText) {
    static Till till;
    DWORD cookie = 0;
    IConnectionPoint* const events = eventsOf(drawer);
    if (events == nullptr || FAILED(told("Advise", events->Advise(&till, &cookie))))
        return;
    BSTR text = SysAllocString(connectionText), result = nullptr;
    LONG number = 1, modal = 1;
    if (SUCCEEDED(told("InizializzaByConnString", drawer->InizializzaByConnString(&text))) &&
        SUCCEEDED(told("idCassa", drawer->put_idCassa(&number))) &&
        SUCCEEDED(told("Show", drawer->Show(&modal, &result)))) // returns when the dialog has been closed
        std::printf("stored:\n%s", till.stored.c_str());
    SysFreeString(text);
    SysFreeString(result);
    events->Unadvise(cookie);
    events->Release();
}

} // namespace

int main() {
    int count = 0;
    wchar_t** const arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    _cls_Kova_Drawer_Man* drawer = nullptr;
    SetConsoleOutputCP(CP_UTF8);
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    const HRESULT code =
        told("create", CoCreateInstance(CLSID_cls_Kova_Drawer_Man, nullptr, CLSCTX_INPROC_SERVER,
                                        IID__cls_Kova_Drawer_Man, reinterpret_cast<void**>(&drawer)));
    if (drawer != nullptr) {
        work(drawer, count > 1 ? arguments[1] : L"Data Source=shop.db");
        drawer->Release();
    }
    CoUninitialize();
    LocalFree(arguments);
    return FAILED(code) ? 1 : 0;
}
