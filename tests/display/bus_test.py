"""A cashier without eyes and hands at the dialog: what assistive technology reads, does and hears on its bus.

    bus_test.py TREE FOLDER

The host is the till in Python, with the environment that it is given; TREE has it, FOLDER is for its files. Nothing
is clicked, and no key is pressed but to choose an activity and to move in the list: there are accessible actions, the
focus and the text of a field.
"""

import os
import sqlite3
import subprocess
import sys
from collections import Counter

import pyatspi
from gi.repository import GLib

PATIENCE = 15  # seconds
KEYS = {"F4": 0xFFC1, "Home": 0xFF50, "Up": 0xFF52, "Right": 0xFF53, "Down": 0xFF54}
EVENTS = ("object", "window", "focus")


class Failure(Exception):
    pass


def expect(seen, expected, what):
    if seen != expected:
        raise Failure(f"{what}: {seen!r}, not {expected!r}")


class Bus:
    """What is heard, and what is there to be found."""

    def __init__(self):
        self.heard = []
        pyatspi.Registry.registerEventListener(self.hear, *EVENTS)
        self.loop = GLib.MainContext.default()

    def hear(self, event):
        try:
            self.heard.append((str(event.type), event.source.name, event.detail1))
        except GLib.Error:  # gone already
            self.heard.append((str(event.type), None, event.detail1))

    def until(self, condition, what):
        """Waits; returns what the condition returned at last."""
        late = []
        timer = GLib.timeout_add_seconds(PATIENCE, late.append, True)
        tick = GLib.timeout_add(50, lambda: True)
        try:
            while True:
                try:
                    found = condition()
                except (GLib.Error, IndexError):  # it went while it was looked at
                    found = None
                if found:
                    return found
                if late:
                    raise Failure(f"not in {PATIENCE} s: {what}; heard: {self.heard[-20:]}")
                self.loop.iteration(True)
        finally:
            GLib.source_remove(tick)
            if not late:
                GLib.source_remove(timer)

    def hears(self, kind, name, detail=None):
        def there():
            return any(
                event[0].startswith(kind) and event[1] == name and detail in (None, event[2]) for event in self.heard
            )

        self.until(there, f"{kind} of {name!r}, {detail}")

    def forget(self):
        """What was heard until now, by kind and name."""
        while self.loop.iteration(False):
            pass
        counts = Counter(self.heard)
        self.heard.clear()
        return counts


def within(part):
    for child in part:
        if child is not None:
            yield child
            yield from within(child)


def states(part):
    """As they are now, not as the client's library remembers them."""
    part.clear_cache()
    return {pyatspi.stateToString(state) for state in part.getState().getStates()}


def focused(where):
    return next((part for part in within(where) if "focused" in states(part)), None)


def press(part, action=0):
    return part.queryAction().doAction(action)


def strike(key):
    pyatspi.Registry.generateKeyboardEvent(KEYS[key], None, pyatspi.KEY_SYM)


def can_press(part):
    actions = part.queryAction()
    return actions.nActions > 0 and actions.getName(0) == "Press"


class Cashier:
    def __init__(self, tree, folder):
        self.bus = Bus()
        shop = make_shop(tree, os.path.join(folder, "shop.db"))
        journal = os.path.join(folder, "journal.db")
        if os.path.exists(journal):
            os.remove(journal)
        self.told = os.path.join(folder, "told.txt")
        self.bus.forget()
        with open(self.told, "w", encoding="utf-8") as told:
            till = os.path.join(tree, "examples/05_python/till.py")
            self.host = subprocess.Popen([sys.executable, till, shop, journal], stdout=told)
        try:
            self.program = self.bus.until(self.find_program, "the host's windows")
        except Failure:
            self.host.kill()
            raise

    def find_program(self):
        if self.host.poll() is not None:
            raise Failure(f"the host has ended: {self.host.returncode}")
        for program in pyatspi.Registry.getDesktop(0):
            if program is not None and program.get_process_id() == self.host.pid and program.childCount:
                return program
        return None

    def windows(self):
        return [window.name for window in self.program]

    def in_front(self, find_window, what):
        """The window, once the keyboard is there: it may be on its way, as the window manager has it."""
        window = self.bus.until(find_window, what)
        self.bus.until(lambda: "active" in states(window), f"{what} in front")
        return window

    def find(self, role, name, inside=None, index=0):
        def there():
            found = [
                part
                for part in within(inside or self.program[self.program.childCount - 1])
                if part.getRoleName() == role and part.name == name and "showing" in states(part)
            ]
            return found[index] if len(found) > index else None

        return self.bus.until(there, f"a {role} {name!r}")

    def press(self, role, name, inside=None, index=0):
        part = self.find(role, name, inside, index)
        self.bus.until(lambda: can_press(part), f"a {role} {name!r} that can be pressed")
        expect(press(part), True, f"pressing {name}")
        return part

    def mark(self, name, group=None):
        """Presses a button of a grid, and hears that it is marked."""
        self.press("radio button", name, group and self.find("panel", group))
        self.bus.hears("object:state-changed:checked", name, 1)

    def keys(self, text, entry, pad="Tastierino numerico"):
        pad = self.find("panel", pad)
        for character in text:
            self.press("push button", {",": "Virgola"}.get(character, character), pad)
        self.bus.until(lambda: entry.queryText().getText(0, -1) == text, f"{text} in the amount box")

    def saved(self, count):
        """The movements that the host has received, when there are so many."""
        def received():
            with open(self.told, encoding="utf-8") as told:
                return [line for line in told if line.startswith("event SalvaPagamento")]

        self.bus.until(lambda: len(received()) >= count, f"movement {count}")
        expect(len(received()), count, "movements")
        return received()


