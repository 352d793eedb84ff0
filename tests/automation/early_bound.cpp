// A host compiled against the type library's header, and what Windows' own loader reads in the library.
#include "com/com_pointer.h"
#include "com/com_values.h"

#include <initguid.h> // defines the header's identifiers

#include "kova_drawer_man_automation.h"

#include <cstdio>
#include <string>
#include <thread>

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

HRESULT invoke(IDispatch* drawer, DISPID id, WORD kind, DISPPARAMS parameters, UINT* wrong = nullptr) {
    EXCEPINFO details{};
    return drawer->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, kind, &parameters, nullptr, &details, wrong);
}

/// What no compiler lets a script do.
void misuse(_cls_Kova_Drawer_Man* drawer) {
    tell("null", drawer->put_idCassa(nullptr));
    std::thread([&] {
        LONG id = 5;
        tell("other thread", drawer->put_idCassa(&id));
    }).join();
    VARIANT number, missing;
    VariantInit(&number);
    number.vt = VT_I4;
    number.lVal = 0;
    missing.vt = VT_ERROR;
    missing.scode = DISP_E_PARAMNOTFOUND;
    DISPID method = 0, other = 7;
    tell("named", invoke(drawer, 3, DISPATCH_METHOD, {&number, &method, 1, 1}));
    tell("discard", drawer->DiscardForm());
    tell("unknown name", invoke(drawer, 3, DISPATCH_METHOD, {&number, &other, 1, 1}));
    tell("missing", invoke(drawer, 2, DISPATCH_METHOD, {&missing, nullptr, 1, 0}));
    tell("no such id", invoke(drawer, 99, DISPATCH_METHOD, {}));
    tell("not readable", invoke(drawer, 5, DISPATCH_PROPERTYGET, {}));
    const Pointer<IUnknown> first = query<IUnknown>(drawer, IID_IUnknown),
                            second = query<IUnknown>(
                                query<IProvideClassInfo2>(drawer, IID_IProvideClassInfo2).get(),
                                IID_IUnknown);
    std::printf("one identity %d\n", first.get() == second.get());
    Pointer<IEnumConnectionPoints> points, copy;
    Pointer<IConnectionPoint> point;
    query<IConnectionPointContainer>(drawer, IID_IConnectionPointContainer)
        ->EnumConnectionPoints(points.put());
    points->Clone(copy.put());
    const HRESULT one = points->Next(1, point.put(), nullptr), none = points->Next(1, point.put(), nullptr);
    std::printf("points %ld then %ld, of a copy %ld\n", one, none, copy->Next(1, point.put(), nullptr));
}

/// Many calls leave nothing behind.
void repeat(_cls_Kova_Drawer_Man* drawer) {
    DWORD before = 0, after = 0;
    LONG value = 0;
    bool right = true;
    GetProcessHandleCount(GetCurrentProcess(), &before);
    const ULONGLONG start = GetTickCount64();
    for (LONG i = 0; i < 100000; ++i) {
        VARIANT argument;
        VariantInit(&argument);
        argument.vt = VT_I4 | VT_BYREF;
        argument.plVal = &i;
        DISPID put = DISPID_PROPERTYPUT;
        right = right && SUCCEEDED(invoke(drawer, 9, DISPATCH_PROPERTYPUT, {&argument, &put, 1, 1})) &&
                SUCCEEDED(drawer->get_idCassa(&value)) && value == i;
    }
    std::fprintf(stderr, "%.2f us a late-bound write and a read through the table\n",
                 static_cast<double>(GetTickCount64() - start) / 100);
    GetProcessHandleCount(GetCurrentProcess(), &after);
    drawer->AddRef();
    std::printf("100000 calls right %d, handles level %d, references %lu\n", right, after <= before,
                drawer->Release());
}

} // namespace

int main() {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    listLibrary();
    {
        Pointer<_cls_Kova_Drawer_Man> drawer;
        tell("create", CoCreateInstance(CLSID_cls_Kova_Drawer_Man, nullptr, CLSCTX_INPROC_SERVER,
                                        IID__cls_Kova_Drawer_Man, reinterpret_cast<void**>(drawer.put())));
        if (!drawer)
            return 1;
        BSTR currency = SysAllocString(L"CHF");
        tell("write", drawer->put_ValutaAziendale(&currency));
        SysFreeString(currency);
        tell("read", drawer->get_ValutaAziendale(&currency));
        std::printf("%s\n", narrow(currency).c_str());
        SysFreeString(currency);
        misuse(drawer.get());
        repeat(drawer.get());
    }
    CoUninitialize();
    std::printf("released\n");
    return 0;
}
