// What Windows asks of the module: the class, whether it may go, and to register or forget the class.
#include "automation/component_object.h"
#include "automation/registration.h"

#include "kova_drawer_man_automation.h"

namespace kova::automation {
namespace {

/// Makes components. It lives as long as the module.
class ClassFactory final : public IClassFactory {
  public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** found) override {
        if (found == nullptr)
            return E_POINTER;
        *found = id == IID_IUnknown || id == IID_IClassFactory ? this : nullptr;
        return *found == nullptr ? E_NOINTERFACE : S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID id, void** made) override {
        if (made == nullptr)
            return E_POINTER;
        *made = nullptr;
        if (outer != nullptr)
            return CLASS_E_NOAGGREGATION;
        HRESULT code = S_OK;
        const Outcome outcome =
            outcomeOf([&] { code = ComponentObject::create()->QueryInterface(id, made); });
        return FAILED(outcome.code) ? tellThread(outcome, IID__cls_Kova_Drawer_Man) : code;
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override {
        if (lock != FALSE)
            lock_.push_back(std::make_unique<HeldByHost>());
        else if (!lock_.empty())
            lock_.pop_back();
        return S_OK;
    }

  private:
    std::vector<std::unique_ptr<HeldByHost>> lock_;
};

} // namespace
} // namespace kova::automation

using namespace kova::automation;

STDAPI DllGetClassObject(REFCLSID classId, REFIID id, void** found) {
    static ClassFactory factory;
    if (found == nullptr)
        return E_POINTER;
    *found = nullptr;
    return classId == CLSID_cls_Kova_Drawer_Man ? factory.QueryInterface(id, found)
                                                : CLASS_E_CLASSNOTAVAILABLE;
}

STDAPI DllCanUnloadNow() {
    return HeldByHost::any() ? S_FALSE : S_OK;
}

STDAPI DllRegisterServer() {
    return registerServer(Hive::Machine);
}

STDAPI DllUnregisterServer() {
    return unregisterServer(Hive::Machine);
}

/// `regsvr32 /i:user` registers for the one user, without an administrator's rights; with /u it forgets.
STDAPI DllInstall(BOOL install, LPCWSTR argument) {
    const Hive hive =
        argument != nullptr && std::wstring_view(argument) == L"user" ? Hive::User : Hive::Machine;
    return install != FALSE ? registerServer(hive) : unregisterServer(hive);
}
