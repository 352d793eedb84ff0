#include "adapters/system/machine.h"
#include "adapters/system/system_regional_settings.h"

#include <windows.h>

#include <array>

namespace kova {
namespace {

/// What the user has set; the defaults of a region where nothing is.
std::string userSetting(LCTYPE kind) {
    std::array<wchar_t, 128> text{};
    if (GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, kind, text.data(), static_cast<int>(text.size())) == 0)
        return {};
    return utf8Of(std::filesystem::path(std::wstring(text.data())));
}

/// A date picture such as dd/MM/yyyy as a strftime format.
std::string formatOfPicture(std::string_view picture) {
    std::string format;
    for (std::size_t at = 0; at < picture.size();) {
        const char letter = picture[at];
        const std::size_t length = std::min(picture.find_first_not_of(letter, at), picture.size()) - at;
        if (letter == 'd' || letter == 'M')
            format.append(length < 2 ? "%-" : "%").append(letter == 'd' ? "d" : "m");
        else if (letter == 'y')
            format.append("%Y");
        else if (letter != '\'')
            format.append(length, letter);
        at += length;
    }
    return format;
}

} // namespace

RegionalSettings systemRegionalSettings() {
    RegionalSettings settings;
    const auto take = [](std::string& field, LCTYPE kind) {
        if (std::string text = userSetting(kind); !text.empty())
            field = std::move(text);
    };
    take(settings.name, LOCALE_SNAME);
    take(settings.decimalSeparator, LOCALE_SDECIMAL);
    settings.groupSeparator = userSetting(LOCALE_STHOUSAND); // may be none
    take(settings.currencySymbol, LOCALE_SCURRENCY);
    take(settings.listSeparator, LOCALE_SLIST);
    applyDateFormat(settings, formatOfPicture(userSetting(LOCALE_SSHORTDATE)));
    take(settings.timeSeparator, LOCALE_STIME);
    settings.twelveHours = userSetting(LOCALE_STIMEFORMAT).find('h') != std::string::npos;
    return settings;
}

} // namespace kova
