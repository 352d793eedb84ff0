#include "player/component_door.h"

#include "automation/arguments.h"
#include "automation/class_factory.h"
#include "base/numbered_errors.h"
#include "base/overloaded.h"
#include "com/com_values.h"
#include "com/dispatch_object.h"

#include <deque>
#include <utility>

namespace kova {
namespace {

using com::Pointer;
using com::ReferredText;

/// As hosts of old languages know the failures of a call.
void requireSuccess(HRESULT code, EXCEPINFO& details) {
    const std::string description = com::narrow(details.bstrDescription);
    SysFreeString(details.bstrSource);
    SysFreeString(details.bstrDescription);
    SysFreeString(details.bstrHelpFile);
    if (SUCCEEDED(code))
        return;
    switch (code) {
    case DISP_E_EXCEPTION:
        throw automation::Failure(details.scode, {}, description);
    case DISP_E_MEMBERNOTFOUND:
    case DISP_E_UNKNOWNNAME:
        throw noSuchMember();
    case DISP_E_BADPARAMCOUNT:
        throw wrongArgumentCount();
    case DISP_E_TYPEMISMATCH:
        throw typeMismatch();
    case DISP_E_OVERFLOW:
        throw overflow();
    default:
        throw Error(code, "automation refused the call");
    }
}

/// Variables of the host's that a call gets by reference.
class Variables {
  public:
    explicit Variables(std::span<Variant> values) : values_(values) {
        for (const auto& value : values) {
            VARIANT& variable = variables_.emplace_back();
            VariantInit(&variable);
            automation::assign(variable, value);
        }
        for (auto i = variables_.rbegin(); i != variables_.rend(); ++i) {
            VARIANT& argument = arguments_.emplace_back();
            argument.vt = static_cast<VARTYPE>(i->vt | VT_BYREF);
            argument.byref = &i->byref;
        }
    }
    Variables(const Variables&) = delete;
    Variables& operator=(const Variables&) = delete;
    ~Variables() {
        for (VARIANT& variable : variables_)
            VariantClear(&variable);
    }
    [[nodiscard]] DISPPARAMS parameters() {
        return {arguments_.data(), nullptr, static_cast<UINT>(arguments_.size()), 0};
    }
    void takeBack() {
        for (std::size_t i = 0; i < values_.size(); ++i)
            values_[i] = valueOf(variables_[i]);
    }
    static Variant valueOf(const VARIANT& variable) {
        switch (variable.vt) {
        case VT_I2:
            return std::int16_t{variable.iVal};
        case VT_I4:
            return std::int32_t{variable.lVal};
        case VT_R8:
            return variable.dblVal;
        case VT_BOOL:
            return variable.boolVal != VARIANT_FALSE;
        case VT_BSTR:
            return com::narrow(variable.bstrVal);
        default:
            return {};
        }
    }

  private:
    std::span<Variant> values_;
    std::deque<VARIANT> variables_;
    std::vector<VARIANT> arguments_;
};

/// The host's sink, as the component's connection point sees it.
class DispatchSink final : public com::DispatchObject {
  public:
    explicit DispatchSink(EventSink& sink) : sink_(sink) {}
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* given, VARIANT*,
                                     EXCEPINFO* details, UINT*) override {
        return automation::tellCaller(automation::outcomeOf([&] { handle(id, given->rgvarg); }), details);
    }

