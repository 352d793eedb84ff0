// What Windows tells the component, where the code page (1252 in the tests) has no letters for it.
#include "adapters/system/file_error_logger.h"
#include "adapters/system/machine.h"
#include "adapters/system/system_language_runtime.h"
#include "adapters/system/system_regional_settings.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <fstream>
#include <sstream>
#include <thread>
#include <tuple>

namespace kova {
namespace {

/// A folder that goes with the test.
struct Folder {
    Folder() { std::filesystem::create_directories(path); }
    ~Folder() { std::filesystem::remove_all(path); }
    [[nodiscard]] std::string file(const char8_t* name) const { return utf8Of(path / name); }
    const std::filesystem::path path =
        std::filesystem::temp_directory_path() /
        (L"Kassen Z\u00fcrich \u03a9\u03bc " + std::to_wstring(GetCurrentProcessId()));
};

std::string contents(const std::string& file) {
    std::ostringstream read;
    read << std::ifstream(pathOf(file), std::ios::binary).rdbuf();
    return read.str();
}

TEST(WindowsSystem, SettingsComeFromTheMachineHive) {
    const auto store = machineSettings();
    const auto option = [&](const char* name) {
        return store->read(std::string(SettingsStore::BaseKey), "Options", name);
    };
    const wchar_t* const key = L"SOFTWARE\\ZELT\\KOVA\\Options";
    const DWORD number = 1040;
    const std::tuple<const wchar_t*, DWORD, const void*, DWORD> values[] = {
        {L"LanguageID", REG_SZ, L"1031", 10},
        {L"Name", REG_SZ, L"Z\u00fcrich \u03a9", 18},
        {L"Number", REG_DWORD, &number, sizeof number},
        {L"Bytes", REG_BINARY, &number, sizeof number}};
    ASSERT_EQ(option("LanguageID"), std::nullopt);
    for (const auto& [name, kind, bytes, size] : values)
        ASSERT_EQ(RegSetKeyValueW(HKEY_LOCAL_MACHINE, key, name, kind, bytes, size), ERROR_SUCCESS);
    EXPECT_EQ(option("languageid"), "1031") << "letter case aside";
    EXPECT_EQ(option("Name"), "Zürich Ω");
    EXPECT_EQ(option("Number"), "1040");
    EXPECT_EQ(option("Bytes"), std::nullopt);
    for (const auto& value : values)
        RegDeleteKeyValueW(HKEY_LOCAL_MACHINE, key, std::get<0>(value));
}

/// The region with one of the user's settings changed for as long as it is looked at.
RegionalSettings regionWith(LCTYPE kind, const wchar_t* text) {
    wchar_t before[128]{};
    GetLocaleInfoW(LOCALE_USER_DEFAULT, kind, before, 128);
    EXPECT_NE(SetLocaleInfoW(LOCALE_USER_DEFAULT, kind, text), 0);
    const RegionalSettings region = systemRegionalSettings();
    EXPECT_NE(SetLocaleInfoW(LOCALE_USER_DEFAULT, kind, before), 0);
    return region;
}

TEST(WindowsSystem, RegionIsWhatTheUserHasSetAtTheMoment) {
    const RegionalSettings before = systemRegionalSettings();
    EXPECT_EQ(regionWith(LOCALE_SDECIMAL, L"\u066b").decimalSeparator, "٫");
    EXPECT_EQ(regionWith(LOCALE_STHOUSAND, L"\u2019").groupSeparator, "’");
    EXPECT_EQ(regionWith(LOCALE_STHOUSAND, L"").groupSeparator, "");
    EXPECT_EQ(regionWith(LOCALE_SCURRENCY, L"\u20b9").currencySymbol, "₹");
    EXPECT_EQ(regionWith(LOCALE_SLIST, L"|").listSeparator, "|");
    EXPECT_EQ(regionWith(LOCALE_S1159, L"\u03c0.\u03bc.").beforeNoon, "π.μ.");
    EXPECT_EQ(regionWith(LOCALE_S2359, L"\u03bc.\u03bc.").afterNoon, "μ.μ.");
    EXPECT_EQ(regionWith(LOCALE_STIME, L".").timeSeparator, ".");
    EXPECT_TRUE(regionWith(LOCALE_STIMEFORMAT, L"h:mm:ss tt").twelveHours);
    EXPECT_FALSE(regionWith(LOCALE_STIMEFORMAT, L"HH' h 'mm").twelveHours) << "a letter of a text";
    using Sizes = std::pair<std::size_t, std::size_t>;
    for (const auto& [text, sizes] : {std::pair(L"3;0", Sizes(3, 3)),
                                      {L"3;2;0", Sizes(3, 2)},
                                      {L"3", Sizes(3, 0)},
                                      {L"0", Sizes(0, 0)}}) {
        const RegionalSettings region = regionWith(LOCALE_SGROUPING, text);
        EXPECT_EQ(Sizes(region.groupSize, region.furtherGroupSize), sizes) << std::filesystem::path(text);
    }
    using Order = RegionalSettings::DateOrder;
    const std::tuple<const wchar_t*, Order, const char*, bool> pictures[] = {
        {L"d.M.yyyy", Order::DayMonthYear, ".", false},
        {L"ddd dd/MM/yy", Order::DayMonthYear, "/", true},
        {L"yyyy'-'MM'-'dd", Order::YearMonthDay, "-", true},
        {L"M/d/yyyy", Order::MonthDayYear, "/", false},
        {L"yyyy. MM. dd.", Order::YearMonthDay, ".", true},
        {L"'le' d-M-yyyy", Order::DayMonthYear, "-", false}};
    for (const auto& [picture, order, separator, twoDigits] : pictures) {
        const RegionalSettings region = regionWith(LOCALE_SSHORTDATE, picture);
        EXPECT_EQ(std::tuple(region.dateOrder, region.dateSeparator, region.twoDigitDayAndMonth),
                  std::tuple(order, separator, twoDigits))
            << std::filesystem::path(picture);
    }
    EXPECT_EQ(systemRegionalSettings(), before);
}

TEST(WindowsSystem, LogGoesToTheUsersFileWhereItsOwnCannotBeWritten) {
    ASSERT_NE(GetACP(), static_cast<UINT>(CP_UTF8));
    const Folder folder;
    const std::wstring profile = (folder.path / u8"Jörg Ωμέγα").wstring();
    SetEnvironmentVariableW(L"LOCALAPPDATA", profile.c_str());
    SetEnvironmentVariableW(L"KOVA_LOG", nullptr);
    const SystemClock clock;
    const auto log = [&](const char* text) {
        SystemErrorLogger logger(clock);
        logger.SetLogFile(folder.file(u8"logfile.log"));
        logger.LogError("Form_Load", text, nullptr, 0, "");
    };
    log("perché Ω");
    EXPECT_NE(contents(folder.file(u8"logfile.log")).find("\tForm_Load\tperché Ω\t"), std::string::npos);

    std::filesystem::remove(folder.path / "logfile.log");
    std::filesystem::create_directory(folder.path /
                                      "logfile.log"); // refused as in a folder without permission
    log("2");
    const std::string records = contents(folder.file(u8"Jörg Ωμέγα/kova/logfile.log"));
    EXPECT_NE(records.find("Jörg Ωμέγα\\\\kova\\\\logfile.log, for "), std::string::npos) << records;
    EXPECT_EQ(std::ranges::count(records, '\n'), 2);

    SetEnvironmentVariableW(L"KOVA_LOG", (folder.path / u8"Ημερολόγιο.log").c_str());
    log("3");
    EXPECT_EQ(std::ranges::count(contents(folder.file(u8"Ημερολόγιο.log")), '\n'), 1);
    SetEnvironmentVariableW(L"KOVA_LOG", nullptr);
}

// While records are appended, another process appends as well, with a handle that it keeps, and moves the
// file away.
TEST(WindowsSystem, LogIsSharedWithOtherProcesses) {
    const Folder folder;
    const std::string path = folder.file(u8"logfile.log");
    std::atomic<std::size_t> records = 0;
    std::jthread logging([&](const std::stop_token& end) {
        for (; !end.stop_requested(); ++records)
            EXPECT_EQ(appendToFile(path, "ours\n"), "");
    });
    constexpr std::size_t Turns = 100;
    for (std::size_t i = 0; i < Turns; ++i) {
        const HANDLE other = CreateFileW(pathOf(path).c_str(), FILE_APPEND_DATA,
                                         FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                         OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
        Sleep(1);
        std::filesystem::rename(pathOf(path), folder.path / std::to_string(i));
        for (const std::size_t before = records; records < before + 2;) // Wine appends in two steps
            Sleep(0);
        DWORD written = 0;
        EXPECT_NE(WriteFile(other, "theirs\n", 7, &written, nullptr), 0);
        CloseHandle(other);
    }
    logging.request_stop();
    logging.join();
    std::string all;
    for (const auto& file : std::filesystem::directory_iterator(folder.path))
        all += contents(utf8Of(file.path()));
    EXPECT_EQ(std::ranges::count(all, '\n'), records + Turns) << "each record is there once";
}

TEST(WindowsSystem, TellsLocalTimeFolderAndLanguage) {
    using namespace std::chrono;
    const auto local = SystemClock().now().time_since_epoch();
    EXPECT_EQ(round<minutes>(local - floor<milliseconds>(system_clock::now()).time_since_epoch()), 345min)
        << "daylight saving of the zone that the test is started in";
    EXPECT_TRUE(std::filesystem::exists(pathOf(ownFolder()) / "system_tests.exe"));
    EXPECT_NE(SystemLanguageRuntime().languageId(), 0) << userLanguage();
}

} // namespace
} // namespace kova
