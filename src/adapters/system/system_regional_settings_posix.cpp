#include "adapters/system/system_regional_settings.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <langinfo.h>
#include <locale.h>

namespace kova {
namespace {

class InstalledLocale {
  public:
    /// The component's texts are UTF-8, whatever encoding the name asks for.
    explicit InstalledLocale(const std::string& region)
        : locale_(newlocale(LC_ALL_MASK, (region + ".UTF-8").c_str(), nullptr)) {}
    InstalledLocale(const InstalledLocale&) = delete;
    InstalledLocale& operator=(const InstalledLocale&) = delete;
    ~InstalledLocale() {
        if (locale_ != nullptr)
            freelocale(locale_);
    }
    explicit operator bool() const { return locale_ != nullptr; }
    [[nodiscard]] std::string text(nl_item item) const { return nl_langinfo_l(item, locale_); }

  private:
    locale_t locale_;
};

RegionalSettings settingsOf(const InstalledLocale& locale, std::string tag) {
    RegionalSettings settings;
    settings.name = std::move(tag);
    settings.decimalSeparator = locale.text(RADIXCHAR);
    settings.groupSeparator = locale.text(THOUSEP);
    if (const auto currency = locale.text(CRNCYSTR); currency.size() > 1)
        settings.currencySymbol = currency.substr(1); // the first character says where it stands
    settings.listSeparator = std::string(1, settings.decimalSeparator == "," ? ';' : ',');
    applyDateFormat(settings, locale.text(D_FMT));
    if (const auto beforeNoon = locale.text(AM_STR), afterNoon = locale.text(PM_STR);
        !beforeNoon.empty() && !afterNoon.empty())
        settings.beforeNoon = beforeNoon, settings.afterNoon = afterNoon;
    const auto sizes = locale.text(GROUPING); // a byte each, the last one for all further groups
    const auto sizeOf = [](char size) {
        return size > 0 && size < CHAR_MAX ? static_cast<std::size_t>(size) : 0;
    };
    settings.groupSize = sizes.empty() ? 0 : sizeOf(sizes[0]);
    settings.furtherGroupSize = sizes.size() < 2 ? settings.groupSize : sizeOf(sizes[1]);
    const auto time = locale.text(T_FMT);
    settings.twelveHours = time == "%r" || time.find("%I") != std::string::npos;
    return settings;
}

} // namespace

RegionalSettings regionalSettingsOfLocale(const std::string& locale) {
    const std::string region(localeRegion(locale));
    if (const auto known = regionalSettings(region))
        return *known;
    if (region.empty() || region == "C" || region == "POSIX")
        return {};
    if (const InstalledLocale installed(region); installed) {
        auto tag = region;
        std::ranges::replace(tag, '_', '-');
        return settingsOf(installed, std::move(tag));
    }
    return {};
}

RegionalSettings systemRegionalSettings() {
    return regionalSettingsOfLocale(localeName("LC_NUMERIC"));
}

std::string localeName(const char* category) {
    for (const char* const variable : {"LC_ALL", category, "LANG"}) {
        const char* const value = std::getenv(variable);
        if (value != nullptr && *value != '\0')
            return value;
    }
    return {};
}

std::string_view localeRegion(std::string_view locale) {
    return locale.substr(0, locale.find_first_of(".@"));
}

} // namespace kova
