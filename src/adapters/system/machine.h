#pragma once
#include "ports/platform.h"

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kova {

// What the operating system tells of this machine, process and user, with one source file per system. Texts
// are UTF-8, also where the system has other encodings.

/// The machine's clock in its local time zone.
class SystemClock final : public Clock {
  public:
    [[nodiscard]] DateTime now() const override;
};

/// Folder of the file (shared library or program) that this code was linked into, absolute and without a
/// separator at its end; "." when the system cannot tell.
std::string ownFolder();

/// The words behind the program's name, of what main was given; where that has lost characters, of what the
/// system knows.
std::vector<std::string> programArguments(int count, char** arguments);

/// While the result is kept, a console on standard output shows UTF-8.
std::shared_ptr<void> utf8Console();

/// Empty when there is none.
std::string environmentVariable(const std::string& name);

/// Where the user's programs keep what they need no backup of: $XDG_STATE_HOME, otherwise ~/.local/state; on
/// Windows %LOCALAPPDATA%. Empty when the environment names none; a relative folder counts as none, since the
/// program may run anywhere.
std::string userStateFolder();

/// The user's language as the name of a locale, as it_IT.UTF-8 or it-IT.
std::string userLanguage();

/// The per-machine settings: of the registry's machine hive on Windows, the same for programs of 32 and 64
/// bits; elsewhere of the file that the environment variable KOVA_SETTINGS names, otherwise
/// /etc/kova/kova.ini.
std::unique_ptr<SettingsStore> machineSettings();

/// The tones of the user's sound theme: of libcanberra, where that is installed, on Windows of the system.
/// They are found and played on another thread.
std::unique_ptr<Sounds> systemSounds();

/// Whether there is a screen to show windows on.
bool hasScreen();

/// Calls `action` when this thread ends, with whether the process ends with it, while the process's static
/// objects are still there. Never on Windows: static objects of a library go first there, and nobody may wait
/// for another thread by then.
void atEndOfThread(void (*action)(bool processToo));

/// Appends to a file, which is begun when there is none. Other processes may read, append to, rename and
/// delete it at any time. Returns why it could not be written, empty when it was.
std::string appendToFile(const std::string& path, const std::string& text);

/// Hands a record to the system's log: syslog(3), or the event log of Windows. Returns why it did not take
/// it, empty when it did.
std::string writeToSystemLog(const std::string& record);

inline std::filesystem::path pathOf(std::string_view utf8) {
    return std::u8string(utf8.begin(), utf8.end());
}
inline std::string utf8Of(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

} // namespace kova