  private:
    /// Arguments by reference, from the last to the first.
    void handle(DISPID id, VARIANT* arguments) {
        if (id == 1)
            save(arguments);
        else if (id == 4)
            sink_.ApriCassetto();
        else {
            ReferredText day(*arguments[0].pbstrVal);
            id == 2 ? sink_.Stampa(day.text) : sink_.Anteprima(day.text);
        }
    }
    void save(VARIANT* arguments) {
        ReferredText currency(*arguments[4].pbstrVal), note(*arguments[3].pbstrVal);
        std::int32_t payment = *arguments[6].plVal, activity = *arguments[1].plVal;
        bool incoming = *arguments[0].pboolVal != VARIANT_FALSE;
        const auto takeBack = [&] {
            *arguments[6].plVal = payment;
            *arguments[1].plVal = activity;
            *arguments[0].pboolVal = incoming ? VARIANT_TRUE : VARIANT_FALSE;
        };
        try {
            sink_.SalvaPagamento(payment, *arguments[5].pdblVal, currency.text, note.text,
                                 *arguments[2].piVal, activity, incoming);
        } catch (...) {
            takeBack();
            throw;
        }
        takeBack();
    }
    EventSink& sink_;
};

Pointer<IConnectionPoint> eventsOf(IDispatch* object) {
    Pointer<IConnectionPoint> point;
    EXCEPINFO none{};
    requireSuccess(com::query<IConnectionPointContainer>(object, IID_IConnectionPointContainer)
                       ->FindConnectionPoint(DIID___cls_Kova_Drawer_Man, point.put()),
                   none);
    return point;
}

class AutomationDoor final : public ComponentDoor, public std::enable_shared_from_this<AutomationDoor> {
  public:
    AutomationDoor(const std::shared_ptr<cls_Kova_Drawer_Man>& component, Pointer<IDispatch> object)
        : component_(component), object_(std::move(object)) {}
    Variant get(std::string_view name) override { return call(name, DISPATCH_PROPERTYGET, {}); }
    void set(std::string_view name, const Variant& value) override {
        Variant argument = value;
        call(name, DISPATCH_PROPERTYPUT, {&argument, 1});
    }
    Variant invoke(std::string_view method, std::span<Variant> arguments) override {
        if (!arguments.empty() && std::holds_alternative<std::shared_ptr<DatabaseConnection>>(arguments[0]))
            return component_.lock()->invoke(method, arguments);
        return call(method, DISPATCH_METHOD, arguments);
    }
    std::shared_ptr<void> connect(EventSink& sink) override {
        const auto target = Pointer<IDispatch>::adopt(new DispatchSink(sink));
        DWORD cookie = 0;
        EXCEPINFO none{};
        requireSuccess(eventsOf(object_.get())->Advise(target.get(), &cookie), none);
        // A connection alone does not keep the component.
        return {nullptr, [cookie, door = weak_from_this()](void*) {
                    if (const auto open = door.lock())
                        eventsOf(open->object_.get())->Unadvise(cookie);
                }};
    }

  private:
    Variant call(std::string_view name, WORD kind, std::span<Variant> values) {
        std::wstring wanted = com::wide(name);
        LPOLESTR names = wanted.data();
        DISPID id = 0, put = DISPID_PROPERTYPUT;
        EXCEPINFO details{};
        requireSuccess(object_->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id), details);
        Variables variables(values);
        DISPPARAMS parameters = variables.parameters();
        if (kind == DISPATCH_PROPERTYPUT) {
            parameters.rgdispidNamedArgs = &put;
            parameters.cNamedArgs = 1;
        }
        com::Value result;
        UINT wrong = 0;
        const Pointer<IDispatch> kept = object_; // the script may release the component inside
        const HRESULT code =
            kept->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, kind, &parameters, &result, &details, &wrong);
        variables.takeBack();
        requireSuccess(code, details);
        return Variables::valueOf(*result);
    }
    std::weak_ptr<cls_Kova_Drawer_Man> component_;
    Pointer<IDispatch> object_;
};

} // namespace

std::shared_ptr<ComponentDoor> openAutomationDoor(const std::shared_ptr<cls_Kova_Drawer_Man>& component) {
    static const HRESULT begun = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    (void)begun; // it may have been already
    CLSID id{};
    if (FAILED(CLSIDFromProgID(L"Kova_Drawer_Man.cls_Kova_Drawer_Man", &id)))
        throw Error(429, "Kova_Drawer_Man.cls_Kova_Drawer_Man is not registered");
    // The class of this process goes before the registered library's: its components are the script's own.
    automation::ClassFactory factory([&] { return component; });
    DWORD registration = 0;
    Pointer<IDispatch> object;
    HRESULT code =
        CoRegisterClassObject(id, &factory, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &registration);
    if (SUCCEEDED(code)) {
        code = CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                                reinterpret_cast<void**>(object.put()));
        CoRevokeClassObject(registration);
    }
    if (FAILED(code))
        throw Error(code, "The component cannot be created");
    return std::make_shared<AutomationDoor>(component, std::move(object));
}

} // namespace kova
