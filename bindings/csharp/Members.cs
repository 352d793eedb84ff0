// Written by kova-write-bindings from the table of members.
using System;
using System.Runtime.InteropServices;

namespace Kova.Drawer
{
    /// <summary>The component. A method that raises an event throws KovaException when a handler failed, with
    /// the handler's exception inside.</summary>
    public sealed partial class DrawerMan
    {
        /// <summary>Raises the event of the same name. The dialog does so after a saved movement whose
        /// activity opens the drawer.</summary>
        public void RaiseApriCassetto()
        {
            Raise(Native.kova_ApriCassetto);
        }

        /// <summary>Raises the event of the same name. The dialog does so at the print button of its list,
        /// with the text of the day that was chosen.</summary>
        public void RaiseStampa(DayEventArgs day)
        {
            Raise(Native.kova_Stampa, day);
        }

        /// <summary>Raises the event of the same name. The dialog does so at the preview button of its
        /// list.</summary>
        public void RaiseAnteprima(DayEventArgs day)
        {
            Raise(Native.kova_Anteprima, day);
        }

        /// <summary>Raises the event of the same name. The dialog does so for each confirmed
        /// movement.</summary>
        public void RaiseSalvaPagamento(MovementEventArgs movement)
        {
            Raise(Native.kova_SalvaPagamento, movement);
        }

        /// <summary>Whether the dialog has the button that fetches the closing float of the last day as the
        /// opening float. At first off; Show reads it.</summary>
        public bool AttivaRecuperaFondoCassaPrecedente
        {
            set { Check(Native.kova_set_AttivaRecuperaFondoCassaPrecedente(Handle, value ? 1 : 0)); }
        }

        /// <summary>Whether Show prepares the entry of the opening float: its activity and payment are
        /// chosen, the drawer opens when the activity is chosen, and the close button asks for the float
        /// instead of closing: set ChiusuraAutomatica too. At first off.</summary>
        public bool PredisponiInserimentoFondoCassaIniziale
        {
            set { Check(Native.kova_set_PredisponiInserimentoFondoCassaIniziale(Handle, value ? 1 : 0)); }
        }

        /// <summary>Shows the dialog: 0 returns at once, anything else when the dialog has closed. A dialog
        /// that is open already comes to the front with the settings of this call. The result is
        /// empty.</summary>
        public string Show(int method)
        {
            IntPtr result;
            Check(Native.kova_Show(Handle, method, out result));
            return Utf8.Text(result);
        }

        /// <summary>Names the host's software; at first "KOVA", with which double movements are not saved as
        /// pairs. "FALCA" and "MIRANTE" list movements from the views Report_…, others from
        /// GetDailyOperation. Show reads it.</summary>
        public void SetSoftwareName(string swName)
        {
            Check(Native.kova_SetSoftwareName(Handle, Utf8.Bytes(swName)));
        }

        /// <summary>Whether the list of movements also shows final pre-bills, for "FALCA" and "MIRANTE". At
        /// first off.</summary>
        public bool AttivaVisualizzazionePrecontiDefinitivi
        {
            get { return ReadFlag(Native.kova_get_AttivaVisualizzazionePrecontiDefinitivi); }
            set { Check(Native.kova_set_AttivaVisualizzazionePrecontiDefinitivi(Handle, value ? 1 : 0)); }
        }

        /// <summary>The till whose last float is fetched and, for "FALCA" and "MIRANTE", whose movements are
        /// listed. With -1, as at first, all are listed and no float is found.</summary>
        public int IdCassa
        {
            get { return ReadNumber(Native.kova_get_idCassa); }
            set { Check(Native.kova_set_idCassa(Handle, value)); }
        }

        /// <summary>Whether the dialog closes after each successful save. At first off.</summary>
        public bool ChiusuraAutomatica
        {
            get { return ReadFlag(Native.kova_get_ChiusuraAutomatica); }
            set { Check(Native.kova_set_ChiusuraAutomatica(Handle, value ? 1 : 0)); }
        }

        /// <summary>Whether choosing an activity, or the payment of a deposit, also confirms the movement. At
        /// first off.</summary>
        public bool InserimentoAutomatico
        {
            get { return ReadFlag(Native.kova_get_InserimentoAutomatico); }
            set { Check(Native.kova_set_InserimentoAutomatico(Handle, value ? 1 : 0)); }
        }

