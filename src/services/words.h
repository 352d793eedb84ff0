#pragma once
#include <cstdint>
#include <string_view>

namespace kova {

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
    Keyboard,
    Calendar,
    Clear,
    Comma,
    Point,
    Backspace,
    Enter,
    CapsLock,
    Space,
    Keys,
    NextField,
    CopySelection,
    SelectAll,
    SaveList,
    ListCutShort,
};

/// UTF-8, in a language of `namespace language`; Italian for any other.
[[nodiscard]] std::string_view inWords(Word word, std::int32_t languageId);

} // namespace kova
