#pragma once
#include <cstdint>
#include <string_view>

namespace kova {

/// One resource string in the three languages. Ids and texts are frozen, translation oddities included.
struct StringTableEntry {
    std::int32_t id;
    std::string_view italian, german, english;
};

// clang-format off
inline constexpr StringTableEntry StringTable[] = {
    {1, "Gestione cassetto", "Schublade-management", "Drawer management"},
    {2, "Stampa", "Drucken", "Print"},
    {3, "Chiudi", "Schließen", "Close"},
    {4, "Carica", "Büro", "Office"},
    {5, "Anteprima di stampa", "Seitenansicht", "Print Preview"},
    {6, "Data movimenti", "Datentransfer", "Data movement"},
    {7, "Numero cassetto", "Faches", "Tray number"},
    {12, "Valuta", "Währung", "Currency"},
    {13, "Conferma", "Bestätigung", "Confirmation"},
    {14, "Conta Monete", "Münzen zählen", "Counting Coins"},
    {15, "Importo digitato", "Betragsart", "Amount type"},
    {16, "Tipo pagamento", "Zahlungsart", "Payment type"},
    {17, "Note", "Hinweis", "Note"},
    {18, "Tipo movimento", "Bewegungsart", "Movement type"},
    {19, "Carica moneta", "Münze hochladen", "Insert coin"},
    {20, "Cancella monete", "Löschen von Münzen", "Delete coins"},
    {21, "Carica monete", "Hochladen von Münzen", "Upload coins"},
    {22, "0", "0", "0"},
    {40, "Annulla", "Abbrechen", "Cancel"},
    {41, "Selezionare il tipo di moneta!", "Wählen Sie die Art der Münze!", "Select the type of coin!"},
    {42, "Carica moneta", "Münze hochladen", "Upload coin"},
    {43, "Selezionare un pagamento.", "Wählen Sie eine Zahlung.", "Select a payment."},
    {44, "Selezionare un tipo di operazione.", "Wählen Sie einen Vorgang.", "Select a type of operation."},
    {45, "Caricare una nota.", "Laden Sie eine Notiz.", "Load a note."},
    {46, "Caricare un importo valido.", "Laden Sie einen gültigen Betrag.", "Upload a valid amount."},
    {47, "Selezionare la valuta relativa all'importo.",
     "Wählen Sie die Währung für den Betrag.",
     "Select the currency for the amount."},
    {48, "Movimenti", "Bewegungen", "Movements"},
    {49, "Nascondi tastiera", "Ausblenden der Tastatur", "Hide keyboard"},
    {50, "Versamento", "Zahlung", "Payment"},
    {51, "Selezionare la modalità pagamento per il prelievo.",
     "Wählen Sie die Zahlungsart für die Kommissionierung.",
     "Select the payment mode for picking."},
    {52, "Selezionare la modalità pagamento per il versamento.",
     "Wählen Sie die Zahlungsart für die Zahlung.",
     "Select the payment mode for payment."},
    {53, "Non è possibile salvare il movimento poichè non è configurata la causale predefinita cassetto per i prelievi.",
     "Du kannst die Bewegung nicht retten, wie er gestaltet ist das Standardfach kausale für Abhebungen.",
     "You cannot save the movement as it is configured the default tray causal for withdrawals."},
    {54, "Non è possibile salvare il movimento poichè non è configurata la causale predefinita cassetto per i vesamenti.",
     "Du kannst die Bewegung nicht retten, wie er gestaltet ist das Standardfach für kausale Vesamenti.",
     "You cannot save the movement as it is configured the default tray for causal vesamenti."},
    {55, "Gestione doppio movimento cassetto",
     "Zweit-Schublade Bewegung",
     "Double drawer movement management"},
    {56, "Prelievo", "Levy", "Levy"},
    {57, " (Prelievo)", "(Levy)", "(Levy)"},
    {58, " (Versamento)", "(Zahlung)", "(Payment)"},
    {59, "Trascinare qui l'intestazione di colonna per raggruppare per quella colonna",
     "Ziehen Sie einen Spaltenheader hier Gruppe nach dieser Spalte",
     "Drag a column header here to group by that column"},
    {60, "Nessun elemento da visualizzare", "Keine anzuzeigenden Elemente", "No items to display"},
    {61, "Ordina per: ", "Sortieren nach:", "Sort by:"},
};
// clang-format on

} // namespace kova
