#include "adapters/system/machine.h"

#include <windows.h>

#include <mmsystem.h>

namespace kova {
namespace {

/// Of the sounds that the user has chosen in the control panel.
const wchar_t* aliasOf(Sounds::Tone tone) {
    switch (tone) {
    case Sounds::Tone::Key:
        return L"MenuCommand";
    case Sounds::Tone::Saved:
        return L"SystemAsterisk";
    case Sounds::Tone::Refused:
        break;
    }
    return L"SystemExclamation";
}

void CALLBACK playAlias(PTP_CALLBACK_INSTANCE, void* alias) {
    PlaySoundW(static_cast<const wchar_t*>(alias), nullptr, SND_ALIAS | SND_ASYNC | SND_NODEFAULT);
}

/// What plays in the background takes its time to begin, too: a thread of the system's begins it, and keeps
/// this library meanwhile. A sound that is still heard makes room for the next.
class SystemSounds final : public Sounds {
  public:
    void play(Tone tone) noexcept override {
        HMODULE library = nullptr;
        constexpr DWORD flags =
            GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
        if (GetModuleHandleExW(flags, reinterpret_cast<LPCWSTR>(&aliasOf), &library) == 0)
            return;
        TP_CALLBACK_ENVIRON surroundings;
        InitializeThreadpoolEnvironment(&surroundings);
        SetThreadpoolCallbackLibrary(&surroundings, library);
        TrySubmitThreadpoolCallback(playAlias, const_cast<wchar_t*>(aliasOf(tone)), &surroundings);
    }
};

} // namespace

std::unique_ptr<Sounds> systemSounds() {
    return std::make_unique<SystemSounds>();
}

} // namespace kova
