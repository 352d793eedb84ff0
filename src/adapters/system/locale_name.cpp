#include "adapters/system/locale_name.h"

#include <cstdlib>

namespace kova {

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
