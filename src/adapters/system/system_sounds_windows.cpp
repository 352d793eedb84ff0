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

/// A sound that is still heard makes room for the next.
class SystemSounds final : public Sounds {
  public:
    void play(Tone tone) noexcept override {
        PlaySoundW(aliasOf(tone), nullptr, SND_ALIAS | SND_ASYNC | SND_NODEFAULT);
    }
};

} // namespace

std::unique_ptr<Sounds> systemSounds() {
    return std::make_unique<SystemSounds>();
}

} // namespace kova
