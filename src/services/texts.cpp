#include "services/texts.h"

#include "services/conversions.h"
#include "services/process_state.h"

#include <algorithm>
#include <iterator>

namespace kova {
namespace {

struct Translations {
    Word word;
    std::string_view italian, german, english;
};

constexpr Translations Dictionary[] = {
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
    {Word::Pieces, "Numero di pezzi", "Stückzahl", "Number of pieces"},
    {Word::LoadPieces, "Carica i pezzi", "Stückzahl übernehmen", "Load the pieces"},
    {Word::Keyboard, "Tastiera", "Tastatur", "Keyboard"},
    {Word::Calendar, "Calendario", "Kalender", "Calendar"},
    {Word::Today, "Oggi", "Heute", "Today"},
    {Word::PreviousDay, "Giorno precedente", "Vorheriger Tag", "Previous day"},
    {Word::NextDay, "Giorno successivo", "Nächster Tag", "Next day"},
    {Word::PreviousMonth, "Mese precedente", "Vorheriger Monat", "Previous month"},
    {Word::NextMonth, "Mese successivo", "Nächster Monat", "Next month"},
    {Word::PreviousYear, "Anno precedente", "Vorheriges Jahr", "Previous year"},
    {Word::NextYear, "Anno successivo", "Nächstes Jahr", "Next year"},
    {Word::Cancel, "Annulla", "Abbrechen", "Cancel"},
    {Word::SaveFile, "Salva", "Speichern", "Save"},
    {Word::ReplaceFile, "Sostituisci", "Ersetzen", "Replace"},
    {Word::FileExists, "Questo file esiste già: sostituirlo?", "Diese Datei gibt es schon: ersetzen?",
     "This file already exists: replace it?"},
    {Word::FileName, "Nome del file", "Dateiname", "File name"},
    {Word::FolderAbove, "Cartella superiore", "Ordner darüber", "Folder above"},
    {Word::HomeFolder, "Cartella personale", "Eigener Ordner", "Home folder"},
    {Word::DocumentsFolder, "Documenti", "Dokumente", "Documents"},
    {Word::Clear, "Cancella tutto", "Alles löschen", "Clear"},
    {Word::Comma, "Virgola", "Komma", "Comma"},
    {Word::Point, "Punto", "Punkt", "Point"},
    {Word::Backspace, "Cancella", "Rücktaste", "Backspace"},
    {Word::LastDigit, "Cancella l'ultima cifra", "Letzte Ziffer löschen", "Delete the last digit"},
    {Word::Enter, "Invio", "Eingabe", "Enter"},
    {Word::CapsLock, "Blocco maiuscole", "Feststelltaste", "Caps Lock"},
    {Word::Space, "Spazio", "Leertaste", "Space"},
    {Word::Keys, "Tasti", "Tasten", "Keys"},
    {Word::NextField, "Campo successivo", "Nächstes Feld", "Next field"},
    {Word::CopySelection, "Copia selezione", "Auswahl kopieren", "Copy selection"},
    {Word::SelectAll, "Seleziona tutto", "Alles auswählen", "Select all"},
    {Word::SaveList, "Salva elenco in CSV …", "Liste als CSV speichern …", "Save list as CSV …"},
    {Word::ListSaved, "Elenco salvato", "Liste gespeichert", "List saved"},
    {Word::ListNotSaved, "Elenco NON salvato", "Liste NICHT gespeichert", "List NOT saved"},
    {Word::ListMenu, "Menu dell'elenco", "Menü der Liste", "Menu of the list"},
    {Word::SearchList, "Cerca nell'elenco", "In der Liste suchen", "Search the list"},
    {Word::NothingFound, "Nessuna riga contiene il testo cercato", "Keine Zeile enthält den gesuchten Text",
     "No row has the text searched for"},
    {Word::GroupBy, "Raggruppa per", "Gruppieren nach", "Group by"},
    {Word::Ungroup, "Togli i gruppi", "Gruppen auflösen", "Ungroup"},
    {Word::ListOfOther, "Questo elenco è di un'altra data o di altri filtri",
     "Diese Liste ist von einem anderen Datum oder anderen Filtern",
     "This list is of another date or of other filters"},
    {Word::ListCutShort, "Elenco non letto fino in fondo: possono mancare movimenti",
     "Liste nicht zu Ende gelesen: Bewegungen können fehlen",
     "List not read to its end: movements may be missing"},
    {Word::Missing, "manca", "fehlt", "missing"},
    {Word::Drawer, "Cassetto", "Fach", "Tray"},
    {Word::PaymentIn, "Pagamento in", "Zahlung in", "Payment in"},
    {Word::TooManyDecimals, "Troppi decimali per", "Zu viele Dezimalen für", "Too many decimals for"},
    {Word::NoteOfAnother, "Nota di un altro movimento", "Hinweis einer anderen Bewegung",
     "Note of another movement"},
    {Word::NotLoaded, "Non ancora caricato", "Noch nicht übernommen", "Not loaded yet"},
    {Word::Rows, "righe", "Zeilen", "rows"},
    {Word::Ascending, "crescente", "aufsteigend", "ascending"},
    {Word::Descending, "decrescente", "absteigend", "descending"},
    {Word::Collapsed, "chiuso", "zugeklappt", "collapsed"},
    {Word::Expanded, "aperto", "aufgeklappt", "expanded"},
    {Word::ReadingSettings, "Lettura delle impostazioni", "Einstellungen werden gelesen",
     "Reading the settings"},
    {Word::ReadingChoices, "Lettura di pagamenti, movimenti e valute",
     "Zahlungsarten, Bewegungsarten und Währungen werden gelesen",
     "Reading payments, movement types and currencies"},
    {Word::ReadingActivity, "Lettura del tipo di movimento", "Bewegungsart wird gelesen",
     "Reading the type of movement"},
    {Word::ReadingMovements, "Lettura dei movimenti", "Bewegungen werden gelesen", "Reading the movements"},
    {Word::ReadingFloat, "Lettura del fondo cassa precedente", "Vorheriger Kassenbestand wird gelesen",
     "Reading the previous cash float"},
    {Word::SavingList, "Salvataggio dell'elenco", "Liste wird gespeichert", "Saving the list"},
    {Word::Connecting, "Connessione al server", "Verbindung zum Server", "Connecting to the server"},
    {Word::OfLimit, "di", "von", "of"},
    {Word::ServerSilent, "Il server non risponde. Nessun movimento è stato perso.",
     "Der Server antwortet nicht. Keine Bewegung ging verloren.",
     "The server does not answer. No movement was lost."},
};

constexpr std::size_t rowOf(Word word) {
    return static_cast<std::size_t>(word);
}

static_assert(std::size(Dictionary) == rowOf(Word::ServerSilent) + 1);
static_assert(std::ranges::all_of(Dictionary, [](const Translations& one) {
    return &one == &Dictionary[rowOf(one.word)];
}));

/// A text of either table; nothing for a language that there is none of.
template <class Entry>
constexpr std::optional<std::string_view> in(std::int32_t languageId, const Entry& entry) {
    switch (languageId) {
    case language::Italian:
        return entry.italian;
    case language::German:
        return entry.german;
    case language::English:
        return entry.english;
    default:
        return std::nullopt;
    }
}

constexpr bool isComplete(const auto& entry) {
    return std::ranges::none_of(SupportedLanguages(),
                                [&](std::int32_t id) { return in(id, entry).value_or("").empty(); });
}
static_assert(std::ranges::all_of(Dictionary, [](const auto& word) { return isComplete(word); }));
static_assert(std::ranges::all_of(StringTable, [](const auto& entry) { return isComplete(entry); }));

} // namespace

std::string StringSource::GetString(std::int32_t id, std::int32_t languageId) const {
    if (!bound_)
        return {};
    const auto entry = std::ranges::find(StringTable, id, &StringTableEntry::id);
    if (entry == std::end(StringTable))
        return {};
    return std::string(in(languageId, *entry).value_or(""));
}

void InitLanguage(ProcessState& process) {
    const std::string baseKey(SettingsStore::BaseKey);
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

std::string GetLocalizedString(const ProcessState& process, LocalisedString entry) {
    return process.strings.GetString(entry.id(), process.CurrentLanguageId);
}

std::string_view inWords(Word word, std::int32_t languageId) {
    const Translations& found = Dictionary[rowOf(word)];
    return in(languageId, found).value_or(found.italian);
}

} // namespace kova
