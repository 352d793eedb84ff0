"""A till in Python: two cashiers after each other, and a journal of what they did.

    till.py SHOP JOURNAL

SHOP is a file of the embedded database or a connection text; JOURNAL is a SQLite file of the till's own.
"""

from __future__ import annotations

import sqlite3
import sys
from datetime import date
from typing import Optional

import kova_drawer_man as kova

ITALIAN, GERMAN = 1040, 1031
CURRENCY = "CHF"  # in which this till is booked, whatever the dialog proposed
ACTIVITY = 30  # under which its movements are booked
TABLES = """
CREATE TABLE IF NOT EXISTS movements (idpagamento INTEGER, importo REAL, Valuta TEXT, note TEXT, cassetto INTEGER,
                                      tipoIncasso INTEGER, isIncasso INTEGER);
CREATE TABLE IF NOT EXISTS requests (event TEXT, day TEXT);
"""


def tell(event: str, **values: object) -> None:
    def shown(value: object) -> str:
        if isinstance(value, str):
            return f'"{value}"'
        return f"{value:.15g}" if isinstance(value, float) else str(value)

    print("event", event, *(f"{name}={shown(value)}" for name, value in values.items()))


class Till(kova.Events):
    def __init__(self, journal: sqlite3.Connection) -> None:
        self.journal = journal
        self.closed = False

    def SalvaPagamento(self, movement: kova.Movement) -> None:
        tell("SalvaPagamento", **vars(movement))
        movement.Valuta = CURRENCY  # what is written here reaches the dialog
        movement.tipoIncasso = ACTIVITY
        if self.closed:
            self.closed = False  # the cashier keeps the entry, and may confirm it again
            raise kova.Refusal("The day is closed. Confirm again to enter this in the next one.")
        with self.journal:
            self.journal.execute("INSERT INTO movements VALUES (?,?,?,?,?,?,?)", tuple(vars(movement).values()))

    def Stampa(self, DataOperazione: kova.Text) -> None:
        tell("Stampa", DataOperazione=DataOperazione.value)
        self.note("Stampa", kova.parse_date(DataOperazione.value))  # a text that is no day is refused
        self.closed = True

    def Anteprima(self, DataOperazione: kova.Text) -> None:
        tell("Anteprima", DataOperazione=DataOperazione.value)
        self.note("Anteprima", kova.parse_date(DataOperazione.value))

    def ApriCassetto(self) -> None:
        tell("ApriCassetto")
        self.note("ApriCassetto")

    def note(self, event: str, day: Optional[date] = None) -> None:
        with self.journal:
            self.journal.execute("INSERT INTO requests VALUES (?,?)", (event, day.isoformat() if day else None))


def main(shop: str, journal_file: str) -> None:
    journal = sqlite3.connect(journal_file)
    journal.executescript(TABLES)
    with kova.DrawerMan() as drawer:
        drawer.connect(Till(journal))
        with kova.Database(shop if "=" in shop else f"Data Source={shop}") as database:
            drawer.Inizializza(database)
        drawer.idCassa = 1
        kova.set_language(ITALIAN)
        drawer.Show()

        # The next cashier reads German, and pays elsewhere what is taken out here.
        kova.set_language(GERMAN)
        drawer.SetSoftwareName("Cassa")
        drawer.DoppioInserimentoObbligatorio = True
        drawer.Show()
    journal.close()


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    main(*sys.argv[1:])
