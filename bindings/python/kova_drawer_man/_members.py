# Written by kova-write-bindings from the table of members.
"""The members of the component, its events and its numbers."""

from __future__ import annotations

import enum
from dataclasses import dataclass

from ._library import Component, Database, Text


class kDMTypeRow(enum.IntEnum):
    """The kinds of activity, as in the column idTypeRow of tabActivityDrawer."""

    kDMTR_FondoCassaIniziale = 1
    kDMTR_AmmancoConteggioCassetto = 2
    kDMTR_EsuberoConteggioCassetto = 3
    kDMTR_PrelievoPerVersamento = 4
    kDMTR_FondoCassaFinale = 5


class DispatchId(enum.IntEnum):
    """The members' dispatch ids."""

    ApriCassetto = 16
    Stampa = 1
    Anteprima = 6
    SalvaPagamento = 2
    AttivaRecuperaFondoCassaPrecedente = 20
    PredisponiInserimentoFondoCassaIniziale = 21
    Show = 3
    SetSoftwareName = 7
    AttivaVisualizzazionePrecontiDefinitivi = 8
    idCassa = 9
    ChiusuraAutomatica = 15
    InserimentoAutomatico = 14
    DoppioInserimentoObbligatorio = 18
    idPagamentoPredefinito = 13
    idUtente = 12
    UsaSoloValutaAziendale = 11
    VisualizzaMovimentiUtenteLoggato = 17
    ValutaAziendale = 10
    InizializzaByConnString = 22
    Inizializza = 4
    ActiveColorMetroStyle = 5
    DiscardForm = 19


@dataclass
class Movement:
    """What the cashier entered; a handler may change it."""

    idpagamento: int = 0
    importo: float = 0.0
    Valuta: str = ""
    note: str = ""
    cassetto: int = 0
    tipoIncasso: int = 0
    isIncasso: bool = False


class Events:
    """What the component asks its host for. Override what the host answers; the rest is ignored."""

    def SalvaPagamento(self, movement: Movement) -> None:
        """Store one movement: the amount as typed, not signed by direction; isIncasso when the
        money enters the drawer. What is written into a value reaches the dialog.
        """

    def Stampa(self, DataOperazione: Text) -> None:
        """Print the movements of a day, named as the cashier left it."""

    def Anteprima(self, DataOperazione: Text) -> None:
        """Show a print preview of the movements of a day."""

    def ApriCassetto(self) -> None:
        """Open the cash drawer."""


