#include "automation/class_factory.h"

namespace kova::automation {

HRESULT ClassFactory::QueryInterface(REFIID id, void** found) {
    if (found == nullptr)
        return E_POINTER;
    *found = id == IID_IUnknown || id == IID_IClassFactory ? this : nullptr;
    return *found == nullptr ? E_NOINTERFACE : S_OK;
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
    return outcomeOf([&] {
               if (lock != FALSE)
                   locks_.push_back(std::make_unique<HeldByHost>());
               else if (!locks_.empty())
                   locks_.pop_back();
           })
        .code;
}

} // namespace kova::automation
