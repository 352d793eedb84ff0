#include "automation/component_object.h"

#include "automation/arguments.h"
#include "component/type_description.h"

#include <utility>

namespace kova::automation {
namespace {

using type_description::MemberKind;

/// The member that a late-bound call means: languages that do not know a property from a method ask for both.
const type_description::Member* wanted(DISPID id, WORD kinds) {
    const type_description::Member* found = nullptr;
    if ((kinds & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0)
        return type_description::find(id, MemberKind::PropertyWrite);
    if ((kinds & DISPATCH_METHOD) != 0)
        found = type_description::find(id, MemberKind::Method);
    if (found == nullptr && (kinds & DISPATCH_PROPERTYGET) != 0)
        found = type_description::find(id, MemberKind::PropertyRead);
    return found;
}

Variant carriedOut(cls_Kova_Drawer_Man& component, const type_description::Member& member,
                   std::span<Variant> values) {
    if (member.kind == MemberKind::Method)
        return component.invoke(member.dispatchId, values);
    component.set(member.dispatchId, values[0]);
    return {};
}

/// Reads a property through its entry in the function table, the quickest way there is.
HRESULT readProperty(_cls_Kova_Drawer_Man* object, const type_description::Member& member, VARIANT* result) {
    using Read = HRESULT(STDMETHODCALLTYPE*)(_cls_Kova_Drawer_Man*, void*);
    constexpr int FirstSlot = 7; // after those of IDispatch
    VARIANT value;
    VariantInit(&value);
    const HRESULT code =
        (*reinterpret_cast<const Read* const*>(object))[FirstSlot + member.slot](object, &value.byref);
    if (FAILED(code))
        return code;
    value.vt = variantType(member.result);
    if (result == nullptr)
        return VariantClear(&value);
    *result = value;
    return S_OK;
}

/// The description of a type; whoever asks gets a reference.
HRESULT copyTypeInfo(const GUID& id, ITypeInfo** info) {
    if (info == nullptr)
        return E_POINTER;
    *info = typeInfo(id).release();
    return *info == nullptr ? TYPE_E_CANTLOADLIBRARY : S_OK;
}

} // namespace

com::Pointer<ComponentObject> ComponentObject::create(std::shared_ptr<cls_Kova_Drawer_Man> component) {
    return com::Pointer<ComponentObject>::adopt(new ComponentObject(std::move(component)));
}

ComponentObject::ComponentObject(std::shared_ptr<cls_Kova_Drawer_Man> component)
    : component_(std::move(component)),
      events_(*this, [this](EventSink& sink) { return component_->connect(sink); }) {}

HRESULT ComponentObject::QueryInterface(REFIID id, void** found) {
    if (found == nullptr)
        return E_POINTER;
    if (id == IID_IUnknown || id == IID_IDispatch || id == IID__cls_Kova_Drawer_Man)
        *found = static_cast<_cls_Kova_Drawer_Man*>(this);
    else if (id == IID_IConnectionPointContainer)
        *found = static_cast<IConnectionPointContainer*>(this);
    else if (id == IID_IProvideClassInfo || id == IID_IProvideClassInfo2)
        *found = static_cast<IProvideClassInfo2*>(this);
    else if (id == IID_ISupportErrorInfo)
        *found = static_cast<ISupportErrorInfo*>(this);
    else
        *found = nullptr;
    if (*found == nullptr)
        return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

ULONG ComponentObject::Release() {
    const ULONG left = --references_;
    if (left == 0) {
        references_ = 1; // sinks that go with it may take one more and give it back
        delete this;
    }
    return left;
}

HRESULT ComponentObject::GetTypeInfoCount(UINT* count) {
    if (count == nullptr)
        return E_POINTER;
    *count = 1;
    return S_OK;
}

HRESULT ComponentObject::GetTypeInfo(UINT index, LCID, ITypeInfo** info) {
    if (index == 0)
        return copyTypeInfo(IID__cls_Kova_Drawer_Man, info);
    if (info != nullptr)
        *info = nullptr;
    return DISP_E_BADINDEX;
}

HRESULT ComponentObject::GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    if (reserved != IID_NULL)
        return DISP_E_UNKNOWNINTERFACE;
    if (names == nullptr || ids == nullptr)
        return E_POINTER;
    // Read once in a process, which then keeps it.
    static ITypeInfo* const info = typeInfo(IID__cls_Kova_Drawer_Man).release();
    return info == nullptr ? TYPE_E_CANTLOADLIBRARY : DispGetIDsOfNames(info, names, count, ids);
}

HRESULT ComponentObject::Invoke(DISPID id, REFIID reserved, LCID locale, WORD kinds, DISPPARAMS* parameters,
                                VARIANT* result, EXCEPINFO* details, UINT* wrong) {
    if (GetCurrentThreadId() != thread_)
        return RPC_E_WRONG_THREAD;
    if (reserved != IID_NULL)
        return DISP_E_UNKNOWNINTERFACE;
    if (parameters == nullptr)
        return E_POINTER;
    const auto* const member = wanted(id, kinds);
    if (member == nullptr)
        return DISP_E_MEMBERNOTFOUND;
    if (member->kind == MemberKind::PropertyRead)
        return parameters->cArgs > 0 ? DISP_E_BADPARAMCOUNT : readProperty(this, *member, result);
    const com::Pointer<ComponentObject> self(this); // the host may release it inside an event
    HRESULT code = S_OK;
    const Outcome outcome = outcomeOf([&] {
        Arguments arguments(*parameters, *member, locale);
        code = arguments.read(wrong);
        if (FAILED(code))
            return;
        const auto writeBack = [](const Arguments* read) { read->writeBack(); };
        const std::unique_ptr<const Arguments, decltype(writeBack)> atEnd(&arguments, writeBack);
        const Variant answer = carriedOut(*component_, *member, arguments.values());
        if (result != nullptr) {
            VariantInit(result);
            assign(*result, answer);
        }
    });
    return FAILED(code) ? code : tellCaller(outcome, details);
}

HRESULT ComponentObject::EnumConnectionPoints(IEnumConnectionPoints** points) {
    if (points == nullptr)
        return E_POINTER;
    *points = nullptr;
    return outcomeOf([&] { *points = enumerate(events_); }).code;
}

HRESULT ComponentObject::FindConnectionPoint(REFIID id, IConnectionPoint** point) {
    if (point == nullptr)
        return E_POINTER;
    *point = id == DIID___cls_Kova_Drawer_Man ? &events_ : nullptr;
    if (*point == nullptr)
        return CONNECT_E_NOCONNECTION;
    AddRef();
    return S_OK;
}

HRESULT ComponentObject::GetClassInfo(ITypeInfo** info) {
    return copyTypeInfo(CLSID_cls_Kova_Drawer_Man, info);
}

HRESULT ComponentObject::GetGUID(DWORD kind, GUID* id) {
    if (id == nullptr)
        return E_POINTER;
    *id = kind == GUIDKIND_DEFAULT_SOURCE_DISP_IID ? DIID___cls_Kova_Drawer_Man : GUID_NULL;
    return kind == GUIDKIND_DEFAULT_SOURCE_DISP_IID ? S_OK : E_INVALIDARG;
}

HRESULT ComponentObject::InterfaceSupportsErrorInfo(REFIID id) {
    return id == IID__cls_Kova_Drawer_Man ? S_OK : S_FALSE;
}

} // namespace kova::automation
