// What Windows asks of the module: the class, whether it may go, and to register or forget the class.
#include "automation/class_factory.h"
#include "automation/registration.h"
#include "library/library.h"

#include "kova_drawer_man_automation.h"

using namespace kova::automation;

STDAPI DllGetClassObject(REFCLSID classId, REFIID id, void** found) {
    static ClassFactory factory(kova::createComponent);
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
