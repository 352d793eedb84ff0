// A host that loads the library by hand, and lets go of it when it needs it no more: what Qt has left behind
// goes on.

#include <kova_drawer_man_c.h>

#include <windows.h>

#include <cstdlib>

int main(int, char** arguments) {
    const HMODULE library = LoadLibraryA(arguments[1]);
    const auto function = [&](const char* name) {
        return reinterpret_cast<void*>(GetProcAddress(library, name));
    };
    auto* const create = reinterpret_cast<decltype(&kova_create)>(function("kova_create"));
    auto* const release = reinterpret_cast<decltype(&kova_release)>(function("kova_release"));
    kova_component component = nullptr;
    if (create == nullptr || release == nullptr || create(&component) != KOVA_OK ||
        release(component) != KOVA_OK)
        return EXIT_FAILURE;
    FreeLibrary(library);
    // Messages of Qt's are under way.
    SetTimer(nullptr, 0, 500, [](HWND, UINT, UINT_PTR, DWORD) { PostQuitMessage(EXIT_SUCCESS); });
    MSG message;
    while (GetMessageA(&message, nullptr, 0, 0) > 0)
        DispatchMessageA(&message);
    return GetModuleHandleA("Kova_Drawer_Man.dll") == library ? EXIT_SUCCESS : EXIT_FAILURE;
}
