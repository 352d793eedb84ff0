// Written by kova-write-bindings from the table of members.
package kova.drawer;

import static kova.drawer.CInterface.LIBRARY;

import com.sun.jna.Library;
import com.sun.jna.Pointer;
import com.sun.jna.ptr.DoubleByReference;
import com.sun.jna.ptr.IntByReference;
import com.sun.jna.ptr.PointerByReference;
import com.sun.jna.ptr.ShortByReference;

/** The members of the component. A method that raises an event throws {@link KovaException} when a handler
 *  failed, with the handler's exception as its cause. */
public abstract class DrawerMembers extends Component {
    DrawerMembers() {}

    /** Raises the event of the same name. The dialog does so after a saved movement whose activity opens the
     *  drawer. */
    public void apriCassetto() {
        raise(LIBRARY::kova_ApriCassetto);
    }

    /** Raises the event of the same name. The dialog does so at the print button of its list, with the text of
     *  the day that was chosen. */
    public void stampa(Text dataOP) {
        raise(LIBRARY::kova_Stampa, dataOP);
    }

    /** Raises the event of the same name. The dialog does so at the preview button of its list. */
    public void anteprima(Text dataOP) {
        raise(LIBRARY::kova_Anteprima, dataOP);
    }

    /** Raises the event of the same name. The dialog does so for each confirmed movement. */
    public void salvaPagamento(Movement movement) {
        raise(LIBRARY::kova_SalvaPagamento, movement);
    }

    /** Whether the dialog has the button that fetches the closing float of the last day as the opening float.
     *  At first off; Show reads it. */
    public void setAttivaRecuperaFondoCassaPrecedente(boolean value) {
        check(LIBRARY.kova_set_AttivaRecuperaFondoCassaPrecedente(handle(), value ? 1 : 0));
    }

    /** Whether Show prepares the entry of the opening float: its activity and payment are chosen, the drawer
     *  opens when the activity is chosen, and the close button asks for the float instead of closing: set
     *  ChiusuraAutomatica too. At first off. */
    public void setPredisponiInserimentoFondoCassaIniziale(boolean value) {
        check(LIBRARY.kova_set_PredisponiInserimentoFondoCassaIniziale(handle(), value ? 1 : 0));
    }

    /** Shows the dialog: 0 returns at once, anything else when the dialog has closed. A dialog that is open
     *  already comes to the front with the settings of this call. The result is empty. */
    public String show(int method) {
        return readText((component, result) -> LIBRARY.kova_Show(component, method, result));
    }

    /** Names the host's software; at first "KOVA", with which double movements are not saved as pairs. "FALCA"
     *  and "MIRANTE" list movements from the views Report_…, others from GetDailyOperation. Show reads it. */
    public void setSoftwareName(String swName) {
        check(LIBRARY.kova_SetSoftwareName(handle(), swName));
    }

    /** Whether the list of movements also shows final pre-bills, for "FALCA" and "MIRANTE". At first off. */
    public void setAttivaVisualizzazionePrecontiDefinitivi(boolean value) {
        check(LIBRARY.kova_set_AttivaVisualizzazionePrecontiDefinitivi(handle(), value ? 1 : 0));
    }

    /** Whether the list of movements also shows final pre-bills, for "FALCA" and "MIRANTE". At first off. */
    public boolean isAttivaVisualizzazionePrecontiDefinitivi() {
        return readFlag(LIBRARY::kova_get_AttivaVisualizzazionePrecontiDefinitivi);
    }

    /** The till whose last float is fetched and, for "FALCA" and "MIRANTE", whose movements are listed. With
     *  -1, as at first, all are listed and no float is found. */
    public void setIdCassa(int value) {
        check(LIBRARY.kova_set_idCassa(handle(), value));
    }

    /** The till whose last float is fetched and, for "FALCA" and "MIRANTE", whose movements are listed. With
     *  -1, as at first, all are listed and no float is found. */
    public int getIdCassa() {
        return readNumber(LIBRARY::kova_get_idCassa);
    }

    /** Whether the dialog closes after each successful save. At first off. */
    public void setChiusuraAutomatica(boolean value) {
        check(LIBRARY.kova_set_ChiusuraAutomatica(handle(), value ? 1 : 0));
    }

    /** Whether the dialog closes after each successful save. At first off. */
    public boolean isChiusuraAutomatica() {
        return readFlag(LIBRARY::kova_get_ChiusuraAutomatica);
    }

