// What Windows tells the component: settings of the registry, the user's region, folders beyond the code
// page.
#include "adapters/system/file_error_logger.h"
#include "adapters/system/machine.h"
#include "adapters/system/system_language_runtime.h"
#include "adapters/system/system_regional_settings.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <fstream>

namespace kova {
namespace {

/// Sets a value of a key and puts back what was there.
class RegistryValue {
  public:
    RegistryValue(HKEY root, const wchar_t* key, const wchar_t* name, const std::wstring& text)
        : name_(name) {
        RegCreateKeyExW(root, key, 0, nullptr, 0, KEY_ALL_ACCESS | KEY_WOW64_64KEY, nullptr, &key_, nullptr);
        DWORD size = sizeof before_;
        had_ = RegQueryValueExW(key_, name, nullptr, nullptr, reinterpret_cast<BYTE*>(before_), &size) == 0;
        set(text);
    }
    RegistryValue(const RegistryValue&) = delete;
    RegistryValue& operator=(const RegistryValue&) = delete;
    ~RegistryValue() {
        had_ ? set(before_) : static_cast<void>(RegDeleteValueW(key_, name_));
        RegCloseKey(key_);
    }

  private:
    void set(const std::wstring& text) {
        RegSetValueExW(key_, name_, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                       static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
    }
    HKEY key_ = nullptr;
    const wchar_t* name_;
    wchar_t before_[256]{};
    bool had_ = false;
};

TEST(WindowsSystem, SettingsComeFromTheMachineHive) {
    const auto store = machineSettings();
    const auto option = [&](const char* name) {
        return store->read(std::string(SettingsStore::BaseKey), "Options", name);
    };
    EXPECT_EQ(option("LanguageID"), std::nullopt);
    const RegistryValue language(HKEY_LOCAL_MACHINE, L"SOFTWARE\\ZELT\\KOVA\\Options", L"LanguageID",
                                 L"1031");
    const RegistryValue text(HKEY_LOCAL_MACHINE, L"SOFTWARE\\ZELT\\KOVA\\Options", L"Name",
                             L"Z\u00fcrich \u20ac");
    EXPECT_EQ(option("languageid"), "1031") << "letter case aside";
    EXPECT_EQ(option("Name"), "Zürich €");
}

TEST(WindowsSystem, RegionIsWhatTheUserSet) {
    const wchar_t* const region = L"Control Panel\\International";
    const RegistryValue decimal(HKEY_CURRENT_USER, region, L"sDecimal", L".");
    const RegistryValue group(HKEY_CURRENT_USER, region, L"sThousand", L"\u2019");
    const RegistryValue currency(HKEY_CURRENT_USER, region, L"sCurrency", L"CHF");
    const RegistryValue date(HKEY_CURRENT_USER, region, L"sShortDate", L"d.M.yyyy");
    const RegistryValue time(HKEY_CURRENT_USER, region, L"sTimeFormat", L"h:mm:ss tt");
    const RegionalSettings settings = systemRegionalSettings();
    EXPECT_EQ(settings.decimalSeparator, ".");
    EXPECT_EQ(settings.groupSeparator, "’");
    EXPECT_EQ(settings.currencySymbol, "CHF");
    EXPECT_EQ(settings.dateSeparator, ".");
    EXPECT_EQ(settings.dateOrder, RegionalSettings::DateOrder::DayMonthYear);
    EXPECT_FALSE(settings.twoDigitDayAndMonth);
    EXPECT_TRUE(settings.twelveHours);
}

TEST(WindowsSystem, LogsBeyondTheCodePageAndTellsTheLocalTime) {
    const auto folder = std::filesystem::temp_directory_path() / u8"Kassen Zürich €";
    std::filesystem::create_directories(folder);
    const SystemClock clock;
    FileErrorLogger log(clock);
    const std::string path = utf8Of(folder / "logfile.log");
    log.SetLogFile(path);
    log.LogError("Form_Load", "perché €", nullptr, 0, "");
    EXPECT_EQ(log.waiting(), 0U);
    std::ifstream file(pathOf(path), std::ios::binary);
    std::string line;
    std::getline(file, line);
    EXPECT_NE(line.find("\tForm_Load\tperché €\t"), std::string::npos) << line;
    file.close();
    std::filesystem::remove_all(folder);

    SYSTEMTIME local;
    GetLocalTime(&local);
    const std::chrono::hh_mm_ss now(clock.now() - std::chrono::floor<std::chrono::days>(clock.now()));
    EXPECT_EQ(now.hours().count(), local.wHour);
    EXPECT_NE(userStateFolder(), "");
    EXPECT_TRUE(std::filesystem::exists(pathOf(ownFolder())));
    EXPECT_NE(SystemLanguageRuntime().languageId(), 0) << userLanguage();
}

} // namespace
} // namespace kova
