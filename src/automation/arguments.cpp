#include "automation/arguments.h"

#include "adapters/ado/ado_database.h"
#include "base/overloaded.h"
#include "com/com_pointer.h"
#include "com/com_values.h"

#include <utility>

namespace kova::automation {
namespace {

using type_description::Type;

/// The value behind references to VARIANTs, of scripts for example; null when there is none.
VARIANT* behindReferences(VARIANT* value) {
    constexpr int Deepest = 8; // unless one refers to itself
    for (int depth = 0; value != nullptr && value->vt == (VT_BYREF | VT_VARIANT); ++depth)
        value = depth < Deepest ? value->pvarVal : nullptr;
    const bool toNothing = value != nullptr && (value->vt & VT_BYREF) != 0 && value->byref == nullptr;
    return toNothing ? nullptr : value;
}

bool isLeftOut(const VARIANT& value) {
    return value.vt == VT_ERROR && value.scode == DISP_E_PARAMNOTFOUND;
}

} // namespace

VARTYPE variantType(Type type) {
    switch (type) {
    case Type::Int16:
        return VT_I2;
    case Type::Int32:
        return VT_I4;
    case Type::Double:
        return VT_R8;
    case Type::Boolean:
        return VT_BOOL;
    case Type::String:
        return VT_BSTR;
    case Type::Connection:
        return VT_DISPATCH;
    case Type::None:
        break;
    }
    return VT_EMPTY;
}

namespace {

/// A connection object of the host's; Nothing leaves the component without one.
HRESULT readConnection(VARIANT& value, Variant& result) {
    if (value.vt != VT_DISPATCH && value.vt != VT_UNKNOWN)
        return DISP_E_TYPEMISMATCH;
    const auto object = com::query<IDispatch>(value.punkVal, IID_IDispatch);
    if (value.punkVal != nullptr && !object)
        return DISP_E_TYPEMISMATCH;
    result = shareAdo(object.get());
    return S_OK;
}

HRESULT readValue(VARIANT& given, Type type, LCID locale, Variant& result) {
    if ((given.vt & VT_ARRAY) != 0 || (given.vt & VT_TYPEMASK) == VT_RECORD)
        return DISP_E_TYPEMISMATCH; // without a copy, which may take long
    com::Value plain;
    HRESULT code = VariantCopyInd(&plain, &given);
    if (FAILED(code))
        return code;
    if (type == Type::Connection)
        return readConnection(*plain, result);
    code = VariantChangeTypeEx(&plain, &plain, locale, 0, variantType(type));
    if (FAILED(code))
        return code;
    if (type == Type::Int16)
        result = std::int16_t{plain->iVal};
    else if (type == Type::Int32)
        result = std::int32_t{plain->lVal};
    else if (type == Type::Double)
        result = plain->dblVal;
    else if (type == Type::Boolean)
        result = plain->boolVal != VARIANT_FALSE;
    else
        result = com::narrow(plain->bstrVal);
    return S_OK;
}

} // namespace

void assign(VARIANT& target, const Variant& value) {
    std::visit(Overloaded{
                   [](std::monostate) {},
                   [&](std::int16_t number) {
                       target.vt = VT_I2;
                       target.iVal = number;
                   },
                   [&](std::int32_t number) {
                       target.vt = VT_I4;
                       target.lVal = number;
                   },
                   [&](double number) {
                       target.vt = VT_R8;
                       target.dblVal = number;
                   },
                   [&](bool flag) {
                       target.vt = VT_BOOL;
                       target.boolVal = flag ? VARIANT_TRUE : VARIANT_FALSE;
                   },
                   [&](const std::string& text) {
                       target.bstrVal = com::makeBstr(text);
                       target.vt = VT_BSTR;
                   },
                   [](const std::shared_ptr<DatabaseConnection>&) {},
               },
               value);
}

/// Named arguments come first in the caller's list, the others after them from the last to the first.
HRESULT Arguments::place(UINT& wrong) {
    const bool complete = (given_.cArgs == 0 || given_.rgvarg != nullptr) &&
                          (given_.cNamedArgs == 0 || given_.rgdispidNamedArgs != nullptr);
    if (!complete || given_.cNamedArgs > given_.cArgs)
        return E_INVALIDARG;
    if (given_.cArgs > declared_.size())
        return DISP_E_BADPARAMCOUNT;
    sources_.assign(declared_.size(), nullptr);
    for (UINT i = 0; i < given_.cArgs; ++i) {
        std::size_t parameter = given_.cArgs - 1 - i;
        if (i < given_.cNamedArgs) {
            const DISPID name = given_.rgdispidNamedArgs[i];
            const bool isValue = writesProperty_ && name == DISPID_PROPERTYPUT;
            parameter = isValue ? declared_.size() - 1 : static_cast<std::size_t>(name);
        }
        wrong = i;
        if (parameter >= declared_.size())
            return DISP_E_PARAMNOTFOUND;
        if (sources_[parameter] != nullptr)
            return DISP_E_BADPARAMCOUNT;
        sources_[parameter] = &given_.rgvarg[i];
    }
    return S_OK;
}

HRESULT Arguments::read(UINT* wrong) {
    UINT unwanted = 0;
    UINT& place = wrong != nullptr ? *wrong : unwanted;
    HRESULT code = this->place(place);
    for (std::size_t i = 0; SUCCEEDED(code) && i < declared_.size(); ++i) {
        VARIANT* const source = sources_[i];
        VARIANT* const given = behindReferences(source);
        if (source == nullptr || (given != nullptr && isLeftOut(*given))) {
            if (!declared_[i].optional)
                code = source == nullptr ? DISP_E_BADPARAMCOUNT : DISP_E_PARAMNOTOPTIONAL;
            break; // none follows one that may be left out
        }
        place = static_cast<UINT>(source - given_.rgvarg);
        Variant value;
        code = given == nullptr ? E_POINTER : readValue(*given, declared_[i].type, locale_, value);
        values_.push_back(std::move(value));
    }
    before_ = values_;
    return code;
}

void Arguments::writeBack() const {
    for (std::size_t i = 0; i < values_.size(); ++i) {
        if (values_[i] == before_[i] || (sources_[i]->vt & VT_BYREF) == 0)
            continue;
        com::Value changed;
        assign(*changed, values_[i]);
        VARIANT* const target = behindReferences(sources_[i]);
        if (target == nullptr) // by now
            continue;
        if ((target->vt & VT_BYREF) == 0) { // a VARIANT of the caller's, which takes any type
            VariantCopy(target, &changed);
            continue;
        }
        const VARTYPE type = target->vt & ~VT_BYREF;
        if (FAILED(VariantChangeTypeEx(&changed, &changed, locale_, 0, type)))
            continue;
        switch (type) {
        case VT_BSTR:
            SysFreeString(std::exchange(*target->pbstrVal, std::exchange(changed->bstrVal, nullptr)));
            break;
        case VT_I2:
        case VT_UI2:
        case VT_BOOL:
            *target->piVal = changed->iVal;
            break;
        case VT_I1:
        case VT_UI1:
            *target->pbVal = changed->bVal;
            break;
        case VT_I4:
        case VT_UI4:
        case VT_INT:
        case VT_UINT:
        case VT_R4:
            *target->plVal = changed->lVal;
            break;
        case VT_I8:
        case VT_UI8:
        case VT_R8:
        case VT_CY:
        case VT_DATE:
            *target->pllVal = changed->llVal;
            break;
        case VT_DECIMAL:
            *target->pdecVal = changed->decVal;
            target->pdecVal->wReserved = 0; // where the VARIANT had its type
            break;
        default:
            break;
        }
    }
}

} // namespace kova::automation
