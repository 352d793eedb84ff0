/* clang-format off */
/* Written by kova-write-bindings from the table of members; included by kova_drawer_man_c.h.
 *
 * The members of the component. Booleans are 1 or 0 when read, and any number but 0 is true. What raises an event
 * returns KOVA_FAILED when a handler failed, with its number and words. */

/* Raises the event of the same name. The dialog does so after a saved movement whose activity opens the
 * drawer. */
KOVA_C_API kova_status KOVA_CALL kova_ApriCassetto(kova_component component);
/* Raises the event of the same name. The dialog does so at the print button of its list, with the text of the
 * day that was chosen. */
KOVA_C_API kova_status KOVA_CALL kova_Stampa(kova_component component, kova_text DataOP);
/* Raises the event of the same name. The dialog does so at the preview button of its list. */
KOVA_C_API kova_status KOVA_CALL kova_Anteprima(kova_component component, kova_text DataOP);
/* Raises the event of the same name. The dialog does so for each confirmed movement. */
KOVA_C_API kova_status KOVA_CALL kova_SalvaPagamento(kova_component component, int32_t* idpagamento,
                                                     double* importo, kova_text Valuta, kova_text note,
                                                     int16_t* cassetto, int32_t* tipoIncasso,
                                                     int32_t* isIncasso);
/* Whether the dialog has the button that fetches the closing float of the last day as the opening float. At
 * first off; Show reads it. */
KOVA_C_API kova_status KOVA_CALL kova_set_AttivaRecuperaFondoCassaPrecedente(kova_component component,
                                                                             int32_t value);
/* Whether Show prepares the entry of the opening float: its activity and payment are chosen, the drawer opens
 * when the activity is chosen, and the close button asks for the float instead of closing: set
 * ChiusuraAutomatica too. At first off. */
KOVA_C_API kova_status KOVA_CALL kova_set_PredisponiInserimentoFondoCassaIniziale(kova_component component,
                                                                                  int32_t value);
/* Shows the dialog: 0 returns at once, anything else when the dialog has closed. A dialog that is open
 * already comes to the front with the settings of this call. The result is empty. */
KOVA_C_API kova_status KOVA_CALL kova_Show(kova_component component, int32_t method, const char** result);
/* Names the host's software; at first "KOVA", with which double movements are not saved as pairs. "FALCA" and
 * "MIRANTE" list movements from the views Report_…, others from GetDailyOperation. Show reads it. */
KOVA_C_API kova_status KOVA_CALL kova_SetSoftwareName(kova_component component, const char* SwName);
/* Whether the list of movements also shows final pre-bills, for "FALCA" and "MIRANTE". At first off. */
KOVA_C_API kova_status KOVA_CALL kova_set_AttivaVisualizzazionePrecontiDefinitivi(kova_component component,
                                                                                  int32_t value);
KOVA_C_API kova_status KOVA_CALL kova_get_AttivaVisualizzazionePrecontiDefinitivi(kova_component component,
                                                                                  int32_t* result);
/* The till whose last float is fetched and, for "FALCA" and "MIRANTE", whose movements are listed. With -1,
 * as at first, all are listed and no float is found. */
KOVA_C_API kova_status KOVA_CALL kova_set_idCassa(kova_component component, int32_t value);
KOVA_C_API kova_status KOVA_CALL kova_get_idCassa(kova_component component, int32_t* result);
/* Whether the dialog closes after each successful save. At first off. */
KOVA_C_API kova_status KOVA_CALL kova_set_ChiusuraAutomatica(kova_component component, int32_t value);
KOVA_C_API kova_status KOVA_CALL kova_get_ChiusuraAutomatica(kova_component component, int32_t* result);
/* Whether choosing an activity, or the payment of a deposit, also confirms the movement. At first off. */
KOVA_C_API kova_status KOVA_CALL kova_set_InserimentoAutomatico(kova_component component, int32_t value);
KOVA_C_API kova_status KOVA_CALL kova_get_InserimentoAutomatico(kova_component component, int32_t* result);
/* Whether each entry is a withdrawal from one payment and a deposit to another, saved as two movements. At
 * first off; needs a SetSoftwareName other than "KOVA". */
KOVA_C_API kova_status KOVA_CALL kova_set_DoppioInserimentoObbligatorio(kova_component component,
                                                                        int32_t value);
KOVA_C_API kova_status KOVA_CALL kova_get_DoppioInserimentoObbligatorio(kova_component component,
                                                                        int32_t* result);
