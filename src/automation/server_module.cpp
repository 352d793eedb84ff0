#include "automation/server_module.h"

#include "kova_drawer_man_automation.h"

#include <atomic>

namespace kova::automation {
namespace {

std::atomic<long> held = 0;

} // namespace

std::wstring moduleFile() {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&moduleFile), &module);
    std::wstring file(MAX_PATH, L'\0');
    for (;;) {
        const auto length = GetModuleFileNameW(module, file.data(), static_cast<DWORD>(file.size()));
        if (length < file.size()) {
            file.resize(length);
            return file;
        }
        file.resize(file.size() * 2);
    }
}

com::Pointer<ITypeInfo> typeInfo(const GUID& id) {
    com::Pointer<ITypeLib> library;
    com::Pointer<ITypeInfo> info;
    if (SUCCEEDED(LoadTypeLibEx(moduleFile().c_str(), REGKIND_NONE, library.put())))
        library->GetTypeInfoOfGuid(id, info.put());
    return info;
}

void HeldByHost::count(long difference) {
    held += difference;
}

bool HeldByHost::any() {
    return held > 0;
}

} // namespace kova::automation
