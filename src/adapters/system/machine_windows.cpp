#include "adapters/system/machine.h"

#include <windows.h>

#include <array>
#include <system_error>

namespace kova {
namespace {

std::wstring wide(std::string_view utf8) {
    return pathOf(utf8).wstring();
}

std::string narrow(const std::wstring& text) {
    return utf8Of(std::filesystem::path(text));
}

/// Settings of the machine hive. A number counts as its text.
class RegistrySettingsStore final : public SettingsStore {
  public:
    [[nodiscard]] std::optional<std::string> read(const std::string& baseKey, const std::string& section,
                                                  const std::string& name) const override {
        const std::wstring key = wide(baseKey + '\\' + section);
        const std::wstring value = wide(name);
        constexpr DWORD kinds = RRF_RT_REG_SZ | RRF_RT_REG_DWORD | RRF_SUBKEY_WOW6464KEY;
        std::array<wchar_t, 1024> buffer{};
        DWORD type = 0;
        auto size = static_cast<DWORD>(sizeof(buffer));
        if (RegGetValueW(HKEY_LOCAL_MACHINE, key.c_str(), value.c_str(), kinds, &type, buffer.data(),
                         &size) != ERROR_SUCCESS)
            return std::nullopt;
        if (type == REG_DWORD)
            return std::to_string(*reinterpret_cast<const DWORD*>(buffer.data()));
        return narrow(buffer.data());
    }
};

} // namespace

DateTime SystemClock::now() const {
    using namespace std::chrono;
    SYSTEMTIME time;
    GetLocalTime(&time);
    const year_month_day day(year(time.wYear), month(time.wMonth), std::chrono::day(time.wDay));
    return local_days(day) + hours(time.wHour) + minutes(time.wMinute) + seconds(time.wSecond) +
           milliseconds(time.wMilliseconds);
}

std::string ownFolder() {
    HMODULE module = nullptr;
    constexpr DWORD flags =
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    if (GetModuleHandleExW(flags, reinterpret_cast<LPCWSTR>(&ownFolder), &module) == 0)
        return ".";
    std::wstring file(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(module, file.data(), static_cast<DWORD>(file.size()));
        if (length == 0)
            return ".";
        if (length < file.size()) {
            file.resize(length);
            break;
        }
        file.resize(file.size() * 2);
    }
    return utf8Of(std::filesystem::path(file).parent_path());
}

std::string environmentVariable(const std::string& name) {
    const wchar_t* const value = _wgetenv(wide(name).c_str());
    return value == nullptr ? "" : narrow(value);
}

std::string userStateFolder() {
    const std::string folder = environmentVariable("LOCALAPPDATA");
    return pathOf(folder).is_absolute() ? folder : std::string();
}

std::string userLanguage() {
    std::array<wchar_t, LOCALE_NAME_MAX_LENGTH> name{};
    const LCID language = MAKELCID(GetUserDefaultUILanguage(), SORT_DEFAULT);
    if (LCIDToLocaleName(language, name.data(), static_cast<int>(name.size()), 0) == 0)
        return {};
    return narrow(name.data());
}

std::unique_ptr<SettingsStore> machineSettings() {
    return std::make_unique<RegistrySettingsStore>();
}

bool hasScreen() {
    return true;
}

bool onMainThread() {
    return false;
}

std::string writeToSystemLog(const std::string& record) {
    const HANDLE log = RegisterEventSourceW(nullptr, L"kova");
    const std::wstring text = wide(record);
    LPCWSTR texts[]{text.c_str()};
    const bool taken =
        log != nullptr && ReportEventW(log, EVENTLOG_ERROR_TYPE, 0, 0, nullptr, 1, 0, texts, nullptr) != 0;
    const auto error = static_cast<int>(GetLastError());
    if (log != nullptr)
        DeregisterEventSource(log);
    return taken ? std::string() : std::system_category().message(error);
}

} // namespace kova
