#include "adapters/system/machine.h"

#include "base/utf16.h"

#include <windows.h>

#include <shellapi.h>

#include <array>

namespace kova {
namespace {

// Never fails, unlike the conversions of paths: a record with a damaged text is a record, too.
std::wstring wide(std::string_view utf8) {
    const std::u16string units = toUtf16(utf8);
    return {units.begin(), units.end()};
}

std::string narrow(std::wstring_view text) {
    std::string utf8;
    appendUtf16(utf8, std::u16string(text.begin(), text.end()));
    return utf8;
}

/// What Windows says of its error, in the user's language; the C++ library would say it in the code page.
std::string messageOf(DWORD error) {
    std::array<wchar_t, 512> text{};
    DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error,
                                  0, text.data(), static_cast<DWORD>(text.size()), nullptr);
    while (length > 0 && (text[length - 1] == L'\r' || text[length - 1] == L'\n'))
        --length;
    return length > 0 ? narrow({text.data(), length}) : "error " + std::to_string(error);
}

/// Settings of the machine hive. A number counts as its text.
class RegistrySettingsStore final : public SettingsStore {
  public:
    [[nodiscard]] std::optional<std::string> read(const std::string& baseKey, const std::string& section,
                                                  const std::string& name) const override {
        const std::wstring key = wide(baseKey + '\\' + section);
        const std::wstring value = wide(name);
        // RegGetValue would open it in the same way, but only from Windows 10 on.
        HKEY opened = nullptr;
        if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, key.c_str(), 0, KEY_QUERY_VALUE | KEY_WOW64_64KEY, &opened) !=
            ERROR_SUCCESS)
            return std::nullopt;
        std::array<wchar_t, 1024> buffer{};
        DWORD type = 0;
        auto size = static_cast<DWORD>(sizeof(buffer));
        const auto read = RegGetValueW(opened, nullptr, value.c_str(), RRF_RT_REG_SZ | RRF_RT_REG_DWORD,
                                       &type, buffer.data(), &size);
        RegCloseKey(opened);
        if (read != ERROR_SUCCESS)
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

std::vector<std::string> programArguments(int, char**) {
    int count = 0;
    LPWSTR* const words = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i)
        arguments.push_back(narrow(words[i]));
    LocalFree(words);
    return arguments;
}

std::shared_ptr<void> utf8Console() {
    const UINT before = GetConsoleOutputCP(); // none for a program without a console
    SetConsoleOutputCP(CP_UTF8);
    return {nullptr, [before](void*) {
                if (before != 0)
                    SetConsoleOutputCP(before);
            }};
}

// Of the process, as the host may have changed it: the C library has a copy of its own.
std::string environmentVariable(const std::string& name) {
    const std::wstring wideName = wide(name);
    std::wstring value;
    for (DWORD needed = MAX_PATH; needed > value.size();) {
        value.resize(needed);
        needed = GetEnvironmentVariableW(wideName.c_str(), value.data(), needed);
        if (needed < value.size())
            value.resize(needed);
    }
    return narrow(value);
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

void atEndOfThread(void (*)(bool)) {}

std::string appendToFile(const std::string& path, const std::string& text) {
    const HANDLE file = CreateFileW(wide(path).c_str(), FILE_APPEND_DATA,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return messageOf(GetLastError());
    DWORD written = 0;
    const bool taken = WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr) != 0;
    const DWORD error = GetLastError();
    CloseHandle(file);
    return taken ? std::string() : messageOf(error);
}

std::string writeToSystemLog(const std::string& record) {
    const HANDLE log = RegisterEventSourceW(nullptr, L"kova");
    const std::wstring text = wide(record);
    LPCWSTR texts[]{text.c_str()};
    const bool taken =
        log != nullptr && ReportEventW(log, EVENTLOG_ERROR_TYPE, 0, 0, nullptr, 1, 0, texts, nullptr) != 0;
    const DWORD error = GetLastError();
    if (log != nullptr)
        DeregisterEventSource(log);
    return taken ? std::string() : messageOf(error);
}

} // namespace kova
