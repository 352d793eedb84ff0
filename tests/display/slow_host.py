"""A cashier who touches everything while the host is busy, on a real display: nothing of it acts, then or later.

    slow_host.py TREE FOLDER [SECONDS TOUCHES]

Every handler of the host is slow in turn, and the cashier goes on with fingers and keys. Afterwards the screen is, to
the pixel and to the accessible state of each control, the one of a cashier who waited, and the host has got the same.
Without SECONDS a handler takes one and a half or longer, in which all controls but some of the keyboard's are touched
once; with them each control gets a wait of its own, and TOUCHES. Needs what display.sh sets up.
"""

from __future__ import annotations

import functools
import hashlib
import subprocess
import sys
import time

import pyatspi
from bus_test import PATIENCE, Bus, expect, make_shop, press, states, within
from slow_day import Till

TILL = """
import sys
import kova_drawer_man as kova
def happens(*what):
    print(*what, flush=True)
    if sys.stdin.readline() == "refuse\\n":
        raise kova.Refusal("no")
class Till(kova.Events):
    def SalvaPagamento(self, movement):
        happens("SalvaPagamento", *vars(movement).values())
    def ApriCassetto(self):
        happens("ApriCassetto")
    def Stampa(self, day):
        happens("Stampa")
    def Anteprima(self, day):
        happens("Anteprima")
kova.set_language(1040)
kova.set_screen_aids(confirmation=False)  # which goes by itself
with kova.DrawerMan() as drawer:
    drawer.connect(Till())
    drawer.InizializzaByConnString(sys.argv[1])
    drawer.idCassa = 1
    drawer.AttivaRecuperaFondoCassaPrecedente = True
    drawer.Show()
"""
TOUCHABLE = ("push button", "radio button", "check box", "text", "page tab", "table cell", "table column header")
LIST_CELLS = 16  # of two rows: the others are alike
#: Of the window manager's frame, where it asks the window to close.
CLOSE = (1270, 9)
#: What a finger does at a place, in xdotool's words: it comes down and goes up, slips, hurries, and wheels turn.
FINGERS = (
    ["click", "1"],
    ["mousedown", "1", "mousemove_relative", "--", "-40", "3", "mouseup", "1"],
    ["click", "--repeat", "2", "--delay", "15", "1"],
    ["click", "5"],
)
KEYS = ["space", "Return", "7", "comma", "BackSpace", "Tab", "Down", "F3", "F1", "a", "ctrl+a", "ctrl+v", "Escape"]


def hands(*words: object) -> None:
    """Returns when the display has it all."""
    subprocess.run(["xdotool", *map(str, words)], check=True)


class BusyTill(Till):
    def hears(self, event: str) -> str:
        told = self.told.get(timeout=PATIENCE)
        expect(told.split(" ")[0], event, "the host's event")
        return told

    def parts(self):
        self.bus.forget()
        return [part for part in within(self.program) if "showing" in states(part)]

    @functools.cache
    def find(self, role: str, name: str):
        return self.bus.until(
            lambda: [part for part in self.parts() if part.getRoleName() == role and part.name == name],
            f"a {role} {name!r}")[0]

    def touch(self, role: str, name: str) -> None:
        hands("mousemove", *place_of(self.find(role, name)), "click", 1)

    def seen(self) -> tuple[list[object], str]:
        """What assistive technology reads, and a picture."""
        read = []
        for part in self.parts():
            text = part.queryText() if "Text" in pyatspi.listInterfaces(part) else None
            words = text and (text.getText(0, -1), text.caretOffset, text.getNSelections() and text.getSelection(0))
            read.append((part.getRoleName(), part.name, part.description, words, *sorted(states(part))))
        picture = subprocess.run(["import", "-silent", "-window", "root", "rgb:-"], capture_output=True, check=True).stdout
        return read, hashlib.sha256(picture).hexdigest()

    def comes_to(self, expected: tuple[list[object], str], what: str) -> None:
        """The caret blinks, so that there are two pictures of the same screen."""
        end = time.monotonic() + PATIENCE
        while (now := self.seen()) != expected:
            if time.monotonic() > end:
                subprocess.run(["import", "-silent", "-window", "root", f"{folder}/other.png"], check=True)
                raise SystemExit(f"{what}: the screen is another, {folder}/other.png:\n"
                                 f"{[pair for pair in zip(now[0], expected[0]) if pair[0] != pair[1]]}")

    def settled(self) -> tuple[list[object], str]:
        """Two looks that agree."""
        before = self.seen()
        while (now := self.seen()) != before:
            before = now
        return now


def place_of(part) -> tuple[int, int]:
    box = part.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
    return box.x + box.width // 2, box.y + box.height // 2


def entered(till: BusyTill) -> None:
    """All of a movement."""
    for name in ("Contanti", "€", "2", "Spese varie"):
        till.touch("radio button", name)
        till.bus.until(lambda: "checked" in states(till.find("radio button", name)), f"{name} chosen")
    till.find("text", "Note").queryEditableText().setTextContents("spesa")
    amount = till.find("text", "Importo digitato")
    amount.queryComponent().grabFocus()
    hands("key", "1", "2", "comma", "5")
    till.bus.until(lambda: amount.queryText().getText(0, -1) == "12,5", "the amount")


