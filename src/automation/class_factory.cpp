#include "automation/class_factory.h"

namespace kova::automation {

HRESULT ClassFactory::QueryInterface(REFIID id, void** found) {
    if (found == nullptr)
        return E_POINTER;
    *found = id == IID_IUnknown || id == IID_IClassFactory ? this : nullptr;
    if (*found == nullptr)
        return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

HRESULT ClassFactory::CreateInstance(IUnknown* outer, REFIID id, void** made) {
    if (made == nullptr)
        return E_POINTER;
    *made = nullptr;
    if (outer != nullptr)
        return CLASS_E_NOAGGREGATION;
    HRESULT code = S_OK;
    const Outcome outcome =
        outcomeOf([&] { code = ComponentObject::create(make_())->QueryInterface(id, made); });
    return FAILED(outcome.code) ? tellThread(outcome, IID__cls_Kova_Drawer_Man) : code;
}

HRESULT ClassFactory::LockServer(BOOL lock) {
    const long change = lock != FALSE ? 1 : -1;
    if ((locks_ += change) < 0) { // unlocked more often than locked
        ++locks_;
        return E_UNEXPECTED;
    }
    HeldByHost::count(change);
    return S_OK;
}

} // namespace kova::automation