class Members(Component):
    """Properties and methods, under the names that they have in every language."""

    def ApriCassetto(self) -> None:
        """Raises the event of the same name. The dialog does so after a saved movement whose
        activity opens the drawer.
        """
        self._call("kova_ApriCassetto")

    def Stampa(self, DataOP: Text) -> None:
        """Raises the event of the same name. The dialog does so at the print button of its list,
        with the text of the day that was chosen.
        """
        self._raise_text("kova_Stampa", DataOP)

    def Anteprima(self, DataOP: Text) -> None:
        """Raises the event of the same name. The dialog does so at the preview button of its list."""
        self._raise_text("kova_Anteprima", DataOP)

    def SalvaPagamento(self, movement: Movement) -> None:
        """Raises the event of the same name. The dialog does so for each confirmed movement."""
        self._raise_movement("kova_SalvaPagamento", movement)

    @property
    def AttivaRecuperaFondoCassaPrecedente(self) -> bool:
        """Whether the dialog has the button that fetches the closing float of the last day as the
        opening float. At first off; Show reads it.
        """
        raise AttributeError("AttivaRecuperaFondoCassaPrecedente can only be written")

    @AttivaRecuperaFondoCassaPrecedente.setter
    def AttivaRecuperaFondoCassaPrecedente(self, value: bool) -> None:
        self._call("kova_set_AttivaRecuperaFondoCassaPrecedente", self._in_bool(value))

    @property
    def PredisponiInserimentoFondoCassaIniziale(self) -> bool:
        """Whether Show prepares the entry of the opening float: its activity and payment are
        chosen, the drawer opens when the activity is chosen, and the close button asks for the
        float instead of closing: set ChiusuraAutomatica too. At first off.
        """
        raise AttributeError("PredisponiInserimentoFondoCassaIniziale can only be written")

    @PredisponiInserimentoFondoCassaIniziale.setter
    def PredisponiInserimentoFondoCassaIniziale(self, value: bool) -> None:
        self._call("kova_set_PredisponiInserimentoFondoCassaIniziale", self._in_bool(value))

    def Show(self, method: int = -1) -> str:
        """Shows the dialog: 0 returns at once, anything else when the dialog has closed. A dialog
        that is open already comes to the front with the settings of this call. The result is
        empty.
        """
        return self._out_text("kova_Show", self._in_int(method))

    def SetSoftwareName(self, SwName: str) -> None:
        """Names the host's software; at first "KOVA", with which double movements are not saved as
        pairs. "FALCA" and "MIRANTE" list movements from the views Report_…, others from
        GetDailyOperation. Show reads it.
        """
        self._call("kova_SetSoftwareName", self._in_text(SwName))

    @property
    def AttivaVisualizzazionePrecontiDefinitivi(self) -> bool:
        """Whether the list of movements also shows final pre-bills, for "FALCA" and "MIRANTE". At
        first off.
        """
        return self._out_bool("kova_get_AttivaVisualizzazionePrecontiDefinitivi")

    @AttivaVisualizzazionePrecontiDefinitivi.setter
    def AttivaVisualizzazionePrecontiDefinitivi(self, value: bool) -> None:
        self._call("kova_set_AttivaVisualizzazionePrecontiDefinitivi", self._in_bool(value))

    @property
    def idCassa(self) -> int:
        """The till whose last float is fetched and, for "FALCA" and "MIRANTE", whose movements are
        listed. With -1, as at first, all are listed and no float is found.
        """
        return self._out_int("kova_get_idCassa")

    @idCassa.setter
    def idCassa(self, value: int) -> None:
        self._call("kova_set_idCassa", self._in_int(value))

    @property
    def ChiusuraAutomatica(self) -> bool:
        """Whether the dialog closes after each successful save. At first off."""
        return self._out_bool("kova_get_ChiusuraAutomatica")

    @ChiusuraAutomatica.setter
    def ChiusuraAutomatica(self, value: bool) -> None:
        self._call("kova_set_ChiusuraAutomatica", self._in_bool(value))

    @property
    def InserimentoAutomatico(self) -> bool:
        """Whether choosing an activity, or the payment of a deposit, also confirms the movement. At
        first off.
        """
        return self._out_bool("kova_get_InserimentoAutomatico")

    @InserimentoAutomatico.setter
    def InserimentoAutomatico(self, value: bool) -> None:
        self._call("kova_set_InserimentoAutomatico", self._in_bool(value))

    @property
    def DoppioInserimentoObbligatorio(self) -> bool:
        """Whether each entry is a withdrawal from one payment and a deposit to another, saved as
        two movements. At first off; needs a SetSoftwareName other than "KOVA".
        """
        return self._out_bool("kova_get_DoppioInserimentoObbligatorio")

    @DoppioInserimentoObbligatorio.setter
    def DoppioInserimentoObbligatorio(self, value: bool) -> None:
        self._call("kova_set_DoppioInserimentoObbligatorio", self._in_bool(value))

    @property
    def idPagamentoPredefinito(self) -> int:
        """The payment that is chosen when the dialog opens and after each save; -1, as at first,
        for none.
        """
        return self._out_int("kova_get_idPagamentoPredefinito")

    @idPagamentoPredefinito.setter
    def idPagamentoPredefinito(self, value: int) -> None:
        self._call("kova_set_idPagamentoPredefinito", self._in_int(value))

    @property
    def idUtente(self) -> int:
        """The user whose movements are listed with VisualizzaMovimentiUtenteLoggato; at first -1."""
        return self._out_int("kova_get_idUtente")

    @idUtente.setter
    def idUtente(self, value: int) -> None:
        self._call("kova_set_idUtente", self._in_int(value))

    @property
    def UsaSoloValutaAziendale(self) -> bool:
        """Whether ValutaAziendale is the only currency, so that none can be chosen. At first off."""
        return self._out_bool("kova_get_UsaSoloValutaAziendale")

    @UsaSoloValutaAziendale.setter
    def UsaSoloValutaAziendale(self, value: bool) -> None:
        self._call("kova_set_UsaSoloValutaAziendale", self._in_bool(value))

    @property
    def VisualizzaMovimentiUtenteLoggato(self) -> bool:
        """Whether the list shows the movements of idUtente alone, for "FALCA" and "MIRANTE". At
        first off.
        """
        return self._out_bool("kova_get_VisualizzaMovimentiUtenteLoggato")

    @VisualizzaMovimentiUtenteLoggato.setter
    def VisualizzaMovimentiUtenteLoggato(self, value: bool) -> None:
        self._call("kova_set_VisualizzaMovimentiUtenteLoggato", self._in_bool(value))

    @property
    def ValutaAziendale(self) -> str:
        """The currency of all movements where the cashier has no choice: with
        UsaSoloValutaAziendale, or with fewer than two currencies in the database. At first
        "€".
        """
        return self._out_text("kova_get_ValutaAziendale")

    @ValutaAziendale.setter
    def ValutaAziendale(self, value: str) -> None:
        self._call("kova_set_ValutaAziendale", self._in_text(value))

    def InizializzaByConnString(self, locConnString: str) -> None:
        """Opens the database named by the text, unless the process has one, and reads the settings.
        A failure is one record of the error log.
        """
        self._call("kova_InizializzaByConnString", self._in_text(locConnString))

    def Inizializza(self, ConnessioneDB: Database) -> None:
        """Makes a connection of the host's the one of the process, and reads the settings. It is
        shared and never closed by the component.
        """
        self._call("kova_Inizializza", self._in_database(ConnessioneDB))

    @property
    def ActiveColorMetroStyle(self) -> bool:
        """Whether Show gives the dialog its dark colours, which stay until it closes. At first off."""
        raise AttributeError("ActiveColorMetroStyle can only be written")

    @ActiveColorMetroStyle.setter
    def ActiveColorMetroStyle(self, value: bool) -> None:
        self._call("kova_set_ActiveColorMetroStyle", self._in_bool(value))

    def DiscardForm(self) -> None:
        """Closes the dialog and what it opened. With no dialog open it does nothing."""
        self._call("kova_DiscardForm")
