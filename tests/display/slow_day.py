"""A till's day on a real display, with a server that stalls and a host that is slow, touched by a hurried cashier.

    slow_day.py TREE FOLDER SEED MOVEMENTS

The same movements are entered twice: on a healthy server, and on one that stalls now and then while the cashier goes on
touching at random. Touches made while nothing could answer must come to nothing, so that both days end with the same
movements. Needs what display.sh sets up.
"""

from __future__ import annotations

import os
import random
import subprocess
import sys
import time
from typing import Iterator

TILL = """
import sys, time
import kova_drawer_man as kova
class Till(kova.Events):
    def SalvaPagamento(self, movement):
        print(f"{movement.importo:g} {movement.Valuta} {movement.idpagamento} {movement.tipoIncasso}", flush=True)
        time.sleep(float(sys.argv[2]))
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


class Display:
    """The pointer, held by one process so that touches follow each other as fast as fingers."""

    def __init__(self) -> None:
        self.process = subprocess.Popen(["xdotool", "-"], stdin=subprocess.PIPE, text=True)
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
                time.sleep(0.5)
                return
            time.sleep(0.05)
        raise SystemExit("no window: " + title)

    def touch(self, place: tuple[int, int]) -> None:
        left, top, width, height = self.window
        x = left + place[0] * width // WIDTH
        y = top + (place[1] + PAGE) * height // HEIGHT
        self.process.stdin.write(f"mousemove {x} {y} click 1\n")
        self.process.stdin.flush()


class Server:
    def __init__(self, program: str) -> None:
        self.process = subprocess.Popen([program, "--port", "0", "--database", "sample"], stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE, text=True)
        self.connection = self.process.stdout.readline().strip()

    def ask(self, line: str) -> None:
        self.process.stdin.write(line + "\n")
        self.process.stdin.flush()
        self.process.stdout.readline()


def movements(seed: int, count: int) -> Iterator[str]:
    choice = random.Random(seed)
    for _ in range(count):
        yield choice.choice("123") + "".join(choice.choices("0123", k=choice.randint(0, 3)))


def play(server: Server, display: Display, seed: int, count: int, stalling: bool, slow: float) -> tuple[list[str], int]:
    """The movements that the host got, and how many touches were made while nothing could answer."""
    till = subprocess.Popen([sys.executable, "-c", TILL, server.connection, str(slow)], stdout=subprocess.PIPE, text=True)
    chance = random.Random(seed + 1)
    idle = 0
    try:
        display.find("Gestione cassetto")

        def hurry(seconds: float) -> None:
            nonlocal idle
            end = time.monotonic() + seconds - 0.25
            time.sleep(0.15)
            while time.monotonic() < end:
                display.touch(chance.choice([CLOSE, CONFIRM, DEPOSIT, CASH, EURO, *DIGITS.values()]))
                idle += 1
                time.sleep(chance.uniform(0.03, 0.25))
            time.sleep(max(0.0, end + 0.6 - time.monotonic()))

        def touch(place: tuple[int, int]) -> None:
            stalls = stalling and place in STALLS and chance.random() < 0.5
            wait = chance.choice([0.7, 1.2, 2.5]) if stalls else 0.0
            if stalls:
                server.ask(f'delay "{chance.choice(STALLS[place])}" {int(wait * 1000)}')
            display.touch(place)
            if stalls:
                time.sleep(0.1)
                server.ask("recover")  # for the queries after the one that waits
            if place == CONFIRM and slow:
                wait += slow
            if wait:
                hurry(wait)
            else:
                time.sleep(0.7 if place == CONFIRM else 0.22)

        for amount in movements(seed, count):
            for digit in amount:
                touch(DIGITS[digit])
            for place in (CASH, EURO, DEPOSIT, CONFIRM):
                touch(place)
        return_code = till.poll()
        if return_code is not None:
            raise SystemExit(f"the till has ended: {return_code}")
    finally:
        till.terminate()
    return till.stdout.read().split("\n")[:-1], idle


def main(tree: str, seed: int, count: int) -> None:
    server, display = Server(tree + "/build/test/kova-test-server"), Display()
    try:
        play_days(server, display, seed, count)
    finally:
        server.process.kill()
        display.process.kill()


def play_days(server: Server, display: Display, seed: int, count: int) -> None:
    healthy, _ = play(server, display, seed, count, stalling=False, slow=0)
    expected = [f"{amount} € 1 2" for amount in movements(seed, count)]
    if [line.split(" ")[0] for line in healthy] != [line.split(" ")[0] for line in expected]:
        raise SystemExit(f"the healthy day went wrong:\n{healthy}\n{expected}")
    for name, stalling, slow in (("stalling server", True, 0.0), ("slow host", False, 1.0)):
        got, idle = play(server, display, seed, count, stalling, slow)
        print(f"{name}: {len(got)} movements, {idle} touches while nothing could answer")
        if got != healthy or idle == 0:
            raise SystemExit(f"another day: {[pair for pair in zip(got, healthy) if pair[0] != pair[1]]} {len(got)} {len(healthy)}")


if __name__ == "__main__":
    main(sys.argv[1], int(sys.argv[3]), int(sys.argv[4]))
