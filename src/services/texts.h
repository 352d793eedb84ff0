#pragma once
#include "../../resources/string_table.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>

namespace kova {

class ProcessState;

namespace language {
inline constexpr std::int32_t Italian = 1040;
inline constexpr std::int32_t German = 1031;
inline constexpr std::int32_t English = 9;
} // namespace language

/// The component's resource strings.
class StringSource {
  public:
    /// Makes the component's own resources available; before that every text is empty.
    void bindOwnResources() { bound_ = true; }
    [[nodiscard]] bool bound() const { return bound_; }
    /// Empty for an id or language that is not held, which is no error.
    [[nodiscard]] std::string GetString(std::int32_t id, std::int32_t languageId) const;

  private:
    bool bound_ = false;
};

/// Reads the per-machine language setting and binds the string source. Throws Error for a setting that is no
/// 16-bit number.
void InitLanguage(ProcessState& process);
/// Makes a language the current one; Italian when it is not supported. The name is not used.
void SetLanguage(ProcessState& process, std::int32_t LanguageID, std::string_view Language);
constexpr std::array<std::int32_t, 3> SupportedLanguages() {
    return {language::Italian, language::German, language::English};
}
/// An entry of the string table. The Italian text documents it where it is used; one that is not the entry's
/// does not compile.
class LocalisedString {
  public:
    consteval LocalisedString(std::int32_t id, std::string_view italian) : id_(id) {
        const auto* const entry = std::ranges::find(StringTable, id, &StringTableEntry::id);
        if (entry == std::end(StringTable) || entry->italian != italian)
            throw "no such entry of the string table";
    }
    [[nodiscard]] std::int32_t id() const { return id_; }

  private:
    std::int32_t id_;
};

/// Its text in the current language. Empty as `StringSource::GetString` is.
std::string GetLocalizedString(const ProcessState& process, LocalisedString entry);

/// What is said beside the texts of the string table: by the aids of the screen, and by the parts that a
/// rendering adds.
enum class Word {
    In,
    Out,
    NoNumber,
    Saved,
    OnlySaved, ///< of a pair whose second movement failed
    NotSaved,  ///< that second movement
    NothingSaved,
    Yes,
    No,
    Keypad,
    Pieces,     ///< that are entered in a coin count
    LoadPieces, ///< into the field of what is said after it
    Keyboard,
    Calendar,
    Today,
    PreviousDay,
    NextDay,
    PreviousMonth,
    NextMonth,
    PreviousYear,
    NextYear,
    Cancel,
    SaveFile,
    ReplaceFile,
    FileExists,
    FileName,
    FolderAbove,
    HomeFolder,
    DocumentsFolder,
    Clear,
    Comma,
    Point,
    Backspace,
    LastDigit, ///< is taken away
    Enter,
    CapsLock,
    Space,
    Keys,
    NextField,
    CopySelection,
    SelectAll,
    SaveList,
    ListSaved,
    ListNotSaved,
    ListMenu,
    SearchList,
    NothingFound,
    GroupBy,
    Ungroup,
    ListOfOther,
    ListCutShort,
    Missing,
    Drawer,
    PaymentIn,       ///< before a currency
    TooManyDecimals, ///< before a currency
    NoteOfAnother,   ///< activity
    NotLoaded,       ///< a count of coins
    Rows,
    Ascending,
    Descending,
    Collapsed,
    Expanded,
    ReadingSettings,
    ReadingChoices, ///< payments, activities, currencies
    ReadingActivity,
    ReadingMovements,
    ReadingFloat,
    SavingList,
    Connecting,
    OfLimit, ///< between the seconds gone and those that there are
    ServerSilent,
};

/// UTF-8, in a language of `namespace language`; Italian for any other.
[[nodiscard]] std::string_view inWords(Word word, std::int32_t languageId);

} // namespace kova
