#include "adapters/system/system_regional_settings.h"

#include "base/ascii_text.h"
#include "base/utf16.h"

#include <windows.h>

#include <algorithm>
#include <array>

namespace kova {
namespace {

/// What the user has set; the defaults of a region where nothing is.
std::string userSetting(LCTYPE kind) {
    std::array<wchar_t, 128> text{};
    if (GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, kind, text.data(), static_cast<int>(text.size())) == 0)
        return {};
    std::string utf8;
    appendUtf16(utf8, reinterpret_cast<const char16_t*>(text.data()));
    return utf8;
}

/// A picture of a date or a time without the letters of its quoted texts.
std::string withoutTexts(const std::string& picture) {
    std::string letters;
    bool quoted = false;
    for (const char letter : picture) {
        if (letter == '\'')
            quoted = !quoted;
        else if (!quoted || letter == '-' || letter == '.' || letter == '/')
            letters += letter;
    }
    return letters;
}

/// A date picture such as dd/MM/yyyy as a strftime format. Days of the week, as ddd, are left out.
std::string formatOfPicture(const std::string& date) {
    const std::string picture = withoutTexts(date);
    std::string format;
    for (std::size_t at = 0; at < picture.size();) {
        const char letter = picture[at];
        const std::size_t length = std::min(picture.find_first_not_of(letter, at), picture.size()) - at;
        if (letter == 'M' || (letter == 'd' && length < 3))
            format.append(length < 2 ? "%-" : "%").append(letter == 'd' ? "d" : "m");
        else if (letter == 'y')
            format.append("%Y");
        else if (letter == '-' || letter == '.' || letter == '/')
            format += letter;
        at += length;
    }
    return format;
}

/// Sizes of groups as 3;0 or 3;2;0: from the right, and a 0 behind the one that all further groups have.
void takeGrouping(RegionalSettings& settings, const std::string& sizes) {
    const auto sizeAt = [&](std::size_t at) -> std::size_t {
        return at < sizes.size() && isDigit(sizes[at]) ? static_cast<std::size_t>(sizes[at] - '0') : 0;
    };
    settings.groupSize = sizeAt(0);
    settings.furtherGroupSize = sizes.size() == 3 && sizeAt(2) == 0 ? sizeAt(0) : sizeAt(2);
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
    takeGrouping(settings, userSetting(LOCALE_SGROUPING));
    take(settings.currencySymbol, LOCALE_SCURRENCY);
    take(settings.listSeparator, LOCALE_SLIST);
    applyDateFormat(settings, formatOfPicture(userSetting(LOCALE_SSHORTDATE)));
    take(settings.timeSeparator, LOCALE_STIME);
    settings.twelveHours = withoutTexts(userSetting(LOCALE_STIMEFORMAT)).find('h') != std::string::npos;
    take(settings.beforeNoon, LOCALE_SAM);
    take(settings.afterNoon, LOCALE_SPM);
    return settings;
}

} // namespace kova
