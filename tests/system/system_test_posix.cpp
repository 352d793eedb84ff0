#include "adapters/system/file_error_logger.h"
#include "adapters/system/ini_settings_store.h"
#include "adapters/system/machine.h"
#include "adapters/system/system_language_runtime.h"
#include "adapters/system/system_regional_settings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>
#include <thread>
#include <unistd.h>

namespace kova {
namespace {

/// All environment variables that matter begin unset.
class SystemAdapter : public testing::Test {
  protected:
    SystemAdapter() {
        for (const char* const name : {"LC_ALL", "LC_MESSAGES", "LC_NUMERIC", "LANG", "KOVA_SETTINGS",
                                       "KOVA_LOG", "XDG_STATE_HOME", "TZ"})
            unsetenv(name);
        std::filesystem::create_directories(folder);
    }
    ~SystemAdapter() override { std::filesystem::remove_all(folder); }
    static void set(const char* name, const std::string& value) { setenv(name, value.c_str(), 1); }
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("kova_system_" + std::to_string(getpid()));
};

TEST(SystemSounds, AreOfTheThemeAndKeepNobodyWaiting) {
    using namespace std::chrono;
    void* const library = dlopen(KOVA_SOUND_STAND_IN, RTLD_NOW); // found by its name from now on
    ASSERT_NE(library, nullptr);
    auto sounds = systemSounds();
    for (const auto tone : {Sounds::Tone::Key, Sounds::Tone::Saved}) {
        const auto begin = steady_clock::now();
        sounds->play(tone);
        EXPECT_LT(steady_clock::now() - begin, milliseconds(200));
        std::this_thread::sleep_for(milliseconds(200));
    }
    sounds.reset();
    EXPECT_EQ(*static_cast<std::string*>(dlsym(library, "stand_in_asked")),
              "event.id=button-pressed event.id=audio-volume-change event.id=complete ");
}

TEST_F(SystemAdapter, SettingsComeFromTheSectionOfTheirKeyWhateverTheCase) {
    const auto file = folder / "kova.ini";
    std::ofstream(file) << "LanguageID=1\n"
                           "[SOFTWARE/ZELT/OTHER/Options]\nLanguageID=2\n"
                           "; [SOFTWARE/ZELT/KOVA/Options]\n"
                           "  [software\\Zelt\\KOVA/options]  \r\n"
                           "# LanguageID=3\n"
                           "languageid =  1031 \r\n"
                           "LanguageID=4\n"
                           "Empty=\n"
                           "No value\n"
                           "Formula=a=b\n"
                           "[SOFTWARE/ZELT/KOVA]\nLate=5\n";
    set("KOVA_SETTINGS", file.string());
    const auto settings = machineSettings();
    const SettingsStore& store = *settings;
    const auto option = [&](const char* name) { return store.read("SOFTWARE\\ZELT\\KOVA", "Options", name); };
    EXPECT_EQ(option("LanguageID"), "1031");
    EXPECT_EQ(option("Empty"), "");
    EXPECT_EQ(option("FORMULA"), "a=b");
    EXPECT_EQ(option("No value"), std::nullopt);
    EXPECT_EQ(option("Late"), std::nullopt);
    std::filesystem::remove(file);
    EXPECT_EQ(option("LanguageID"), std::nullopt) << "a file that is gone holds nothing";
    EXPECT_EQ(IniSettingsStore(folder).read("a", "b", "c"), std::nullopt) << "nor does a folder";
}

TEST_F(SystemAdapter, TheFirstVariableThatIsNotEmptyChoosesTheLanguage) {
    EXPECT_EQ(SystemLanguageRuntime().languageId(), 0);
    set("LANG", "it_IT.UTF-8");
    EXPECT_EQ(SystemLanguageRuntime().languageId(), 1040);
    set("LC_MESSAGES", "de_CH@euro");
    set("LC_ALL", "");
    EXPECT_EQ(SystemLanguageRuntime().languageId(), 1031);
    set("LC_ALL", "en");
    EXPECT_EQ(SystemLanguageRuntime().languageId(), 9);
    for (const char* const unknown : {"C", "C.UTF-8", "POSIX", "eo", "itx_IT", ""})
        EXPECT_EQ(languageIdOfLocale(unknown), 0) << unknown;
    EXPECT_EQ(languageIdOfLocale("fr_FR"), 1036);
}

TEST_F(SystemAdapter, RegionalSettingsFollowTheLocaleOfNumbers) {
    EXPECT_EQ(systemRegionalSettings().name, "it-IT");
    set("LANG", "de_CH.UTF-8");
    EXPECT_EQ(systemRegionalSettings(), regionalSettings("de-CH"));
    set("LC_NUMERIC", "en_US");
    EXPECT_EQ(systemRegionalSettings(), regionalSettings("en-US"));
    for (const char* const none : {"C", "C.UTF-8", "POSIX", "xx_XX"})
        EXPECT_EQ(regionalSettingsOfLocale(none), RegionalSettings{}) << none;
}

TEST_F(SystemAdapter, ShortDatesTakeOrderSeparatorAndWidthFromTheFormat) {
    using Order = RegionalSettings::DateOrder;
    const std::tuple<const char*, Order, const char*, bool> formats[] = {
        {"%d.%m.%y", Order::DayMonthYear, ".", true},    {"%-d/%-m/%Y", Order::DayMonthYear, "/", false},
        {"%e. %m. %Y", Order::DayMonthYear, ".", false}, {"%D", Order::MonthDayYear, "/", true},
        {"%Y-%m-%d", Order::YearMonthDay, "-", true},    {"%F", Order::YearMonthDay, "-", true},
        {"%x", Order::DayMonthYear, "/", true}}; // what cannot be read changes nothing
    for (const auto& [format, order, separator, twoDigits] : formats) {
        RegionalSettings settings;
        applyDateFormat(settings, format);
        EXPECT_EQ(std::tuple(settings.dateOrder, settings.dateSeparator, settings.twoDigitDayAndMonth),
                  std::tuple(order, separator, twoDigits))
            << format;
    }
}

TEST_F(SystemAdapter, TellsLocalTimeAndTheFolderOfThisProgram) {
    using namespace std::chrono;
    const auto ahead = [&](const char* zone) {
        set("TZ", zone);
        tzset();
        const auto local = SystemClock().now().time_since_epoch();
        return round<minutes>(local - floor<milliseconds>(system_clock::now()).time_since_epoch());
    };
    EXPECT_EQ(ahead("UTC0"), 0min);
    EXPECT_EQ(ahead("XXX-5:45"), 345min) << "a zone east of Greenwich";
    EXPECT_EQ(ahead("XXX3"), -180min);
    EXPECT_EQ(ownFolder(), std::filesystem::read_symlink("/proc/self/exe").parent_path().string());
}

TEST_F(SystemAdapter, RecordsGoToTheFirstPlaceThatTakesThemAndTheFirstOneSaysWhy) {
    const SystemClock clock;
    std::string last;
    bool taken = true;
    const LogPlace lastPlace{"last", [&](const std::string& record) -> std::string {
                                 last += taken ? record : "";
                                 return taken ? "" : "refused";
                             }};
    const auto log = [&](FileErrorLogger& logger) {
        logger.LogError("early", "1", nullptr, 0, "");
        logger.SetLogFile("/dev/null/logfile.log");
        logger.LogError("late", "2", nullptr, 0, "");
    };
    const auto logged = [&](const std::filesystem::path& file) {
        SystemErrorLogger logger(clock, lastPlace);
        log(logger);
        std::ostringstream read;
        read << std::ifstream(file).rdbuf();
        return std::regex_replace(read.str(), std::regex("[^\n]*?\t\t([^\n\t]*\t[^\n\t]*)\t[^\n]*"), "$1");
    };
    set("XDG_STATE_HOME", folder / "state");
    const auto file = folder / "state/kova/logfile.log";
    EXPECT_EQ(logged(file), "\tthe log goes to " + file.string() +
                                ", for /dev/null/logfile.log: Not a directory\nearly\t1\nlate\t2\n");
    set("KOVA_LOG", folder / "named.log");
    EXPECT_EQ(logged(folder / "named.log"), "early\t1\nlate\t2\n");
    EXPECT_EQ(last, "");

    unsetenv("KOVA_LOG");
    set("XDG_STATE_HOME", "/dev/null");
    SystemErrorLogger homeless(clock, lastPlace);
    taken = false;
    log(homeless);
    taken = true;
    homeless.SetLogFile("/dev/null/logfile.log");
    EXPECT_EQ(std::ranges::count(last, '\n'), 3) << last;
}

} // namespace
} // namespace kova
