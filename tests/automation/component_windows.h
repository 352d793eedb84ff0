#pragma once
// What hosts over automation have in common.

#include "com/com_pointer.h"
#include "com/com_values.h"
#include "com/dispatch_object.h"

#include "kova_drawer_man_automation.h"

#include <functional>
#include <future>
#include <thread>

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

inline DWORD connect(IUnknown* object, Sink::Handler handler) {
    DWORD cookie = 0;
    const auto sink = Pointer<IDispatch>::adopt(new Sink(std::move(handler)));
    eventsOf(object)->Advise(sink.get(), &cookie);
    return cookie;
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

/// Whether the component's module may go, since nobody holds anything of it.
inline bool letGo() {
    const HMODULE module = GetModuleHandleW(L"Kova_Drawer_Man.dll");
    const auto asked = reinterpret_cast<HRESULT(STDMETHODCALLTYPE*)()>(
        reinterpret_cast<void*>(GetProcAddress(module, "DllCanUnloadNow")));
    return asked() == S_OK;
}

/// An apartment on a thread of its own, which makes objects for others.
class OtherApartment {
  public:
    OtherApartment() {
        std::promise<void> begun;
        thread_ = std::thread([&] { run(begun); });
        begun.get_future().wait();
    }
    OtherApartment(const OtherApartment&) = delete;
    OtherApartment& operator=(const OtherApartment&) = delete;
    ~OtherApartment() {
        PostThreadMessageW(id_, WM_QUIT, 0, 0);
        thread_.join();
    }
    /// An object that lives there, as the calling thread may use it.
    HRESULT create(const CLSID& classId, const IID& id, void** made) {
        std::promise<HRESULT> result;
        IStream* carried = nullptr;
        std::function<void()> request = [&] {
            Pointer<IUnknown> object;
            HRESULT code = CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown,
                                            reinterpret_cast<void**>(object.put()));
            if (SUCCEEDED(code))
                code = CoMarshalInterThreadInterfaceInStream(id, object.get(), &carried);
            result.set_value(code);
        };
        PostThreadMessageW(id_, WM_APP, 0, reinterpret_cast<LPARAM>(&request));
        const HRESULT code = result.get_future().get();
        return FAILED(code) ? code : CoGetInterfaceAndReleaseStream(carried, id, made);
    }

  private:
    void run(std::promise<void>& begun) {
        CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        MSG message;
        PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE); // makes the queue
        id_ = GetCurrentThreadId();
        begun.set_value();
        while (GetMessageW(&message, nullptr, 0, 0) > 0)
            if (message.hwnd == nullptr && message.message == WM_APP)
                (*reinterpret_cast<std::function<void()>*>(message.lParam))();
            else
                DispatchMessageW(&message);
        CoUninitialize();
    }
    std::thread thread_;
    DWORD id_ = 0;
};

} // namespace kova::test