def make_shop(tree, file):
    """The sample shop, with its last days as today."""
    if os.path.exists(file):
        os.remove(file)
    with sqlite3.connect(file) as shop:
        for script in ("schema.sql", "sample.sql"):
            with open(os.path.join(tree, "resources/database", script), encoding="utf-8") as text:
                shop.executescript(text.read())
        shop.execute(
            "UPDATE tabPagamentiScontriniBackoffice SET DataOperazione = "
            "date('now', 'localtime') || substr(DataOperazione, 11) WHERE date(DataOperazione) >= '2026-11-11'"
        )
    shop.close()
    return file


def opens_quietly(cashier):
    """Who hears of a window looks inside; a list of everything in it would only delay that."""
    entry = cashier.find("text", "Importo digitato")
    cashier.bus.hears("object:state-changed:focused", "Importo digitato", 1)
    heard = cashier.bus.forget()
    print("opening:", sum(heard.values()), "events")
    if sum(heard.values()) > 30:
        raise Failure(f"a flood at the opening: {heard.most_common(5)}")
    expect(cashier.program[0].getRoleName(), "dialog", "the window")
    tabs = cashier.find("page tab list", "Gestione cassetto")
    expect([(tab.getRoleName(), "selected" in states(tab)) for tab in tabs], [("page tab", True), ("page tab", False)], "tabs")
    cashier.find("panel", "Gestione cassetto", cashier.program[0][0])
    return entry


def withdrawal(cashier, entry):
    bus = cashier.bus
    bus.forget()
    cashier.keys("12,5", entry)
    bus.hears("object:property-change:accessible-description", "Importo digitato")
    heard = bus.forget()
    expect(
        [count for (kind, name, _), count in heard.items() if name == entry.name and "accessible-description" in kind],
        [3],
        "a word for each change of the amount",
    )
    expect(entry.description.split(" ")[0], "12,50", "the entry read back")
    entry.queryEditableText().setTextContents("12,5,")
    bus.until(lambda: entry.description.startswith("Non è un numero"), "no number")
    entry.queryEditableText().setTextContents("12,5")
    for name in ("Contanti", "Bancomat", "Contanti"):
        cashier.mark(name)
    bus.hears("object:state-changed:checked", "Bancomat", 0)
    cashier.mark("€", "Valuta")
    strike("F4")
    bus.hears("object:state-changed:checked", "Prelievo", 1)
    for drawer in ("3", "2"):
        cashier.mark(drawer, "Numero cassetto")
    bus.hears("object:state-changed:checked", "3", 0)
    bus.forget()
    cashier.press("push button", "Conferma")
    movement = cashier.saved(1)[0]
    for part in ("idpagamento=1 ", "importo=12.5 ", "cassetto=2 ", "tipoIncasso=3 ", "isIncasso=False"):
        if part not in movement + " ":
            raise Failure(f"{part} is not in {movement}")
    for name in ("Contanti", "€", "Prelievo", "2"):
        bus.hears("object:state-changed:checked", name, 0)
    bus.until(lambda: entry.queryText().getText(0, -1) == "", "an empty amount")


def message(cashier, entry):
    """A refusal is a window of its own, and while it waits nothing else can be pressed."""
    cards = cashier.find("radio button", "Carta di credito")
    expect(can_press(cards), True, "a payment can be pressed")
    cashier.press("push button", "Conferma")
    box = cashier.in_front(
        lambda: next((window for window in cashier.program if window != cashier.program[0] and window.childCount), None),
        "the message",
    )
    expect(box.getRoleName(), "dialog", "the message")
    expect(can_press(cards), False, "a payment can be pressed below a message")
    try:
        pressed = press(cards)
    except GLib.Error:
        pressed = False
    expect(pressed, False, "pressing below a message")
    cashier.press("push button", "OK", box)
    cashier.in_front(lambda: cashier.program.childCount == 1 and cashier.program[0], "the dialog")