#: Title, page, button, which events come, which of them is slow, and what that answers.
EVENTS = (
    ("a movement", "Gestione cassetto", "Conferma", ["SalvaPagamento", "ApriCassetto"], 0, ""),
    ("a movement that is refused", "Gestione cassetto", "Conferma", ["SalvaPagamento"], 0, "refuse"),
    ("the drawer", "Gestione cassetto", "Conferma", ["SalvaPagamento", "ApriCassetto"], 1, ""),
    ("printing", "Movimenti", "Stampa", ["Stampa"], 0, ""),
    ("the preview", "Movimenti", "Anteprima di stampa", ["Anteprima"], 0, ""),
)


def round_of(till: BusyTill, event, seconds: float, gestures: list[list[object]], focus=None):
    """What the host got. The gestures come while its handler runs, spread over it."""
    _, page, button, expected, slow, words = event
    if page == "Gestione cassetto":
        entered(till)
    if focus is not None:
        focus.queryComponent().grabFocus()
    till.touch("push button", button)
    told = []
    for number, name in enumerate(expected):
        told.append(till.hears(name))
        expect(" 12.5 " in told[-1], name == "SalvaPagamento", told[-1])
        if number == slow:
            begun = time.monotonic()
            pause = (seconds - 0.4) / max(1, len(gestures))
            hands("sleep", "0.1", *(word for gesture in gestures for word in (*gesture, "sleep", pause)),
                  "mousemove", 640, 5)
            time.sleep(max(0.0, begun + seconds - time.monotonic()))
        till.answer(words if number == slow else "")
    return told


def restore(till: BusyTill, event) -> None:
    """After a refusal the entry is still there: it goes with the next confirmation."""
    if event[5]:
        till.touch("push button", "Conferma")
        hands("mousemove", 640, 5)
        for name in ("SalvaPagamento", "ApriCassetto"):
            till.hears(name)
            till.answer()
        till.settled()


def targets(till: BusyTill) -> dict[str, tuple[int, int]]:
    """All that can be touched on the page, by its names."""
    found, cells = {}, 0
    for part in till.parts():
        cells += part.getRoleName() == "table cell"
        if part.getRoleName() in TOUCHABLE and cells <= LIST_CELLS:
            found[f"{part.getRoleName()} {part.name!r} {len(found)}"] = place_of(part)
    return found | {"the frame's close button": CLOSE, "the page": (640, 745), "the list or the note": (1258, 340)}


def play(till: BusyTill, event, seconds: float, touches: int) -> int:
    """How many touches and keys came to nothing."""
    title, page, *_ = event
    made = 0
    press(till.find("page tab", page))
    till.settled()
    places = targets(till)
    keys = [["key", key] for key in KEYS]

    def compare(name: str, gestures: list[list[object]], focus=None) -> None:
        nonlocal made
        told = round_of(till, event, seconds, gestures, focus)
        till.comes_to(quiet[1], f"{title}: {name}")
        expect(told, quiet[0], f"{title}: {name}")
        expect((till.told.empty(), till.process.poll()), (True, None), f"{title}: {name}: nothing more, and it runs")
        made += len(gestures)
        restore(till, event)

    def waits(focus=None) -> None:
        nonlocal quiet
        told = round_of(till, event, 0.5, [], focus)
        quiet = told, till.settled()
        restore(till, event)

    quiet = None
    waits()
    if not touches:
        on_screen = [name for name in places if name.startswith("push button")]
        alike = {name for number, name in enumerate(on_screen) if 15 < number < 85 and number % 7}  # of the letters
        some = [place for name, place in places.items() if name not in alike]
        compare("many controls and keys", [
            ["mousemove", *place, *FINGERS[number % len(FINGERS)]] for number, place in enumerate(some)] + keys)
        return made
    for name, place in places.items():
        compare(name, [["mousemove", *place, *FINGERS[number % len(FINGERS)]] for number in range(touches)])
    for part in till.parts():
        if "focusable" in states(part) and part.getRoleName() in TOUCHABLE[:4]:
            waits(part)
            compare(f"keys at {part.name!r}", (keys * touches)[:touches], part)
    return made


def main(tree: str, seconds: float = 1.5, touches: int = 0) -> None:
    till = BusyTill(Bus(), TILL, "Data Source=" + make_shop(tree, f"{folder}/shop.db"))
    try:
        for event in EVENTS:
            made = play(till, event, seconds, touches)
            print(f"{event[0]}: {made} touches and keys while the host was busy, none of which did anything")
    finally:
        till.process.kill()


if __name__ == "__main__":
    folder = sys.argv[2]
    main(sys.argv[1], *map(float, sys.argv[3:4]), *map(int, sys.argv[4:5]))
