#include "adapters/system/ini_settings_store.h"
#include "adapters/system/machine.h"
#include "adapters/system/system_regional_settings.h"

#include <dlfcn.h>
#include <syslog.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <system_error>

namespace kova {

DateTime SystemClock::now() const {
    using namespace std::chrono;
    const auto utc = floor<milliseconds>(system_clock::now());
    const std::time_t seconds = system_clock::to_time_t(utc);
    std::tm local{};
    if (localtime_r(&seconds, &local) == nullptr)
        return DateTime(utc.time_since_epoch());
    return DateTime(utc.time_since_epoch() + std::chrono::seconds(local.tm_gmtoff));
}

std::string ownFolder() {
    static const char inThisFile = 0;
    Dl_info info{};
    if (dladdr(&inThisFile, &info) == 0 || info.dli_fname == nullptr)
        return ".";
    std::error_code failed;
    const auto file = std::filesystem::canonical(info.dli_fname, failed);
    return failed ? "." : file.parent_path().string();
}

std::vector<std::string> programArguments(int count, char** arguments) {
    return {arguments + 1, arguments + count};
}

std::shared_ptr<void> utf8Console() {
    return {}; // it does anyway
}

std::string environmentVariable(const std::string& name) {
    const char* const value = std::getenv(name.c_str());
    return value == nullptr ? "" : value;
}

std::string userStateFolder() {
    if (const std::filesystem::path state = environmentVariable("XDG_STATE_HOME"); state.is_absolute())
        return state.string();
    if (const std::filesystem::path home = environmentVariable("HOME"); home.is_absolute())
        return home / ".local/state";
    return {};
}

std::string userLanguage() {
    return localeName("LC_MESSAGES");
}

std::unique_ptr<SettingsStore> machineSettings() {
    const std::string named = environmentVariable("KOVA_SETTINGS");
    return std::make_unique<IniSettingsStore>(named.empty() ? "/etc/kova/kova.ini" : named);
}

bool hasScreen() {
    return !environmentVariable("DISPLAY").empty() || !environmentVariable("WAYLAND_DISPLAY").empty();
}

void atEndOfThread(void (*action)(bool processToo)) {
    struct End {
        void (*action)(bool);
        ~End() { action(gettid() == getpid()); }
    };
    static thread_local const End end{action};
    (void)end;
}

std::string appendToFile(const std::string& path, const std::string& text) {
    errno = 0;
    std::ofstream file(path, std::ios::app | std::ios::binary);
    file << text << std::flush;
    if (file)
        return {};
    return errno == 0 ? "cannot be written" : std::generic_category().message(errno);
}

std::string writeToSystemLog(const std::string& record) {
    // syslog itself never tells that nobody listens.
    if (access("/dev/log", W_OK) != 0)
        return std::generic_category().message(errno);
    syslog(LOG_USER | LOG_ERR, "kova: %s", record.c_str());
    return {};
}

} // namespace kova
