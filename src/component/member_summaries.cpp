// What the members and events are for: the words of every reference that is written from the table of
// members.
#include "component/type_description.h"

#include <algorithm>
#include <iterator>

namespace kova::type_description {
namespace {

struct Summary {
    std::string_view member, words;
};

constexpr Summary Summaries[] = {
    {"ApriCassetto", "Raises the event of the same name. The dialog does so after a saved movement whose "
                     "activity opens the drawer."},
    {"Stampa",
     "Raises the event of the same name. The dialog does so at the print button of its list, with the "
     "text of the day that was chosen."},
    {"Anteprima", "Raises the event of the same name. The dialog does so at the preview button of its list."},
    {"SalvaPagamento", "Raises the event of the same name. The dialog does so for each confirmed movement."},
    {"AttivaRecuperaFondoCassaPrecedente",
     "Whether the dialog has the button that fetches the closing float of the "
     "last day as the opening float. At first off; Show reads it."},
    {"PredisponiInserimentoFondoCassaIniziale", "Whether Show prepares the entry of the opening float: its "
                                                "activity and payment are chosen, the drawer opens when "
                                                "the activity is chosen, and the close button asks for the "
                                                "float instead of closing: set ChiusuraAutomatica too. "
                                                "At first off."},
    {"Show",
     "Shows the dialog: 0 returns at once, anything else when the dialog has closed. A dialog that is open "
     "already comes to the front with the settings of this call. The result is empty."},
    {"SetSoftwareName",
     "Names the host's software; at first \"KOVA\", with which double movements are not saved "
     "as pairs. \"FALCA\" and \"MIRANTE\" list movements from the views Report_…, others from "
     "GetDailyOperation. Show reads it."},
    {"AttivaVisualizzazionePrecontiDefinitivi", "Whether the list of movements also shows final pre-bills, "
                                                "for \"FALCA\" and \"MIRANTE\". At first off."},
    {"idCassa", "The till whose last float is fetched and, for \"FALCA\" and \"MIRANTE\", whose movements "
                "are listed. With -1, "
                "as at first, all are listed and no float is found."},
    {"ChiusuraAutomatica", "Whether the dialog closes after each successful save. At first off."},
    {"InserimentoAutomatico",
     "Whether choosing an activity, or the payment of a deposit, also confirms the movement. At first off."},
    {"DoppioInserimentoObbligatorio", "Whether each entry is a withdrawal from one payment and a deposit to "
                                      "another, saved as two movements. At "
                                      "first off; needs a SetSoftwareName other than \"KOVA\"."},
    {"idPagamentoPredefinito",
     "The payment that is chosen when the dialog opens and after each save; -1, as at first, for none."},
    {"idUtente", "The user whose movements are listed with VisualizzaMovimentiUtenteLoggato; at first -1."},
    {"UsaSoloValutaAziendale",
     "Whether ValutaAziendale is the only currency, so that none can be chosen. At first off."},
    {"VisualizzaMovimentiUtenteLoggato",
     "Whether the list shows the movements of idUtente alone, for \"FALCA\" and "
     "\"MIRANTE\". At first off."},
    {"ValutaAziendale",
     "The currency of all movements where the cashier has no choice: with UsaSoloValutaAziendale, or with "
     "fewer than two currencies in the database. At first \"€\"."},
    {"InizializzaByConnString", "Opens the database named by the text, unless the process has one, and reads "
                                "the settings. A failure is one "
                                "record of the error log."},
    {"Inizializza",
     "Makes a connection of the host's the one of the process, and reads the settings. It is shared "
     "and never closed by the component."},
    {"ActiveColorMetroStyle",
     "Whether Show gives the dialog its dark colours, which stay until it closes. At first off."},
    {"DiscardForm", "Closes the dialog and what it opened. With no dialog open it does nothing."},
};

constexpr Summary EventSummaries[] = {
    {"SalvaPagamento",
     "Store one movement: the amount as typed, not signed by direction; isIncasso when the money "
     "enters the drawer. What is written into a value reaches the dialog."},
    {"Stampa", "Print the movements of a day, named as the cashier left it."},
    {"Anteprima", "Show a print preview of the movements of a day."},
    {"ApriCassetto", "Open the cash drawer."},
};

template <std::size_t Count>
std::string_view wordsOf(std::string_view name, const Summary (&summaries)[Count]) {
    const auto* const found = std::ranges::find(summaries, name, &Summary::member);
    return found == std::end(summaries) ? std::string_view() : found->words;
}

} // namespace

std::string_view summary(const Member& member) {
    return wordsOf(member.name, Summaries);
}

std::string_view summary(const Event& event) {
    return wordsOf(event.name, EventSummaries);
}

} // namespace kova::type_description
