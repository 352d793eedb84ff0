#include "demonstration/texts.h"

#include "library/library.h"

#include <array>

namespace kova {
namespace {

struct Texts {
    Caption which;
    const char *italian, *german, *english;
};

constexpr std::array Table{
    Texts{Caption::Title, "Punto cassa", "Kasse", "Point of sale"},
    Texts{Caption::Subtitle, "Dimostrazione dei movimenti di cassetto",
          "Vorführung der Kassenladenbewegungen", "Demonstration of cash-drawer movements"},
    Texts{Caption::OpenDialog, "Registra movimento", "Bewegung erfassen", "Record a movement"},
    Texts{Caption::Choices, "Cassa e opzioni", "Kasse und Optionen", "Till and options"},
    Texts{Caption::Till, "Cassa", "Kasse", "Till"},
    Texts{Caption::User, "Operatore", "Bediener", "Operator"},
    Texts{Caption::NoUser, "Nessuno", "Niemand", "Nobody"},
    Texts{Caption::DefaultPayment, "Pagamento predefinito", "Zahlart vorgewählt", "Default payment"},
    Texts{Caption::NoPayment, "Nessuno", "Keine", "None"},
    Texts{Caption::CompanyCurrency, "Valuta aziendale", "Firmenwährung", "Company currency"},
    Texts{Caption::SoftwareName, "Nome del software", "Name der Software", "Software name"},
    Texts{Caption::CompanyCurrencyOnly, "Solo valuta aziendale", "Nur Firmenwährung",
          "Company currency only"},
    Texts{Caption::CloseAutomatically, "Chiusura automatica", "Automatisch schließen", "Close automatically"},
    Texts{Caption::ConfirmAutomatically, "Conferma automatica", "Automatisch bestätigen",
          "Confirm automatically"},
    Texts{Caption::DoubleMovement, "Doppio movimento", "Doppelte Bewegung", "Double movement"},
    Texts{Caption::OnlyOwnMovements, "Solo movimenti propri", "Nur eigene Bewegungen", "Own movements only"},
    Texts{Caption::ShowProvisional, "Mostra preconti", "Vorabrechnungen zeigen", "Show provisional bills"},
    Texts{Caption::DarkColours, "Colori scuri", "Dunkle Farben", "Dark colours"},
    Texts{Caption::OfferPreviousFloat, "Recupera fondo cassa", "Anfangsbestand holen",
          "Fetch previous float"},
    Texts{Caption::OpeningFloat, "Fondo cassa iniziale", "Anfangsbestand eingeben", "Enter opening float"},
    Texts{Caption::Events, "Eventi ricevuti", "Empfangene Ereignisse", "Events received"},
    Texts{Caption::NoEvents, "Ancora nessun evento", "Noch keine Ereignisse", "No events yet"},
    Texts{Caption::FirstSentence,
          "Questa è una cassa di prova: scegli l'operatore e le opzioni che vuoi vedere.",
          "Das ist eine Kasse zum Ausprobieren: Wähle Bediener und Optionen, die du sehen willst.",
          "This is a till to try out: choose the operator and the options that you want to see."},
    Texts{Caption::SecondSentence,
          "Tocca «Registra movimento», scegli pagamento e movimento, digita un importo e conferma.",
          "Tippe auf «Bewegung erfassen», wähle Zahlart und Bewegung, gib einen Betrag ein und bestätige.",
          "Touch “Record a movement”, choose payment and movement, key in an amount and confirm."},
    Texts{Caption::ThirdSentence,
          "Gli eventi che il tuo programma riceverebbe appaiono a destra, le righe memorizzate sotto.",
          "Die Ereignisse, die dein Programm bekäme, erscheinen rechts, die gespeicherten Zeilen unten.",
          "The events that your program would receive show up on the right, the stored rows below."},
    Texts{Caption::Understood, "Ho capito", "Verstanden", "Got it"},
    Texts{Caption::Movements, "Movimenti memorizzati", "Gespeicherte Bewegungen", "Stored movements"},
    Texts{Caption::NoMovements, "Ancora nessun movimento", "Noch keine Bewegungen", "No movements yet"},
    Texts{Caption::ColumnMoment, "Data e ora", "Datum und Zeit", "Date and time"},
    Texts{Caption::ColumnActivity, "Movimento", "Bewegung", "Movement"},
    Texts{Caption::ColumnPayment, "Pagamento", "Zahlart", "Payment"},
    Texts{Caption::ColumnDirection, "Verso", "Richtung", "Direction"},
    Texts{Caption::ColumnAmount, "Importo", "Betrag", "Amount"},
    Texts{Caption::ColumnCurrency, "Valuta", "Währung", "Currency"},
    Texts{Caption::ColumnNote, "Note", "Notiz", "Note"},
    Texts{Caption::ColumnDrawer, "Cassetto", "Lade", "Drawer"},
    Texts{Caption::ColumnTill, "Cassa", "Kasse", "Till"},
    Texts{Caption::ColumnOperator, "Operatore", "Bediener", "Operator"},
    Texts{Caption::Incoming, "Entrata", "Eingang", "In"},
    Texts{Caption::Outgoing, "Uscita", "Ausgang", "Out"},
    Texts{Caption::Drawer, "cassetto", "Lade", "drawer"},
    Texts{Caption::PrintDay, "Stampare i movimenti del %1", "Bewegungen vom %1 drucken",
          "Print the movements of %1"},
    Texts{Caption::PreviewDay, "Anteprima dei movimenti del %1", "Vorschau der Bewegungen vom %1",
          "Preview the movements of %1"},
    Texts{Caption::DrawerOpened, "Cassetto aperto", "Kassenlade geöffnet", "Drawer open"},
    Texts{Caption::NotStored, "Movimento NON memorizzato: %1", "Bewegung NICHT gespeichert: %1",
          "Movement NOT stored: %1"},
    Texts{Caption::EntriesKept, "I dati inseriti sono rimasti nella finestra.",
          "Die Eingaben stehen noch im Fenster.", "What was entered is still in the window."},
    Texts{Caption::ListUnreadable, "I movimenti non si possono leggere: %1",
          "Die Bewegungen sind nicht lesbar: %1", "The movements cannot be read: %1"},
    Texts{Caption::ReadOnly, "Collegamento in sola lettura: i movimenti non possono essere memorizzati.",
          "Verbindung nur zum Lesen: Bewegungen können nicht gespeichert werden.",
          "This connection only reads: movements cannot be stored."},
    Texts{Caption::DatabaseUnusable, "La base dati non si può usare:\n%1",
          "Die Datenbank ist nicht verwendbar:\n%1", "The database cannot be used:\n%1"},
    Texts{Caption::DocumentTitle, "Movimenti di cassetto", "Kassenladenbewegungen", "Cash-drawer movements"},
    Texts{Caption::AllTills, "Tutte le casse", "Alle Kassen", "All tills"},
    Texts{Caption::MovementCount, "%1 movimenti", "%1 Bewegungen", "%1 movements"},
    Texts{Caption::OneMovement, "1 movimento", "1 Bewegung", "1 movement"},
    Texts{Caption::ColumnTime, "Ora", "Zeit", "Time"},
    Texts{Caption::Sums, "Totali per pagamento e valuta", "Summen nach Zahlart und Währung",
          "Totals by payment and currency"},
    Texts{Caption::MovementsInSum, "Movimenti", "Bewegungen", "Movements"},
    Texts{Caption::SumIncoming, "Entrate", "Eingänge", "In"},
    Texts{Caption::SumOutgoing, "Uscite", "Ausgänge", "Out"},
    Texts{Caption::Balance, "Saldo", "Saldo", "Balance"},
    Texts{Caption::Total, "Totale", "Gesamt", "Total"},
    Texts{Caption::PrintedAt, "Stampato il %1 alle %2", "Gedruckt am %1 um %2", "Printed on %1 at %2"},
    Texts{Caption::NoDate, "«%1» non è una data: scegli il giorno e riprova.",
          "«%1» ist kein Datum: bitte einen Tag wählen und nochmals versuchen.",
          "“%1” is no date: choose the day and try again."},
    Texts{Caption::NoMovementsOn, "Nessun movimento il %1", "Keine Bewegungen am %1", "No movements on %1"},
    Texts{Caption::DayUnreadable, "I movimenti del giorno non si possono leggere: %1",
          "Die Bewegungen des Tages sind nicht lesbar: %1", "The day's movements cannot be read: %1"},
    Texts{Caption::NotPrinted, "Documento NON stampato: %1", "Dokument NICHT gedruckt: %1",
          "Document NOT printed: %1"},
    Texts{Caption::PrinterFault, "la stampante o il file non si può usare",
          "der Drucker oder die Datei ist nicht verwendbar", "the printer or the file cannot be used"},
    Texts{Caption::ClosePreview, "Chiudi", "Schließen", "Close"},
    Texts{Caption::Print, "Stampa", "Drucken", "Print"},
    Texts{Caption::Cancel, "Annulla", "Abbrechen", "Cancel"},
    Texts{Caption::Copies, "Copie", "Kopien", "Copies"},
    Texts{Caption::FewerCopies, "Una copia in meno", "Eine Kopie weniger", "One copy less"},
    Texts{Caption::MoreCopies, "Una copia in più", "Eine Kopie mehr", "One copy more"},
    Texts{Caption::SaveAsPdf, "Salva come PDF …", "Als PDF speichern …", "Save as PDF …"},
    Texts{Caption::NoPrinter, "Nessuna stampante installata", "Kein Drucker eingerichtet",
          "No printer is set up"},
    Texts{Caption::AllUsers, "Tutti gli operatori", "Alle Bediener", "All operators"},
    Texts{Caption::PreviousPage, "Pagina precedente", "Vorherige Seite", "Previous page"},
    Texts{Caption::NextPage, "Pagina successiva", "Nächste Seite", "Next page"},
    Texts{Caption::PageOf, "%1 di %2", "%1 von %2", "%1 of %2"},
    Texts{Caption::Enlarge, "Ingrandisci", "Vergrößern", "Enlarge"},
    Texts{Caption::Shrink, "Riduci", "Verkleinern", "Shrink"}};

} // namespace

QString caption(Caption which, std::int32_t languageId) {
    for (const Texts& texts : Table)
        if (texts.which == which)
            return QString::fromUtf8(languageId == German    ? texts.german
                                     : languageId == English ? texts.english
                                                             : texts.italian);
    return {};
}

QString amountText(double amount) {
    constexpr int MostDecimals = 4; // those of the money column
    constexpr int LeastDecimals = 2;
    QString text = QString::fromStdString(formatAmount(amount, MostDecimals));
    for (int surplus = MostDecimals - LeastDecimals; surplus > 0 && text.endsWith('0'); --surplus)
        text.chop(1);
    return text;
}

} // namespace kova