    /** Whether choosing an activity, or the payment of a deposit, also confirms the movement. At first off. */
    public void setInserimentoAutomatico(boolean value) {
        check(LIBRARY.kova_set_InserimentoAutomatico(handle(), value ? 1 : 0));
    }

    /** Whether choosing an activity, or the payment of a deposit, also confirms the movement. At first off. */
    public boolean isInserimentoAutomatico() {
        return readFlag(LIBRARY::kova_get_InserimentoAutomatico);
    }

    /** Whether each entry is a withdrawal from one payment and a deposit to another, saved as two movements.
     *  At first off; needs a SetSoftwareName other than "KOVA". */
    public void setDoppioInserimentoObbligatorio(boolean value) {
        check(LIBRARY.kova_set_DoppioInserimentoObbligatorio(handle(), value ? 1 : 0));
    }

    /** Whether each entry is a withdrawal from one payment and a deposit to another, saved as two movements.
     *  At first off; needs a SetSoftwareName other than "KOVA". */
    public boolean isDoppioInserimentoObbligatorio() {
        return readFlag(LIBRARY::kova_get_DoppioInserimentoObbligatorio);
    }

    /** The payment that is chosen when the dialog opens and after each save; -1, as at first, for none. */
    public void setIdPagamentoPredefinito(int value) {
        check(LIBRARY.kova_set_idPagamentoPredefinito(handle(), value));
    }

    /** The payment that is chosen when the dialog opens and after each save; -1, as at first, for none. */
    public int getIdPagamentoPredefinito() {
        return readNumber(LIBRARY::kova_get_idPagamentoPredefinito);
    }

    /** The user whose movements are listed with VisualizzaMovimentiUtenteLoggato; at first -1. */
    public void setIdUtente(int value) {
        check(LIBRARY.kova_set_idUtente(handle(), value));
    }

    /** The user whose movements are listed with VisualizzaMovimentiUtenteLoggato; at first -1. */
    public int getIdUtente() {
        return readNumber(LIBRARY::kova_get_idUtente);
    }

    /** Whether ValutaAziendale is the only currency, so that none can be chosen. At first off. */
    public void setUsaSoloValutaAziendale(boolean value) {
        check(LIBRARY.kova_set_UsaSoloValutaAziendale(handle(), value ? 1 : 0));
    }

    /** Whether ValutaAziendale is the only currency, so that none can be chosen. At first off. */
    public boolean isUsaSoloValutaAziendale() {
        return readFlag(LIBRARY::kova_get_UsaSoloValutaAziendale);
    }

    /** Whether the list shows the movements of idUtente alone, for "FALCA" and "MIRANTE". At first off. */
    public void setVisualizzaMovimentiUtenteLoggato(boolean value) {
        check(LIBRARY.kova_set_VisualizzaMovimentiUtenteLoggato(handle(), value ? 1 : 0));
    }

    /** Whether the list shows the movements of idUtente alone, for "FALCA" and "MIRANTE". At first off. */
    public boolean isVisualizzaMovimentiUtenteLoggato() {
        return readFlag(LIBRARY::kova_get_VisualizzaMovimentiUtenteLoggato);
    }

    /** The currency of all movements where the cashier has no choice: with UsaSoloValutaAziendale, or with
     *  fewer than two currencies in the database. At first "€". */
    public void setValutaAziendale(String value) {
        check(LIBRARY.kova_set_ValutaAziendale(handle(), value));
    }

    /** The currency of all movements where the cashier has no choice: with UsaSoloValutaAziendale, or with
     *  fewer than two currencies in the database. At first "€". */
    public String getValutaAziendale() {
        return readText(LIBRARY::kova_get_ValutaAziendale);
    }

    /** Opens the database named by the text, unless the process has one, and reads the settings. A failure is
     *  one record of the error log. */
    public void inizializzaByConnString(String locConnString) {
        check(LIBRARY.kova_InizializzaByConnString(handle(), locConnString));
    }

    /** Makes a connection of the host's the one of the process, and reads the settings. It is shared and never
     *  closed by the component. */
    public void inizializza(Database connessioneDB) {
        check(LIBRARY.kova_Inizializza(handle(), Database.handleOf(connessioneDB)));
    }

