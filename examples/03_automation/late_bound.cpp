// A till that knows the component's name alone: Windows' own headers, any compiler. Its argument is a
// connection text.
//
//   g++ -std=c++17 late_bound.cpp -o till.exe -static -lole32 -loleaut32 -luuid
//   cl /std:c++17 /EHsc /Fe:till.exe late_bound.cpp ole32.lib oleaut32.lib uuid.lib shell32.lib
#include <windows.h>

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
class Till final : public IDispatch {
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
        *found = id == IID_IUnknown || id == IID_IDispatch ? this : nullptr;
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

/// Calls a method, or writes a property.
HRESULT call(IDispatch* object, const wchar_t* member, WORD kind, VARIANT* argument = nullptr) {
    LPOLESTR name = const_cast<LPOLESTR>(member);
    DISPID id = 0, written = DISPID_PROPERTYPUT;
    EXCEPINFO failure{};
    DISPPARAMS parameters{argument, nullptr, argument != nullptr ? 1U : 0U, 0};
    if (kind == DISPATCH_PROPERTYPUT) {
        parameters.rgdispidNamedArgs = &written;
        parameters.cNamedArgs = 1;
    }
    HRESULT code = object->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id);
    if (SUCCEEDED(code))
        code =
            object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, kind, &parameters, nullptr, &failure, nullptr);
    if (FAILED(code))
        std::printf("%s: %08lx %s\n", utf8(member).c_str(), static_cast<unsigned long>(code),
                    failure.bstrDescription != nullptr ? utf8(failure.bstrDescription).c_str() : "");
    SysFreeString(failure.bstrSource);
    SysFreeString(failure.bstrDescription);
    SysFreeString(failure.bstrHelpFile);
    return code;
}

/// The one connection point that the component has is that of its events.
IConnectionPoint* eventsOf(IDispatch* object) {
    IConnectionPointContainer* container = nullptr;
    IEnumConnectionPoints* points = nullptr;
    IConnectionPoint* point = nullptr;
    if (SUCCEEDED(
            object->QueryInterface(IID_IConnectionPointContainer, reinterpret_cast<void**>(&container)))) {
        if (SUCCEEDED(container->EnumConnectionPoints(&points))) {
            points->Next(1, &point, nullptr);
            points->Release();
        }
        container->Release();
    }
    return point;
}

void work(IDispatch* drawer, const wchar_t* connectionText) {
    static Till till;
    DWORD cookie = 0;
    IConnectionPoint* const events = eventsOf(drawer);
    if (events == nullptr || FAILED(events->Advise(&till, &cookie)))
        return;
    VARIANT argument;
    argument.vt = VT_BSTR;
    argument.bstrVal = SysAllocString(connectionText);
    const HRESULT opened = call(drawer, L"InizializzaByConnString", DISPATCH_METHOD, &argument);
    SysFreeString(argument.bstrVal);
    argument.vt = VT_I4;
    argument.lVal = 1;
    if (SUCCEEDED(opened) && SUCCEEDED(call(drawer, L"idCassa", DISPATCH_PROPERTYPUT, &argument)) &&
        SUCCEEDED(call(drawer, L"Show", DISPATCH_METHOD))) // returns when the dialog has been closed
        std::printf("stored:\n%s", till.stored.c_str());
    events->Unadvise(cookie);
    events->Release();
}

} // namespace

int main() {
    int count = 0;
    wchar_t** const arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    CLSID id{};
    IDispatch* drawer = nullptr;
    SetConsoleOutputCP(CP_UTF8);
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    HRESULT code = CLSIDFromProgID(L"Kova_Drawer_Man.cls_Kova_Drawer_Man", &id);
    if (SUCCEEDED(code))
        code = CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                                reinterpret_cast<void**>(&drawer));
    if (FAILED(code))
        std::printf("the component cannot be created: %08lx\n", static_cast<unsigned long>(code));
    if (drawer != nullptr) {
        work(drawer, count > 1 ? arguments[1] : L"Data Source=shop.db");
        drawer->Release();
    }
    CoUninitialize();
    LocalFree(arguments);
    return FAILED(code) ? 1 : 0;
}