def coin_count(cashier, entry):
    cashier.press("push button", "Conta Monete")
    window = cashier.in_front(
        lambda: next((window for window in cashier.program if window.name == "Carica moneta"), None), "the coin count"
    )
    field = cashier.find("text", "50 €", window)
    expect(field.queryComponent().grabFocus(), True, "focus on a coin")
    cashier.bus.until(lambda: "focused" in states(field), "the focus on a coin")
    cashier.press("push button", "3", window)
    cashier.press("push button", "Carica i pezzi € 50,00", window)
    cashier.bus.until(lambda: field.queryText().getText(0, -1) == "3", "three notes counted")
    cashier.press("push button", "Carica monete", window)
    cashier.bus.until(lambda: entry.queryText().getText(0, -1) == "150", "the count in the amount box")
    cashier.in_front(lambda: cashier.program[0], "the dialog")


def movements(cashier):
    bus = cashier.bus
    bus.forget()
    cashier.press("page tab", "Movimenti")
    bus.hears("object:state-changed:selected", "Movimenti", 1)
    bus.hears("object:state-changed:selected", "Gestione cassetto", 0)
    page = cashier.find("panel", "Movimenti", cashier.program[0][0])

    bus.until(lambda: focused(page), "the focus on the page")
    cashier.press("push button", "Data movimenti, Calendario", page)
    calendar = cashier.find("dialog", "Calendario")
    bus.until(lambda: focused(calendar), "the focus on a day")
    cashier.press("push button", "Annulla", calendar)
    bus.until(lambda: "showing" not in states(calendar), "the calendar goes")
    table = cashier.find("table", "Movimenti", page)
    rows = lambda: table.queryTable().nRows
    bus.forget()
    cashier.press("push button", "Carica", page)
    bus.until(rows, "rows")
    bus.hears("object:property-change:accessible-description", "Movimenti")
    heard = bus.forget()
    print("list:", sum(heard.values()), "events for", rows(), "rows")
    if sum(heard.values()) > 30:
        raise Failure(f"a flood at the list: {heard.most_common(5)}")
    expect(table.description.split(" ")[0], str(rows()), "rows said")

    # A cell goes where its record goes.
    def cell(row, column=0):
        return table.queryTable().getAccessibleAt(row, column)

    first, name, amount = cell(0), cell(0).name, cell(0, 4).name
    header = cashier.find("table column header", "importo", table)
    for word in ("crescente", "decrescente"):
        bus.forget()
        press(header)
        bus.hears("object:property-change:accessible-description", "importo")
        bus.hears("object:property-change:accessible-description", "Movimenti")
        expect(header.description, word, "the order, at the header")
        expect(word in table.description, True, f"{word} in {table.description!r}")
        expect(first.name, name, "a cell held over a sort")
        place = next(row for row in range(rows()) if cell(row) == first)
        expect(cell(place, 4).name, amount, "the amount in its row")
    expect(place > 0, True, "the first record elsewhere")

    bus.forget()
    chosen, other = cell(2), cell(1)
    for now, before in ((chosen, None), (other, chosen)):
        press(now)
        bus.hears("object:state-changed:selected", now.name, 1)
        expect("selected" in states(now), True, "a row selected")
        if before:
            bus.hears("object:state-changed:selected", before.name, 0)

    # By groups. A cell in one that is collapsed is nowhere, and comes back.
    kinds = cashier.find("table column header", "Tipo Operazione", table)
    all_rows = rows()
    expect(press(kinds, 1), True, "grouping")
    bus.until(lambda: rows() > all_rows, "groups")
    groups = [cell(row) for row in range(rows()) if "expandable" in states(cell(row))]
    group = next(group for group in groups if group.name.startswith("Tipo Operazione: Fondo cassa iniziale"))
    for word, state in (("chiuso", "collapsed"), ("aperto", "expanded")):
        bus.forget()
        press(group)
        bus.hears("object:property-change:accessible-description", group.name)
        expect(group.description, word, "the group")
        expect(state in states(group), True, state)
        first.clear_cache()
        try:
            seen = first.name
        except GLib.Error:
            seen = ""
        expect(seen, name if word == "aperto" else "", "a cell held in a group")
    expect(press(kinds, 1), True, "grouping no longer")
    bus.until(lambda: rows() == all_rows, "no groups")
    moving(bus, table)
    menu_of_list(cashier, page, table)
    said_of_list(cashier, page, table)


