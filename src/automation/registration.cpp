#include "automation/registration.h"

#include "automation/marshallers.h"
#include "automation/server_module.h"
#include "com/com_values.h"
#include "component/type_description.h"

#include <array>
#include <string>

namespace kova::automation {
namespace {

using type_description::library;

const std::wstring Classes = L"Software\\Classes\\";

HKEY rootOf(Hive hive) {
    return hive == Hive::Machine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
}

std::wstring braced(std::string_view identifier) {
    return L'{' + com::wide(identifier) + L'}';
}

std::wstring classKey() {
    return Classes + L"CLSID\\" + braced(library().coclassIdentifier);
}

std::wstring nameKey() {
    return Classes + com::wide(library().programmaticId);
}

std::wstring libraryKey() {
    return Classes + L"TypeLib\\" + braced(library().identifier);
}

std::wstring interfaceKey(std::string_view identifier) {
    return Classes + L"Interface\\" + braced(identifier);
}

/// Of the type library, in hexadecimal digits as the registry has it.
constexpr const wchar_t* LibraryVersion = L"4.a";

/// Where the type library's file stands: who asks for a language of its own, or for none, as the marshaller
/// does, is given the neutral one.
std::array<std::wstring, 2> libraryFileKeys() {
    const std::wstring version = libraryKey() + L'\\' + LibraryVersion;
    const wchar_t* const kind = sizeof(void*) == 8 ? L"\\win64" : L"\\win32";
    return {version + L"\\0" + kind, version + L"\\409" + kind};
}

/// Hands on the first failure.
class Writer {
  public:
    explicit Writer(Hive hive) : root_(rootOf(hive)) {}
    void set(const std::wstring& key, const std::wstring& value, const wchar_t* name = nullptr) {
        if (result == ERROR_SUCCESS)
            result = RegSetKeyValueW(root_, key.c_str(), name, REG_SZ, value.c_str(),
                                     static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
    }
    LSTATUS result = ERROR_SUCCESS;

  private:
    HKEY root_;
};

void writeClass(Writer& registry) {
    const std::wstring name = com::wide(library().programmaticId);
    registry.set(classKey(), name);
    registry.set(classKey() + L"\\InprocServer32", moduleFile());
    registry.set(classKey() + L"\\InprocServer32", L"Apartment", L"ThreadingModel");
    registry.set(classKey() + L"\\ProgID", name);
    registry.set(classKey() + L"\\TypeLib", braced(library().identifier));
    registry.set(classKey() + L"\\VERSION", com::wide(library().version));
    registry.set(classKey() + L"\\Programmable", L"");
    registry.set(nameKey(), name);
    registry.set(nameKey() + L"\\CLSID", braced(library().coclassIdentifier));
}

/// Windows' own function writes the machine's view, or the user's as the case may be; written here, it is the
/// same for both.
void writeTypeLibrary(Writer& registry) {
    const std::wstring file = moduleFile();
    const std::wstring version = libraryKey() + L'\\' + LibraryVersion;
    registry.set(version, L"Kova Drawer Man");
    for (const auto& key : libraryFileKeys())
        registry.set(key, file);
    registry.set(version + L"\\FLAGS", L"0");
    registry.set(version + L"\\HELPDIR", file.substr(0, file.find_last_of(L'\\')));
}

void writeInterface(Writer& registry, std::string_view name, std::string_view identifier,
                    const char* marshaller) {
    const std::wstring key = interfaceKey(identifier);
    registry.set(key, com::wide(name));
    registry.set(key + L"\\ProxyStubClsid32", com::wide(marshaller));
    registry.set(key + L"\\TypeLib", braced(library().identifier));
    registry.set(key + L"\\TypeLib", LibraryVersion, L"Version");
}

/// Whether the class is there for hosts of the other kind, of 32 or of 64 bits. They have its file in a place
/// of their own, and share its name and the type library's identifier.
bool otherKindRegistered(Hive hive) {
    constexpr REGSAM OtherKind = sizeof(void*) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;
    HKEY opened = nullptr;
    if (RegOpenKeyExW(rootOf(hive), classKey().c_str(), 0, KEY_READ | OtherKind, &opened) != ERROR_SUCCESS)
        return false;
    RegCloseKey(opened);
    return true;
}

/// A user need not have had any class of his own.
void deleteIfEmpty(HKEY root, const std::wstring& key) {
    DWORD keys = 1, values = 1;
    HKEY opened = nullptr;
    if (RegOpenKeyExW(root, key.c_str(), 0, KEY_READ, &opened) != ERROR_SUCCESS)
        return;
    RegQueryInfoKeyW(opened, nullptr, nullptr, nullptr, &keys, nullptr, nullptr, &values, nullptr, nullptr,
                     nullptr, nullptr);
    RegCloseKey(opened);
    if (keys == 0 && values == 0)
        RegDeleteKeyW(root, key.c_str());
}

} // namespace

HRESULT registerServer(Hive hive) {
    Writer registry(hive);
    writeClass(registry);
    writeTypeLibrary(registry);
    if (registry.result != ERROR_SUCCESS)
        return SELFREG_E_CLASS;
    writeInterface(registry, library().interfaceName, library().interfaceIdentifier, TableMarshaller);
    writeInterface(registry, library().eventInterfaceName, library().eventInterfaceIdentifier,
                   DispatchMarshaller);
    return registry.result == ERROR_SUCCESS ? S_OK : SELFREG_E_TYPELIB;
}

HRESULT unregisterServer(Hive hive) {
    bool gone = true;
    const auto forget = [&](const std::wstring& key) {
        const LSTATUS result = RegDeleteTreeW(rootOf(hive), key.c_str());
        gone = gone && (result == ERROR_SUCCESS || result == ERROR_FILE_NOT_FOUND);
    };
    for (const auto& key : {classKey(), interfaceKey(library().interfaceIdentifier),
                            interfaceKey(library().eventInterfaceIdentifier)})
        forget(key);
    if (otherKindRegistered(hive)) {
        for (const auto& file : libraryFileKeys())
            forget(file);
    } else {
        forget(nameKey());
        forget(libraryKey());
    }
    for (const wchar_t* folder : {L"CLSID", L"TypeLib", L"Interface"})
        deleteIfEmpty(rootOf(hive), Classes + folder);
    return gone ? S_OK : SELFREG_E_CLASS;
}

} // namespace kova::automation
