// A host compiled against the type library's header.
//
//   early_bound [sta|mta]    with an apartment, the component lives in another one
#include "com/com_headers.h"

#include <initguid.h> // defines the header's identifiers

#include "component_windows.h"

#include <cstdio>
#include <string>

namespace {

using kova::com::narrow;
using kova::com::Pointer;

void tell(const char* what, HRESULT code) {
    Pointer<IErrorInfo> details;
    BSTR source = nullptr, description = nullptr;
    if (GetErrorInfo(0, details.put()) == S_OK) {
        details->GetSource(&source);
        details->GetDescription(&description);
    }
    std::printf("%s %lx [%s] %s\n", what, static_cast<unsigned long>(code), narrow(source).c_str(),
                narrow(description).c_str());
    SysFreeString(source);
    SysFreeString(description);
}

/// The handler writes its answers; then it fails as well.
void handle(_cls_Kova_Drawer_Man* drawer) {
    bool fails = false;
    const DWORD cookie = kova::test::connect(drawer, [&](DISPID id, VARIANT* arguments, EXCEPINFO& details) {
        kova::test::answer(id, arguments);
        if (!fails)
            return S_OK;
        details.wCode = 513;
        details.bstrSource = SysAllocString(L"Till");
        details.bstrDescription = SysAllocString(L"The drawer is locked");
        return DISP_E_EXCEPTION;
    });
    for (int i = 0; i < 2; ++i) {
        kova::test::Movement m;
        fails = i > 0;
        tell("movement", m.raise(drawer));
        std::printf("  %ld %g %s '%s' %d %ld %d\n", m.payment, m.amount, narrow(m.currency).c_str(),
                    narrow(m.note).c_str(), m.place, m.activity, m.incoming);
    }
    BSTR day = SysAllocString(L"16/11/2026");
    tell("text", drawer->Stampa(&day));
    std::printf("  %s\n", narrow(day).c_str());
    SysFreeString(day);
    const HRESULT first = kova::test::eventsOf(drawer)->Unadvise(cookie),
                  second = kova::test::eventsOf(drawer)->Unadvise(cookie);
    std::printf("unadvised %lx, then %lx\n", first, second);
}

} // namespace

int main(int count, char** arguments) {
    const std::string caller = count > 1 ? arguments[1] : "";
    CoInitializeEx(nullptr, caller == "mta" ? COINIT_MULTITHREADED : COINIT_APARTMENTTHREADED);
    {
        Pointer<_cls_Kova_Drawer_Man> drawer;
        auto** const made = reinterpret_cast<void**>(drawer.put());
        tell("create", caller.empty() ? CoCreateInstance(CLSID_cls_Kova_Drawer_Man, nullptr,
                                                         CLSCTX_INPROC_SERVER, IID__cls_Kova_Drawer_Man, made)
                                      : kova::test::createElsewhere(CLSID_cls_Kova_Drawer_Man,
                                                                    IID__cls_Kova_Drawer_Man, made));
        if (!drawer)
            return 1;
        BSTR currency = SysAllocString(L"CHF");
        tell("write", drawer->put_ValutaAziendale(&currency));
        SysFreeString(currency);
        tell("read", drawer->get_ValutaAziendale(&currency));
        std::printf("%s\n", narrow(currency).c_str());
        SysFreeString(currency);
        handle(drawer.get());
        LONG modeless = 0;
        BSTR nothing = nullptr;
        tell("show", drawer->Show(&modeless, &nothing));
        tell("discard", drawer->DiscardForm());
        SysFreeString(nothing);
        drawer->AddRef();
        std::printf("references %lu\n", drawer->Release());
    }
    std::printf("let go %d, sinks %d\n", kova::test::letGo(), kova::test::Sink::living.load());
    CoUninitialize();
    return 0;
}
