#pragma once
// What hosts over automation have in common.

#include "com/com_pointer.h"
#include "com/com_values.h"
#include "com/dispatch_object.h"

#include "kova-script-host/component.h"
#include "kova_drawer_man_automation.h"

#include <functional>
#include <vector>

namespace kova::test {

using com::Pointer;
using com::query;

/// Handles events by a function.
class Sink final : public com::DispatchObject {
  public:
    using Handler = std::function<HRESULT(DISPID, VARIANT*, EXCEPINFO&)>;
    explicit Sink(Handler handler) : handler_(std::move(handler)) { ++living; }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* given, VARIANT*,
                                     EXCEPINFO* details, UINT*) override {
        return handler_(id, given->rgvarg, *details);
    }
    inline static std::atomic<int> living = 0;

  private:
    ~Sink() override { --living; }
    const Handler handler_;
};

inline Pointer<IConnectionPoint> eventsOf(IUnknown* object) {
    Pointer<IConnectionPoint> point;
    query<IConnectionPointContainer>(object, IID_IConnectionPointContainer)
        ->FindConnectionPoint(DIID___cls_Kova_Drawer_Man, point.put());
    return point;
}

inline DWORD connect(IUnknown* object, IDispatch* sink) {
    DWORD cookie = 0;
    eventsOf(object)->Advise(sink, &cookie);
    return cookie;
}
inline DWORD connect(IUnknown* object, Sink::Handler handler) {
    return connect(object, Pointer<IDispatch>::adopt(new Sink(std::move(handler))).get());
}

/// What every handler here writes into the arguments of an event.
inline void answer(DISPID id, VARIANT* arguments) {
    if (id == 4)
        return;
    com::ReferredText(*arguments[id == 1 ? 4 : 0].pbstrVal).text += " Ω";
    if (id != 1)
        return;
    com::ReferredText(*arguments[3].pbstrVal).text = "noted";
    *arguments[6].plVal += 8;
    *arguments[5].pdblVal *= 2;
    *arguments[2].piVal = 4;
    *arguments[1].plVal = -9;
    *arguments[0].pboolVal = VARIANT_TRUE;
}

/// A movement's variables, the host's own.
struct Movement {
    LONG payment = 1, activity = 2;
    double amount = 12.5;
    BSTR currency, note;
    short place = 0;
    VARIANT_BOOL incoming = VARIANT_FALSE;
    explicit Movement(const wchar_t* inCurrency = L"€", const wchar_t* withNote = nullptr)
        : currency(SysAllocString(inCurrency)), note(SysAllocString(withNote)) {}
    Movement(const Movement&) = delete;
    Movement& operator=(const Movement&) = delete;
    ~Movement() {
        SysFreeString(currency);
        SysFreeString(note);
    }
    HRESULT raise(_cls_Kova_Drawer_Man* drawer) {
        return drawer->SalvaPagamento(&payment, &amount, &currency, &note, &place, &activity, &incoming);
    }
    /// From the last to the first.
    std::vector<VARIANT> references() {
        const std::pair<int, void*> all[] = {{VT_BOOL, &incoming}, {VT_I4, &activity},   {VT_I2, &place},
                                             {VT_BSTR, &note},     {VT_BSTR, &currency}, {VT_R8, &amount},
                                             {VT_I4, &payment}};
        std::vector<VARIANT> arguments(std::size(all));
        for (std::size_t i = 0; i < arguments.size(); ++i) {
            arguments[i].vt = static_cast<VARTYPE>(all[i].first | VT_BYREF);
            arguments[i].byref = all[i].second;
        }
        return arguments;
    }
};

} // namespace kova::test