        /// <summary>Whether each entry is a withdrawal from one payment and a deposit to another, saved as
        /// two movements. At first off; needs a SetSoftwareName other than "KOVA".</summary>
        public bool DoppioInserimentoObbligatorio
        {
            get { return ReadFlag(Native.kova_get_DoppioInserimentoObbligatorio); }
            set { Check(Native.kova_set_DoppioInserimentoObbligatorio(Handle, value ? 1 : 0)); }
        }

        /// <summary>The payment that is chosen when the dialog opens and after each save; -1, as at first,
        /// for none.</summary>
        public int IdPagamentoPredefinito
        {
            get { return ReadNumber(Native.kova_get_idPagamentoPredefinito); }
            set { Check(Native.kova_set_idPagamentoPredefinito(Handle, value)); }
        }

        /// <summary>The user whose movements are listed with VisualizzaMovimentiUtenteLoggato; at first
        /// -1.</summary>
        public int IdUtente
        {
            get { return ReadNumber(Native.kova_get_idUtente); }
            set { Check(Native.kova_set_idUtente(Handle, value)); }
        }

        /// <summary>Whether ValutaAziendale is the only currency, so that none can be chosen. At first
        /// off.</summary>
        public bool UsaSoloValutaAziendale
        {
            get { return ReadFlag(Native.kova_get_UsaSoloValutaAziendale); }
            set { Check(Native.kova_set_UsaSoloValutaAziendale(Handle, value ? 1 : 0)); }
        }

        /// <summary>Whether the list shows the movements of idUtente alone, for "FALCA" and "MIRANTE". At
        /// first off.</summary>
        public bool VisualizzaMovimentiUtenteLoggato
        {
            get { return ReadFlag(Native.kova_get_VisualizzaMovimentiUtenteLoggato); }
            set { Check(Native.kova_set_VisualizzaMovimentiUtenteLoggato(Handle, value ? 1 : 0)); }
        }

        /// <summary>The currency of all movements where the cashier has no choice: with
        /// UsaSoloValutaAziendale, or with fewer than two currencies in the database. At first
        /// "€".</summary>
        public string ValutaAziendale
        {
            get { return ReadText(Native.kova_get_ValutaAziendale); }
            set { Check(Native.kova_set_ValutaAziendale(Handle, Utf8.Bytes(value))); }
        }

        /// <summary>Opens the database named by the text, unless the process has one, and reads the settings.
        /// A failure is one record of the error log.</summary>
        public void InizializzaByConnString(string locConnString)
        {
            Check(Native.kova_InizializzaByConnString(Handle, Utf8.Bytes(locConnString)));
        }

        /// <summary>Makes a connection of the host's the one of the process, and reads the settings. It is
        /// shared and never closed by the component.</summary>
        public void Inizializza(Database connessioneDB)
        {
            Check(Native.kova_Inizializza(Handle, Database.HandleOf(connessioneDB)));
        }

        /// <summary>Whether Show gives the dialog its dark colours, which stay until it closes. At first
        /// off.</summary>
        public bool ActiveColorMetroStyle
        {
            set { Check(Native.kova_set_ActiveColorMetroStyle(Handle, value ? 1 : 0)); }
        }

        /// <summary>Closes the dialog and what it opened. With no dialog open it does nothing.</summary>
        public void DiscardForm()
        {
            Check(Native.kova_DiscardForm(Handle));
        }
    }

    /// <summary>The dispatch ids of the members, for calls by id.</summary>
    public enum Member
    {
        ApriCassetto = 16,
        Stampa = 1,
        Anteprima = 6,
        SalvaPagamento = 2,
        AttivaRecuperaFondoCassaPrecedente = 20,
        PredisponiInserimentoFondoCassaIniziale = 21,
        Show = 3,
        SetSoftwareName = 7,
        AttivaVisualizzazionePrecontiDefinitivi = 8,
        IdCassa = 9,
        ChiusuraAutomatica = 15,
        InserimentoAutomatico = 14,
        DoppioInserimentoObbligatorio = 18,
        IdPagamentoPredefinito = 13,
        IdUtente = 12,
        UsaSoloValutaAziendale = 11,
        VisualizzaMovimentiUtenteLoggato = 17,
        ValutaAziendale = 10,
        InizializzaByConnString = 22,
        Inizializza = 4,
        ActiveColorMetroStyle = 5,
        DiscardForm = 19
    }

