#include "adapters/system/system_language_runtime.h"

#include "adapters/system/machine.h"

#include <algorithm>
#include <array>

namespace kova {
namespace {

struct Language {
    std::string_view code; ///< ISO 639-1
    std::int32_t id;
    std::string_view name;
};

// The component has texts for the first three. English stands for all its regions, hence the neutral id.
constexpr std::array<Language, 8> Languages{{{"it", 1040, "Italiano"},
                                             {"de", 1031, "Deutsch"},
                                             {"en", 9, "English"},
                                             {"es", 3082, "Español"},
                                             {"fr", 1036, "Français"},
                                             {"nl", 1043, "Nederlands"},
                                             {"pt", 2070, "Português"},
                                             {"sl", 1060, "Slovenščina"}}};

const Language* findLanguage(std::string_view locale) {
    const auto code = locale.substr(0, locale.find_first_of("_.@-"));
    const auto* const found = std::ranges::find(Languages, code, &Language::code);
    return found == Languages.end() ? nullptr : found;
}

} // namespace

std::int32_t languageIdOfLocale(std::string_view locale) {
    const auto* const language = findLanguage(locale);
    return language == nullptr ? 0 : language->id;
}

SystemLanguageRuntime::SystemLanguageRuntime() : id_(0) {
    const auto locale = userLanguage();
    if (const auto* const language = findLanguage(locale)) {
        id_ = language->id;
        name_ = language->name;
    }
}

void SystemLanguageRuntime::setLanguage(std::int32_t id, std::string name) {
    id_ = id;
    name_ = std::move(name);
    const auto announced = name_; // a listener may set another language
    languageChanged(id, announced);
}

} // namespace kova
