#include "com/late_bound.h"

#include <cstdio>
#include <cwchar>
#include <iterator>
#include <vector>

namespace kova::com {
namespace {

/// What a failed call leaves behind; its texts are freed in the end.
struct Details : EXCEPINFO {
    Details() : EXCEPINFO{} {}
    Details(const Details&) = delete;
    Details& operator=(const Details&) = delete;
    ~Details() {
        SysFreeString(bstrSource);
        SysFreeString(bstrDescription);
        SysFreeString(bstrHelpFile);
    }
};

/// What the object left in the thread's error object.
std::string threadDescription() {
    Pointer<IErrorInfo> information;
    if (GetErrorInfo(0, information.put()) != S_OK)
        return {};
    BSTR text = nullptr;
    information->GetDescription(&text);
    std::string result = narrow(text);
    SysFreeString(text);
    return result;
}

CallFailure failureOf(const wchar_t* member, HRESULT code, std::string description = {}) {
    if (description.empty()) {
        char number[16] = {};
        std::snprintf(number, sizeof number, "0x%08lX", static_cast<unsigned long>(code));
        description = narrow(std::wstring_view(member)) + " failed: " + number;
    }
    return {code, description};
}

CallFailure failureOf(const wchar_t* member, HRESULT code, Details& details) {
    if (code != DISP_E_EXCEPTION)
        return failureOf(member, code, threadDescription());
    if (details.pfnDeferredFillIn != nullptr)
        details.pfnDeferredFillIn(&details);
    if (FAILED(details.scode))
        code = details.scode;
    else if (details.wCode != 0)
        code = NumberedErrors | details.wCode;
    return failureOf(member, code, narrow(details.bstrDescription));
}

void convert(const wchar_t* member, Value& value, VARTYPE type) {
    const HRESULT code = VariantChangeType(&value, &value, 0, type);
    if (FAILED(code))
        throw failureOf(member, code);
}

} // namespace

MemberIds noMemberIds() {
    return MemberIds([](const wchar_t* a, const wchar_t* b) { return std::wcscmp(a, b) < 0; });
}

LateBound LateBound::create(const wchar_t* className, MemberIds& ids) {
    CLSID id{};
    Pointer<IDispatch> object;
    HRESULT code = CLSIDFromProgID(className, &id);
    if (SUCCEEDED(code))
        code = CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                                reinterpret_cast<void**>(object.put()));
    if (FAILED(code))
        throw failureOf(className, code);
    return {std::move(object), ids};
}

std::int32_t LateBound::number(const wchar_t* member) const {
    Value value = call(member);
    convert(member, value, VT_I4);
    return value->lVal;
}

std::string LateBound::text(const wchar_t* member) const {
    Value value = call(member);
    convert(member, value, VT_BSTR);
    return narrow(value->bstrVal);
}

Pointer<IDispatch> LateBound::dispatchOf(const wchar_t* member, Value value) {
    if (value->vt == VT_EMPTY)
        return {};
    convert(member, value, VT_DISPATCH);
    return Pointer<IDispatch>(value->pdispVal);
}

DISPID LateBound::idOf(const wchar_t* member) const {
    if (!object_)
        throw failureOf(member, E_POINTER);
    if (const auto known = ids_->find(member); known != ids_->end())
        return known->second;
    DISPID id = DISPID_UNKNOWN;
    auto* name = const_cast<wchar_t*>(member); // which nobody writes to
    const HRESULT code = object_->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id);
    if (FAILED(code))
        throw failureOf(member, code);
    ids_->emplace(member, id);
    return id;
}

Value LateBound::invoke(const wchar_t* member, int kind, std::span<Value> arguments) const {
    const DISPID id = idOf(member);
    std::vector<VARIANT> given; // the last one first
    for (auto argument = arguments.rbegin(); argument != arguments.rend(); ++argument)
        given.push_back(**argument);
    DISPPARAMS parameters{given.data(), nullptr, static_cast<UINT>(given.size()), 0};
    DISPID written = DISPID_PROPERTYPUT;
    const bool writes = (kind & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
    if (writes) {
        parameters.rgdispidNamedArgs = &written;
        parameters.cNamedArgs = 1;
    }
    Value result;
    Details details;
    SetErrorInfo(0, nullptr); // what an earlier call left there is not about this one
    const HRESULT code = object_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, static_cast<WORD>(kind),
                                         &parameters, writes ? nullptr : &result, &details, nullptr);
    if (FAILED(code))
        throw failureOf(member, code, details);
    return result;
}

} // namespace kova::com
