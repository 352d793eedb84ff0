// A host that loads the library by hand, and lets go of it when it needs it no more: what Qt has left behind
// goes on.

#include <windows.h>

#include <cstdlib>
#include <memory>

int main(int, char** arguments) {
    const HMODULE library = LoadLibraryA(arguments[1]);
    using Create = std::shared_ptr<void>();
    const auto create = reinterpret_cast<Create*>(
        reinterpret_cast<void*>(GetProcAddress(library, "_ZN4kova15createComponentEv")));
    if (create == nullptr)
        return EXIT_FAILURE;
    create().reset();
    FreeLibrary(library);
    // Messages of Qt's are under way.
    SetTimer(nullptr, 0, 500, [](HWND, UINT, UINT_PTR, DWORD) { PostQuitMessage(EXIT_SUCCESS); });
    MSG message;
    while (GetMessageA(&message, nullptr, 0, 0) > 0)
        DispatchMessageA(&message);
    return GetModuleHandleA("Kova_Drawer_Man.dll") == library ? EXIT_SUCCESS : EXIT_FAILURE;
}