/* The payment that is chosen when the dialog opens and after each save; -1, as at first, for none. */
KOVA_C_API kova_status KOVA_CALL kova_set_idPagamentoPredefinito(kova_component component, int32_t value);
KOVA_C_API kova_status KOVA_CALL kova_get_idPagamentoPredefinito(kova_component component, int32_t* result);
/* The user whose movements are listed with VisualizzaMovimentiUtenteLoggato; at first -1. */
KOVA_C_API kova_status KOVA_CALL kova_set_idUtente(kova_component component, int32_t value);
KOVA_C_API kova_status KOVA_CALL kova_get_idUtente(kova_component component, int32_t* result);
/* Whether ValutaAziendale is the only currency, so that none can be chosen. At first off. */
KOVA_C_API kova_status KOVA_CALL kova_set_UsaSoloValutaAziendale(kova_component component, int32_t value);
KOVA_C_API kova_status KOVA_CALL kova_get_UsaSoloValutaAziendale(kova_component component, int32_t* result);
/* Whether the list shows the movements of idUtente alone, for "FALCA" and "MIRANTE". At first off. */
KOVA_C_API kova_status KOVA_CALL kova_set_VisualizzaMovimentiUtenteLoggato(kova_component component,
                                                                           int32_t value);
KOVA_C_API kova_status KOVA_CALL kova_get_VisualizzaMovimentiUtenteLoggato(kova_component component,
                                                                           int32_t* result);
/* The currency of all movements where the cashier has no choice: with UsaSoloValutaAziendale, or with fewer
 * than two currencies in the database. At first "€". */
KOVA_C_API kova_status KOVA_CALL kova_set_ValutaAziendale(kova_component component, const char* value);
KOVA_C_API kova_status KOVA_CALL kova_get_ValutaAziendale(kova_component component, const char** result);
/* Opens the database named by the text, unless the process has one, and reads the settings. A failure is one
 * record of the error log. */
KOVA_C_API kova_status KOVA_CALL kova_InizializzaByConnString(kova_component component,
                                                              const char* locConnString);
/* Makes a connection of the host's the one of the process, and reads the settings. It is shared and never
 * closed by the component. */
KOVA_C_API kova_status KOVA_CALL kova_Inizializza(kova_component component, kova_database ConnessioneDB);
/* Whether Show gives the dialog its dark colours, which stay until it closes. At first off. */
KOVA_C_API kova_status KOVA_CALL kova_set_ActiveColorMetroStyle(kova_component component, int32_t value);
/* Closes the dialog and what it opened. With no dialog open it does nothing. */
KOVA_C_API kova_status KOVA_CALL kova_DiscardForm(kova_component component);

/* Their dispatch ids; the two halves of a property share one. */
enum {
    KOVA_ID_ApriCassetto = 16,
    KOVA_ID_Stampa = 1,
    KOVA_ID_Anteprima = 6,
    KOVA_ID_SalvaPagamento = 2,
    KOVA_ID_AttivaRecuperaFondoCassaPrecedente = 20,
    KOVA_ID_PredisponiInserimentoFondoCassaIniziale = 21,
    KOVA_ID_Show = 3,
    KOVA_ID_SetSoftwareName = 7,
    KOVA_ID_AttivaVisualizzazionePrecontiDefinitivi = 8,
    KOVA_ID_idCassa = 9,
    KOVA_ID_ChiusuraAutomatica = 15,
    KOVA_ID_InserimentoAutomatico = 14,
    KOVA_ID_DoppioInserimentoObbligatorio = 18,
    KOVA_ID_idPagamentoPredefinito = 13,
    KOVA_ID_idUtente = 12,
    KOVA_ID_UsaSoloValutaAziendale = 11,
    KOVA_ID_VisualizzaMovimentiUtenteLoggato = 17,
    KOVA_ID_ValutaAziendale = 10,
    KOVA_ID_InizializzaByConnString = 22,
    KOVA_ID_Inizializza = 4,
    KOVA_ID_ActiveColorMetroStyle = 5,
    KOVA_ID_DiscardForm = 19
};

/* The kinds of activity, as in the column idTypeRow of tabActivityDrawer. */
enum {
    kDMTR_FondoCassaIniziale = 1,
    kDMTR_AmmancoConteggioCassetto = 2,
    kDMTR_EsuberoConteggioCassetto = 3,
    kDMTR_PrelievoPerVersamento = 4,
    kDMTR_FondoCassaFinale = 5
};
