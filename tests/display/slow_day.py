"""A till's day on a real display, with a server that stalls and a host that is slow, touched by a hurried cashier.

    slow_day.py TREE FOLDER SEED MOVEMENTS

The same movements are entered on a healthy day, with a server that stalls now and then, and with a slow host, while the
cashier goes on with fingers and keys at random. What is done while nothing could answer must come to nothing, so that all
days end with the same movements. Needs what display.sh sets up.
"""

from __future__ import annotations

import random
import queue
import select
import subprocess
import sys
import threading
import time
from typing import Iterator

import pyatspi
from bus_test import Bus, states

TILL = """
import sys
import kova_drawer_man as kova
class Till(kova.Events):
    def SalvaPagamento(self, movement):
        print(f"{movement.importo:g} {movement.Valuta} {movement.idpagamento} {movement.tipoIncasso}", flush=True)
        sys.stdin.readline()  # until it is to go on
with kova.DrawerMan() as drawer:
    drawer.connect(Till())
    drawer.InizializzaByConnString(sys.argv[1])
    drawer.Show()
"""
WIDTH, HEIGHT, PAGE = 15195, 8955, 615  # of the dialog, and where its page begins
EURO, CASH, DEPOSIT, CONFIRM, CLOSE = (600, 6100), (3950, 760), (7375, 1100), (12360, 7850), (14100, 7850)
ZERO, ONE, TWO, THREE = (650, 5080), (650, 4140), (1750, 4140), (2800, 4140)
DIGITS = {"0": ZERO, "1": ONE, "2": TWO, "3": THREE}
#: After which touch a query is sent that may stall, and a piece of it.
STALLS = {DEPOSIT: ["IsAutomaticNote"], CONFIRM: ["FROM tabPagamenti", "where visible", "tabValute"]}


KEYS = ["1", "5", "comma", "BackSpace", "Return", "Escape", "F2", "F4", "Tab"]
PATIENCE = 20  # seconds


class Display:
    """The cashier's hands."""

    def __init__(self) -> None:
        self.window = (0, 0, 1, 1)

    def find(self, title: str) -> None:
        for _ in range(200):
            found = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", title],
                                   capture_output=True, text=True).stdout.split()
            if found:
                shell = subprocess.run(["xdotool", "getwindowgeometry", "--shell", found[-1]],
                                       capture_output=True, text=True).stdout
                values = dict(line.split("=") for line in shell.split())
                if "X" not in values:
                    continue  # it is being made
                self.window = tuple(int(values[name]) for name in ("X", "Y", "WIDTH", "HEIGHT"))
                time.sleep(1)
                return
            time.sleep(0.05)
        raise SystemExit("no window: " + title)

    def does(self, *what: str | tuple[int, int]) -> None:
        """Strikes keys and touches places, and returns when the display has it all."""
        left, top, width, height = self.window
        words = []
        for one in what:
            if isinstance(one, str):
                words += ["key", one]
            else:
                words += ["mousemove", left + one[0] * width // WIDTH, top + (one[1] + PAGE) * height // HEIGHT, "click", 1]
        subprocess.run(["xdotool", *map(str, words)], check=True)


class Server:
    def __init__(self, program: str) -> None:
        self.process = subprocess.Popen([program, "--port", "0", "--database", "sample"], stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE, text=True)
        self.connection = self.process.stdout.readline().strip()

    def ask(self, line: str) -> None:
        self.process.stdin.write(line + "\n")
        self.process.stdin.flush()
        if not select.select([self.process.stdout], [], [], PATIENCE)[0]:
            raise SystemExit("the server did not: " + line)
        self.process.stdout.readline()


class Till:
    """A host that tells of each event, and waits for an answer in it."""

    def __init__(self, bus: Bus, program: str, connection: str) -> None:
        self.bus = bus
        self.process = subprocess.Popen([sys.executable, "-c", program, connection], stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE, text=True)
        self.told: queue.Queue[str] = queue.Queue()
        threading.Thread(target=lambda: [self.told.put(line.strip()) for line in self.process.stdout], daemon=True).start()
        self.program = bus.until(self.find_program, "the dialog")

    def find_program(self):
        if self.process.poll() is not None:
            raise SystemExit(f"the till has ended: {self.process.returncode}")
        for program in pyatspi.Registry.getDesktop(0):
            if program is not None and program.get_process_id() == self.process.pid and program.childCount:
                return program
        return None

    def answer(self, words: str = "") -> None:
        self.process.stdin.write(words + "\n")
        self.process.stdin.flush()

    def listens(self) -> None:
        """Returns when it answers again."""
        self.bus.forget()
        self.bus.until(lambda: states(self.program[0]), "an answer of the dialog")


def movements(seed: int, count: int) -> Iterator[str]:
    choice = random.Random(seed)
    for _ in range(count):
        yield choice.choice("123") + "".join(choice.choices("0123", k=choice.randint(0, 3)))


def play(server: Server, display: Display, bus: Bus, seed: int, count: int, stalling: bool, slow: bool) -> tuple[list[str], int]:
    """The movements that the host got, and how many touches and keys were made while nothing could answer."""
    till = Till(bus, TILL, server.connection)
    chance = random.Random(seed + 1)
    got: list[str] = []
    idle = 0
    try:
        display.find("Gestione cassetto")

        def hurry() -> None:
            nonlocal idle
            end = time.monotonic() + chance.choice([0.7, 1.2, 2.5])
            while time.monotonic() < end:
                display.does(chance.choice([CLOSE, CONFIRM, DEPOSIT, CASH, EURO, *DIGITS.values(), *KEYS]))
                idle += 1
                time.sleep(chance.uniform(0.01, 0.2))

        def touch(*what: str | tuple[int, int]) -> None:
            place = what[-1]
            stalls = stalling and place in STALLS and chance.random() < 0.5
            if stalls:
                server.ask(f'hold "{chance.choice(STALLS[place])}"')
            display.does(*what)
            if place == CONFIRM:
                got.append(till.told.get(timeout=PATIENCE))
                if slow:
                    hurry()
                till.answer()
            if stalls:
                server.ask("held")
                hurry()
                server.ask("recover")
            if place in STALLS:
                time.sleep(0.3)
                till.listens()
            time.sleep(0.22)

        for amount in movements(seed, count):
            for digit in amount[:-1]:
                touch(DIGITS[digit])
            for place in (CASH, EURO):
                touch(place)
            touch(amount[-1], DEPOSIT)  # what is typed before the wait, however shortly, is never lost
            touch(CONFIRM)
        till.find_program()
        while not till.told.empty():
            got.append(till.told.get())
    except queue.Empty:
        print("no movement came")
    finally:
        till.process.kill()
    return got, idle


def main(tree: str, seed: int, count: int) -> None:
    server = Server(tree + "/build/test/kova-test-server")
    try:
        play_days(server, Display(), Bus(), seed, count)
    finally:
        server.process.kill()


def play_days(server: Server, display: Display, bus: Bus, seed: int, count: int) -> None:
    expected = [f"{float(amount):g} € 1 2" for amount in movements(seed, count)]
    for name, stalling, slow in (("healthy", False, False), ("stalling server", True, False), ("slow host", False, True),
                                 ("both", True, True)):
        got, idle = play(server, display, bus, seed, count, stalling, slow)
        print(f"{name}: {len(got)} movements, {idle} touches and keys while nothing could answer")
        if got != expected or (idle == 0) == (stalling or slow):
            raise SystemExit(f"another day: {got}, not {expected}")


if __name__ == "__main__":
    main(sys.argv[1], int(sys.argv[3]), int(sys.argv[4]))
