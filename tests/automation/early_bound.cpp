// A host compiled against the type library's header, and what Windows' own loader reads in the library.
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
using kova::com::query;

std::string name(ITypeInfo& info, MEMBERID id) {
    BSTR text = nullptr;
    info.GetDocumentation(id, &text, nullptr, nullptr, nullptr);
    const std::string result = narrow(text);
    SysFreeString(text);
    return result;
}

std::string braced(const GUID& id) {
    wchar_t text[40];
    StringFromGUID2(id, text, 40);
    return narrow(std::wstring_view(text));
}

std::string typeName(ITypeInfo& info, const TYPEDESC& type) {
    if (type.vt == VT_PTR)
        return typeName(info, *type.lptdesc) + "*";
    if (type.vt != VT_USERDEFINED)
        return std::to_string(type.vt);
    Pointer<ITypeInfo> referred;
    info.GetRefTypeInfo(type.hreftype, referred.put());
    return referred ? name(*referred.get(), MEMBERID_NIL) : "?";
}

void listFunctions(ITypeInfo& info, const TYPEATTR& attributes) {
    for (UINT i = 0; i < attributes.cFuncs; ++i) {
        FUNCDESC* function = nullptr;
        info.GetFuncDesc(i, &function);
        if (function->memid < 0x60000000) { // not those of IUnknown and IDispatch
            std::printf("  slot %d id %ld kind %d %s(", function->oVft / static_cast<int>(sizeof(void*)),
                        function->memid, function->invkind, name(info, function->memid).c_str());
            for (SHORT p = 0; p < function->cParams; ++p)
                std::printf("%s%s:%x", p > 0 ? " " : "",
                            typeName(info, function->lprgelemdescParam[p].tdesc).c_str(),
                            function->lprgelemdescParam[p].paramdesc.wParamFlags);
            std::printf(")\n");
        }
        info.ReleaseFuncDesc(function);
    }
    for (UINT i = 0; i < attributes.cVars; ++i) {
        VARDESC* value = nullptr;
        info.GetVarDesc(i, &value);
        std::printf("  %s = %ld\n", name(info, value->memid).c_str(), value->lpvarValue->lVal);
        info.ReleaseVarDesc(value);
    }
    for (UINT i = 0; i < attributes.cImplTypes && attributes.typekind == TKIND_COCLASS; ++i) {
        HREFTYPE reference = 0;
        INT flags = 0;
        Pointer<ITypeInfo> implemented;
        info.GetRefTypeOfImplType(i, &reference);
        info.GetImplTypeFlags(i, &flags);
        info.GetRefTypeInfo(reference, implemented.put());
        std::printf("  implements %s flags %x\n", name(*implemented.get(), MEMBERID_NIL).c_str(), flags);
    }
}

/// Everything that is frozen, as the registered library has it.
void listLibrary() {
    Pointer<ITypeLib> library;
    TLIBATTR* attributes = nullptr;
    if (FAILED(LoadRegTypeLib(LIBID_Kova_Drawer_Man, 4, 10, 0x409, library.put())))
        return;
    library->GetLibAttr(&attributes);
    std::printf("library %s %u.%u locale %lx\n", braced(attributes->guid).c_str(), attributes->wMajorVerNum,
                attributes->wMinorVerNum, attributes->lcid);
    library->ReleaseTLibAttr(attributes);
    for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
        Pointer<ITypeInfo> info;
        TYPEATTR* type = nullptr;
        library->GetTypeInfo(i, info.put());
        info->GetTypeAttr(&type);
        std::printf("%s %s kind %d flags %x\n", name(*info.get(), MEMBERID_NIL).c_str(),
                    braced(type->guid).c_str(), type->typekind, type->wTypeFlags);
        listFunctions(*info.get(), *type);
        info->ReleaseTypeAttr(type);
    }
}

void tell(const char* what, HRESULT code, BSTR source = nullptr, BSTR description = nullptr) {
    Pointer<IErrorInfo> details;
    if (GetErrorInfo(0, details.put()) == S_OK) {
        details->GetSource(&source);
        details->GetDescription(&description);
    }
    std::printf("%s %lx [%s] %s\n", what, static_cast<unsigned long>(code), narrow(source).c_str(),
                narrow(description).c_str());
    SysFreeString(source);
    SysFreeString(description);
}

VARIANT reference(VARTYPE type, void* value) {
    VARIANT argument;
    argument.vt = static_cast<VARTYPE>(type | VT_BYREF);
    argument.byref = value;
    return argument;
}

/// A movement with a handler, through the function table and through `Invoke`.
void move(_cls_Kova_Drawer_Man* drawer, bool late) {
    LONG payment = 1, activity = 2;
    double amount = 12.5;
    BSTR currency = SysAllocString(L"€"), note = nullptr;
    short place = 0;
    VARIANT_BOOL incoming = VARIANT_FALSE;
    if (!late)
        tell("early",
             drawer->SalvaPagamento(&payment, &amount, &currency, &note, &place, &activity, &incoming));
    else {
        VARIANT arguments[] = {reference(VT_BOOL, &incoming), reference(VT_I4, &activity),
                               reference(VT_I2, &place),      reference(VT_BSTR, &note),
                               reference(VT_BSTR, &currency), reference(VT_R8, &amount),
                               reference(VT_I4, &payment)};
        DISPPARAMS parameters{arguments, nullptr, 7, 0};
        EXCEPINFO details{};
        const HRESULT code = drawer->Invoke(2, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters,
                                            nullptr, &details, nullptr);
        tell("late", code, details.bstrSource, details.bstrDescription);
    }
    std::printf("  %ld %g %s '%s' %d %ld %d\n", payment, amount, narrow(currency).c_str(),
                narrow(note).c_str(), place, activity, incoming);
    SysFreeString(currency);
    SysFreeString(note);
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
    for (int i = 0; i < 4; ++i) {
        fails = i >= 2;
        move(drawer, i % 2 != 0);
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
    listLibrary();
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
