#include "list_library.h"
#include "com/com_headers.h"
#include "com/com_pointer.h"
#include "com/com_values.h"

#include <cstdio>

namespace kova {
namespace {

using com::narrow;
using com::Pointer;

std::string name(ITypeInfo& info, MEMBERID id = MEMBERID_NIL) {
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

std::string nameOf(ITypeInfo& info, HREFTYPE reference) {
    Pointer<ITypeInfo> referred;
    info.GetRefTypeInfo(reference, referred.put());
    return referred ? name(*referred.get()) : "?";
}

/// The number of a simple type; * for a pointer.
std::string typeName(ITypeInfo& info, const TYPEDESC& type) {
    return type.vt == VT_PTR           ? typeName(info, *type.lptdesc) + "*"
           : type.vt != VT_USERDEFINED ? std::to_string(type.vt)
                                       : nameOf(info, type.hreftype);
}

void listFunction(ITypeInfo& info, const FUNCDESC& function) {
    std::printf("  slot %d id %ld kind %d flags %x %s %s(", function.oVft / static_cast<int>(sizeof(void*)),
                function.memid, function.invkind, function.wFuncFlags,
                typeName(info, function.elemdescFunc.tdesc).c_str(), name(info, function.memid).c_str());
    for (SHORT i = 0; i < function.cParams; ++i) {
        const ELEMDESC& parameter = function.lprgelemdescParam[i];
        const PARAMDESC& how = parameter.paramdesc;
        std::printf("%s%s:%x", i > 0 ? " " : "", typeName(info, parameter.tdesc).c_str(), how.wParamFlags);
        if ((how.wParamFlags & PARAMFLAG_FHASDEFAULT) != 0)
            std::printf("=%ld", how.pparamdescex->varDefaultValue.lVal);
    }
    std::printf(")\n");
}

void listType(ITypeInfo& info, const TYPEATTR& type) {
    std::printf("%s %s kind %d flags %x%s\n", name(info).c_str(), braced(type.guid).c_str(), type.typekind,
                type.wTypeFlags,
                type.typekind == TKIND_ALIAS ? (" of " + typeName(info, type.tdescAlias)).c_str() : "");
    for (UINT i = 0; i < type.cFuncs; ++i) {
        FUNCDESC* function = nullptr;
        info.GetFuncDesc(i, &function);
        if (function->memid < 0x60000000) // not those of IUnknown and IDispatch
            listFunction(info, *function);
        info.ReleaseFuncDesc(function);
    }
    for (UINT i = 0; i < type.cVars; ++i) {
        VARDESC* value = nullptr;
        info.GetVarDesc(i, &value);
        std::printf("  %s = %ld\n", name(info, value->memid).c_str(), value->lpvarValue->lVal);
        info.ReleaseVarDesc(value);
    }
    for (UINT i = 0; i < type.cImplTypes && type.typekind == TKIND_COCLASS; ++i) {
        HREFTYPE reference = 0;
        INT flags = 0;
        info.GetRefTypeOfImplType(i, &reference);
        info.GetImplTypeFlags(i, &flags);
        std::printf("  implements %s flags %x\n", nameOf(info, reference).c_str(), flags);
    }
}

} // namespace

bool listLibrary(const std::wstring& file) {
    Pointer<ITypeLib> library;
    if (FAILED(LoadTypeLibEx(file.c_str(), REGKIND_NONE, library.put())))
        return false;
    TLIBATTR* attributes = nullptr;
    library->GetLibAttr(&attributes);
    std::printf("library %s %u.%u locale %lx\n", braced(attributes->guid).c_str(), attributes->wMajorVerNum,
                attributes->wMinorVerNum, attributes->lcid);
    library->ReleaseTLibAttr(attributes);
    for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
        Pointer<ITypeInfo> info;
        TYPEATTR* type = nullptr;
        library->GetTypeInfo(i, info.put());
        info->GetTypeAttr(&type);
        listType(*info.get(), *type);
        info->ReleaseTypeAttr(type);
    }
    return true;
}

} // namespace kova
