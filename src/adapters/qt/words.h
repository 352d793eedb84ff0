#pragma once
#include "platform/regional_settings.h"

#include <QString>

namespace kova {

/// What the toolkit's own parts are called, which no string table of the component names.
enum class Word {
    Keypad,
    Keyboard,
    Calendar,
    Clear,
    Comma,
    Backspace,
    Enter,
    CapsLock,
    Space,
    Keys,
    NextField,
};

/// In Italian or German where the region is, in English elsewhere.
QString inWords(Word word, const RegionalSettings& regional);

} // namespace kova