    /// <summary>The kinds of activity, as in the column idTypeRow of tabActivityDrawer.</summary>
    public enum ActivityKind
    {
        FondoCassaIniziale = 1,
        AmmancoConteggioCassetto = 2,
        EsuberoConteggioCassetto = 3,
        PrelievoPerVersamento = 4,
        FondoCassaFinale = 5
    }

    static partial class Native
    {
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl)]
        internal static extern int kova_ApriCassetto(IntPtr component);
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl)]
        internal static extern int kova_Stampa(IntPtr component, IntPtr dataOP);
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl)]
        internal static extern int kova_Anteprima(IntPtr component, IntPtr dataOP);
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl)]
        internal static extern int kova_SalvaPagamento(IntPtr component, ref int idpagamento, ref double
            importo, IntPtr valuta, IntPtr note, ref short cassetto, ref int tipoIncasso, ref int isIncasso);
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl)]
        internal static extern int kova_set_AttivaRecuperaFondoCassaPrecedente(IntPtr component, int
            value);
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl)]
        internal static extern int kova_set_PredisponiInserimentoFondoCassaIniziale(IntPtr component, int
            value);
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl)]
        internal static extern int kova_Show(IntPtr component, int method, out IntPtr result);
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl)]
        internal static extern int kova_SetSoftwareName(IntPtr component, byte[] swName);
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl)]
        internal static extern int kova_set_AttivaVisualizzazionePrecontiDefinitivi(IntPtr component, int
            value);
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl)]
        internal static extern int kova_get_AttivaVisualizzazionePrecontiDefinitivi(IntPtr component, out
            int result);
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl)]
        internal static extern int kova_set_idCassa(IntPtr component, int value);
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl)]
        internal static extern int kova_get_idCassa(IntPtr component, out int result);
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl)]
        internal static extern int kova_set_ChiusuraAutomatica(IntPtr component, int value);
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl)]
        internal static extern int kova_get_ChiusuraAutomatica(IntPtr component, out int result);
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl)]
        internal static extern int kova_set_InserimentoAutomatico(IntPtr component, int value);
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl)]
        internal static extern int kova_get_InserimentoAutomatico(IntPtr component, out int result);
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl)]
        internal static extern int kova_set_DoppioInserimentoObbligatorio(IntPtr component, int value);
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl)]
        internal static extern int kova_get_DoppioInserimentoObbligatorio(IntPtr component, out int
            result);
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl)]
        internal static extern int kova_set_idPagamentoPredefinito(IntPtr component, int value);
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl)]
        internal static extern int kova_get_idPagamentoPredefinito(IntPtr component, out int result);
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl)]
        internal static extern int kova_set_idUtente(IntPtr component, int value);
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl)]
        internal static extern int kova_get_idUtente(IntPtr component, out int result);
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl)]
        internal static extern int kova_set_UsaSoloValutaAziendale(IntPtr component, int value);
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl)]
        internal static extern int kova_get_UsaSoloValutaAziendale(IntPtr component, out int result);
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl)]
        internal static extern int kova_set_VisualizzaMovimentiUtenteLoggato(IntPtr component, int value);
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl)]
        internal static extern int kova_get_VisualizzaMovimentiUtenteLoggato(IntPtr component, out int
            result);
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl)]
        internal static extern int kova_set_ValutaAziendale(IntPtr component, byte[] value);
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl)]
        internal static extern int kova_get_ValutaAziendale(IntPtr component, out IntPtr result);
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl)]
        internal static extern int kova_InizializzaByConnString(IntPtr component, byte[] locConnString);
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl)]
        internal static extern int kova_Inizializza(IntPtr component, IntPtr connessioneDB);
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl)]
        internal static extern int kova_set_ActiveColorMetroStyle(IntPtr component, int value);
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl)]
        internal static extern int kova_DiscardForm(IntPtr component);
    }
}
