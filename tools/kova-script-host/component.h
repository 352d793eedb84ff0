#pragma once
// The component in a host's process, as Windows' automation knows it.

#include "com/com_headers.h"
#include "com/com_pointer.h"

#include <thread>

namespace kova::test {

using com::Pointer;

/// Whether the component's module may go, since nobody holds anything of it.
inline bool letGo() {
    const HMODULE module = GetModuleHandleW(L"Kova_Drawer_Man.dll");
    const auto asked = reinterpret_cast<HRESULT(STDMETHODCALLTYPE*)()>(
        reinterpret_cast<void*>(GetProcAddress(module, "DllCanUnloadNow")));
    return asked() == S_OK;
}

/// An object in an apartment that Windows makes for it, as the calling thread may use it.
inline HRESULT createElsewhere(const CLSID& classId, const IID& id, void** made) {
    static CO_MTA_USAGE_COOKIE kept = nullptr; // and with it those apartments
    if (kept == nullptr)
        CoIncrementMTAUsage(&kept);
    IStream* carried = nullptr;
    HRESULT code = S_OK;
    std::thread([&] { // belongs to the apartment of many threads, where the class does not live
        Pointer<IUnknown> object;
        code = CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown,
                                reinterpret_cast<void**>(object.put()));
        if (SUCCEEDED(code))
            code = CoMarshalInterThreadInterfaceInStream(id, object.get(), &carried);
    })
        .join();
    return FAILED(code) ? code : CoGetInterfaceAndReleaseStream(carried, id, made);
}

} // namespace kova::test