def moving(bus, table):
    """Each cell that the arrows reach is told of: a screen reader reads what has the focus."""
    cells = table.queryTable().getAccessibleAt
    start = cells(1, 0)
    expect(start.queryComponent().grabFocus(), True, "focus on a cell")
    bus.hears("object:state-changed:focused", start.name, 1)
    header = table.getChildAtIndex(1)
    ways = [("Down", cells(2, 0)), ("Right", cells(2, 1)), ("Up", cells(1, 1)), ("Home", cells(0, 1)), ("Up", header)]
    before = start
    for key, reached in ways:
        bus.forget()
        strike(key)
        bus.hears("object:state-changed:focused", reached.name, 1)
        expect("focused" in states(reached), True, f"the focus after {key}")
        expect("focused" in states(before), False, f"the focus before {key}")
        heard = [count for (kind, _, detail), count in bus.forget().items() if "focused" in kind and detail]
        expect(heard, [1], f"words for {key}")
        before = reached


def menu_of_list(cashier, page, table):
    bus = cashier.bus
    header = table.getChildAtIndex(1)  # where the keys were last

    def choose(*name):
        cashier.press("push button", "Menu dell'elenco", page)
        menu = cashier.find("dialog", "Menu dell'elenco")
        bus.until(lambda: focused(menu), "the focus on a choice")
        if name:
            cashier.press("push button", *name, menu)
            bus.until(lambda: "showing" not in states(menu), "the menu goes")
            bus.until(lambda: "focused" in states(header), "the focus where it was")
        return menu

    last = table.queryTable().getAccessibleAt(table.queryTable().nRows - 1, 0)
    choose("Seleziona tutto")
    bus.until(lambda: "selected" in states(last), "all rows selected")
    rows = table.queryTable().nRows
    choose("Raggruppa per: Tipo Operazione")
    bus.until(lambda: table.queryTable().nRows > rows, "groups")
    expect("sensitive" in states(cashier.find("push button", "Raggruppa per: Tipo Operazione", choose())), False, "again")
    cashier.press("push button", "Togli i gruppi", cashier.find("dialog", "Menu dell'elenco"))
    bus.until(lambda: table.queryTable().nRows == rows, "no groups")


def said_of_list(cashier, page, table):
    bus = cashier.bus
    rows = table.queryTable().nRows
    amounts = [table.queryTable().getAccessibleAt(row, 4).name for row in range(rows)]
    expect({len(amount.partition(",")[2]) for amount in amounts}, {2}, "decimals of the amounts as they are drawn")
    search = cashier.find("text", "Cerca nell'elenco", page)
    for text, words in (("bancomat", f" di {rows} righe"), ("", f"{rows} righe")):
        bus.forget()
        search.queryEditableText().setTextContents(text)
        bus.hears("object:property-change:accessible-description", "Movimenti")
        expect(words in table.description, True, f"{words} in {table.description!r}")
    for way, stale in (("Giorno precedente", True), ("Giorno successivo", False)):
        bus.forget()
        cashier.press("push button", way, page)
        bus.hears("object:property-change:accessible-description", "Movimenti")
        expect("di un'altra data" in table.description, stale, f"{way}: {table.description!r}")


def pair(cashier):
    """The next cashier reads German, and pays elsewhere what is taken out here."""
    cashier.press("page tab", "Gestione cassetto")
    cashier.press("push button", "Chiudi")
    entry = cashier.find("text", "Betragsart")
    cashier.mark("Contanti", "Levy")
    cashier.mark("Bancomat", "Zahlung")
    cashier.mark("CHF", "Währung")
    cashier.keys("40", entry, "Ziffernblock")
    cashier.bus.until(lambda: entry.description == "40,00 CHF", "the entry read back")
    cashier.press("push button", "Bestätigung")
    out, into = cashier.saved(3)[1:]
    expect(["idpagamento=1 importo=40 " in out, "idpagamento=3 importo=40 " in into], [True, True], f"{out}, {into}")
    cashier.bus.hears("object:state-changed:checked", "Bancomat", 0)
    cashier.press("push button", "Schließen")
    expect(cashier.host.wait(PATIENCE), 0, "the host's end")


def main(tree, folder):
    cashier = Cashier(tree, folder)
    try:
        entry = opens_quietly(cashier)
        withdrawal(cashier, entry)
        message(cashier, entry)
        coin_count(cashier, entry)
        movements(cashier)
        pair(cashier)
        print("well done")
    except Failure:
        for window in cashier.program:  # it may be a message that is in the way
            print(window.name, [part.name for part in within(window) if part.getRoleName() == "label"])
        raise
    finally:
        cashier.host.kill()
        cashier.host.wait()


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    main(*sys.argv[1:])