    /** Whether Show gives the dialog its dark colours, which stay until it closes. At first off. */
    public void setActiveColorMetroStyle(boolean value) {
        check(LIBRARY.kova_set_ActiveColorMetroStyle(handle(), value ? 1 : 0));
    }

    /** Closes the dialog and what it opened. With no dialog open it does nothing. */
    public void discardForm() {
        check(LIBRARY.kova_DiscardForm(handle()));
    }

    /** The dispatch ids of the members, for calls by id. */
    public enum Member {
        ApriCassetto(16),
        Stampa(1),
        Anteprima(6),
        SalvaPagamento(2),
        AttivaRecuperaFondoCassaPrecedente(20),
        PredisponiInserimentoFondoCassaIniziale(21),
        Show(3),
        SetSoftwareName(7),
        AttivaVisualizzazionePrecontiDefinitivi(8),
        idCassa(9),
        ChiusuraAutomatica(15),
        InserimentoAutomatico(14),
        DoppioInserimentoObbligatorio(18),
        idPagamentoPredefinito(13),
        idUtente(12),
        UsaSoloValutaAziendale(11),
        VisualizzaMovimentiUtenteLoggato(17),
        ValutaAziendale(10),
        InizializzaByConnString(22),
        Inizializza(4),
        ActiveColorMetroStyle(5),
        DiscardForm(19);

        public final int id;

        Member(int id) {
            this.id = id;
        }
    }

    /** The kinds of activity, as in the column idTypeRow of tabActivityDrawer. */
    public enum ActivityKind {
        FondoCassaIniziale(1),
        AmmancoConteggioCassetto(2),
        EsuberoConteggioCassetto(3),
        PrelievoPerVersamento(4),
        FondoCassaFinale(5);

        public final int id;

        ActivityKind(int id) {
            this.id = id;
        }
    }

    /** The functions of the library for the members. */
    interface Functions extends Library {
        int kova_ApriCassetto(Pointer component);
        int kova_Stampa(Pointer component, Pointer dataOP);
        int kova_Anteprima(Pointer component, Pointer dataOP);
        int kova_SalvaPagamento(Pointer component, IntByReference idpagamento, DoubleByReference importo,
            Pointer valuta, Pointer note, ShortByReference cassetto, IntByReference tipoIncasso,
            IntByReference isIncasso);
        int kova_set_AttivaRecuperaFondoCassaPrecedente(Pointer component, int value);
        int kova_set_PredisponiInserimentoFondoCassaIniziale(Pointer component, int value);
        int kova_Show(Pointer component, int method, PointerByReference result);
        int kova_SetSoftwareName(Pointer component, String swName);
        int kova_set_AttivaVisualizzazionePrecontiDefinitivi(Pointer component, int value);
        int kova_get_AttivaVisualizzazionePrecontiDefinitivi(Pointer component, IntByReference result);
        int kova_set_idCassa(Pointer component, int value);
        int kova_get_idCassa(Pointer component, IntByReference result);
        int kova_set_ChiusuraAutomatica(Pointer component, int value);
        int kova_get_ChiusuraAutomatica(Pointer component, IntByReference result);
        int kova_set_InserimentoAutomatico(Pointer component, int value);
        int kova_get_InserimentoAutomatico(Pointer component, IntByReference result);
        int kova_set_DoppioInserimentoObbligatorio(Pointer component, int value);
        int kova_get_DoppioInserimentoObbligatorio(Pointer component, IntByReference result);
        int kova_set_idPagamentoPredefinito(Pointer component, int value);
        int kova_get_idPagamentoPredefinito(Pointer component, IntByReference result);
        int kova_set_idUtente(Pointer component, int value);
        int kova_get_idUtente(Pointer component, IntByReference result);
        int kova_set_UsaSoloValutaAziendale(Pointer component, int value);
        int kova_get_UsaSoloValutaAziendale(Pointer component, IntByReference result);
        int kova_set_VisualizzaMovimentiUtenteLoggato(Pointer component, int value);
        int kova_get_VisualizzaMovimentiUtenteLoggato(Pointer component, IntByReference result);
        int kova_set_ValutaAziendale(Pointer component, String value);
        int kova_get_ValutaAziendale(Pointer component, PointerByReference result);
        int kova_InizializzaByConnString(Pointer component, String locConnString);
        int kova_Inizializza(Pointer component, Pointer connessioneDB);
        int kova_set_ActiveColorMetroStyle(Pointer component, int value);
        int kova_DiscardForm(Pointer component);
    }
}
