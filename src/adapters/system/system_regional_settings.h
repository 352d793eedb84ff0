#pragma once
#include "ports/regional_settings.h"

#include <string>
#include <string_view>

namespace kova {

/// Those of the user: as set in Windows; elsewhere those of the locale that the environment chooses (LC_ALL,
/// LC_NUMERIC, LANG).
RegionalSettings systemRegionalSettings();

/// Not on Windows: the regional settings of a locale by its name, for instance de_CH.UTF-8: those known by
/// tag, otherwise what the C library tells of an installed locale. The defaults (it-IT) for C, POSIX, an
/// empty name and one that is not installed.
RegionalSettings regionalSettingsOfLocale(const std::string& locale);

/// Takes order, separator and width of the short date from a strftime format such as "%d.%m.%y"; a format
/// that does not name day, month and year changes nothing.
void applyDateFormat(RegionalSettings& settings, std::string_view format);

/// Not on Windows: the locale that the environment chooses for a category, for instance "LC_NUMERIC": LC_ALL,
/// the category, LANG, the first that is not empty. Empty when none is.
std::string localeName(const char* category);

/// Not on Windows: language and region of a locale's name, without encoding and variant: it_IT of
/// it_IT.UTF-8@euro.
std::string_view localeRegion(std::string_view locale);

} // namespace kova
