#include "services/localised_strings.h"

#include "services/conversions.h"
#include "services/process_state.h"

namespace kova {

std::string StringSource::GetString(std::int32_t id, std::int32_t languageId) const {
    if (!bound_)
        return {};
    const auto entry = std::ranges::find(stringTable, id, &StringTableEntry::id);
    if (entry == std::end(stringTable))
        return {};
    switch (languageId) {
    case language::Italian:
        return std::string(entry->italian);
    case language::German:
        return std::string(entry->german);
    case language::English:
        return std::string(entry->english);
    default:
        return {};
    }
}

void InitLanguage(ProcessState& process) {
    const std::string baseKey = "SOFTWARE\\ZELT\\KOVA";
    const auto& store = process.platform.settingsStore;
    const auto& regional = process.platform.regional;
    (void)store.read(baseKey, "Options", "Language"); // older installations had the name here
    const auto configured = store.read(baseKey, "Options", "LanguageID");
    const auto id = configured ? toInt32(*configured, regional) : language::Italian;
    if (id != language::Italian)
        process.CurrentLanguageId = toInt16(std::to_string(id), regional);
    if (!process.strings.bound())
        process.strings.bindOwnResources();
}

void SetLanguage(ProcessState& process, std::int32_t LanguageID, std::string_view) {
    process.CurrentLanguageId = language::Italian;
    for (const auto supported : SupportedLanguages()) {
        if (supported == LanguageID) {
            process.CurrentLanguageId = LanguageID;
            break;
        }
    }
    process.platform.userInterface.setLanguage(process.CurrentLanguageId);
}

std::array<std::int32_t, 3> SupportedLanguages() {
    return {language::Italian, language::German, language::English};
}

std::string GetLocalizedString(const ProcessState& process, LocalisedString entry) {
    return process.strings.GetString(entry.id(), process.CurrentLanguageId);
}

} // namespace kova
