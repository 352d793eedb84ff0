#include "adapters/qt/words.h"

#include <map>

namespace kova {
namespace {

struct Translations {
    const char* english;
    const char* italian;
    const char* german;
};

const std::map<Word, Translations> Words{
    {Word::Keypad, {"Number pad", "Tastierino numerico", "Ziffernblock"}},
    {Word::Keyboard, {"Keyboard", "Tastiera", "Tastatur"}},
    {Word::Calendar, {"Calendar", "Calendario", "Kalender"}},
    {Word::Clear, {"Clear", "Cancella tutto", "Alles löschen"}},
    {Word::Comma, {"Decimal separator", "Virgola", "Komma"}},
    {Word::Backspace, {"Backspace", "Cancella", "Rücktaste"}},
    {Word::Enter, {"Enter", "Invio", "Eingabe"}},
    {Word::CapsLock, {"Caps Lock", "Blocco maiuscole", "Feststelltaste"}},
    {Word::Space, {"Space", "Spazio", "Leertaste"}},
    {Word::Keys, {"Keys", "Tasti", "Tasten"}},
    {Word::NextField, {"Next field", "Campo successivo", "Nächstes Feld"}},
};

} // namespace

QString inWords(Word word, const RegionalSettings& regional) {
    const Translations& found = Words.at(word);
    const std::string language = regional.name.substr(0, 2);
    return QString::fromUtf8(language == "it"   ? found.italian
                             : language == "de" ? found.german
                                                : found.english);
}

} // namespace kova
