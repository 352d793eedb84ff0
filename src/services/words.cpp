#include "services/words.h"

#include "services/localised_strings.h"

#include <algorithm>
#include <iterator>

namespace kova {
namespace {

struct Translations {
    Word word;
    std::string_view italian, german, english;
};

constexpr Translations dictionary[] = {
    {Word::In, "Entrata", "Eingang", "In"},
    {Word::Out, "Uscita", "Ausgang", "Out"},
    {Word::NoNumber, "Non è un numero", "Keine Zahl", "Not a number"},
    {Word::Saved, "Registrato", "Gebucht", "Saved"},
    {Word::OnlySaved, "Registrato SOLO", "NUR gebucht", "ONLY saved"},
    {Word::NotSaved, "NON registrato", "NICHT gebucht", "NOT saved"},
    {Word::NothingSaved, "NULLA è stato registrato", "NICHTS wurde gebucht", "NOTHING was saved"},
    {Word::Yes, "Sì", "Ja", "Yes"},
    {Word::No, "No", "Nein", "No"},
    {Word::Keypad, "Tastierino numerico", "Ziffernblock", "Number pad"},
    {Word::Keyboard, "Tastiera", "Tastatur", "Keyboard"},
    {Word::Calendar, "Calendario", "Kalender", "Calendar"},
    {Word::Clear, "Cancella tutto", "Alles löschen", "Clear"},
    {Word::Comma, "Virgola", "Komma", "Comma"},
    {Word::Point, "Punto", "Punkt", "Point"},
    {Word::Backspace, "Cancella", "Rücktaste", "Backspace"},
    {Word::Enter, "Invio", "Eingabe", "Enter"},
    {Word::CapsLock, "Blocco maiuscole", "Feststelltaste", "Caps Lock"},
    {Word::Space, "Spazio", "Leertaste", "Space"},
    {Word::Keys, "Tasti", "Tasten", "Keys"},
    {Word::NextField, "Campo successivo", "Nächstes Feld", "Next field"},
    {Word::CopySelection, "Copia selezione", "Auswahl kopieren", "Copy selection"},
    {Word::SelectAll, "Seleziona tutto", "Alles auswählen", "Select all"},
    {Word::SaveList, "Salva elenco in CSV …", "Liste als CSV speichern …", "Save list as CSV …"},
    {Word::ListCutShort, "Elenco non letto fino in fondo: possono mancare movimenti",
     "Liste nicht zu Ende gelesen: Bewegungen können fehlen",
     "List not read to its end: movements may be missing"},
};

constexpr std::size_t rowOf(Word word) {
    return static_cast<std::size_t>(word);
}

static_assert(std::size(dictionary) == rowOf(Word::ListCutShort) + 1);
static_assert(std::ranges::all_of(dictionary, [](const Translations& one) {
    return &one == &dictionary[rowOf(one.word)];
}));

} // namespace

std::string_view inWords(Word word, std::int32_t languageId) {
    const Translations& found = dictionary[rowOf(word)];
    return languageId == language::German    ? found.german
           : languageId == language::English ? found.english
                                             : found.italian;
}

} // namespace kova
