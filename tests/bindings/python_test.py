"""What a host in Python relies on; each part in a process of its own: python_test.py PART."""

from __future__ import annotations

import asyncio
import gc
import logging
import os
import signal
import sys
import tempfile
import threading
import tracemalloc
import warnings
import weakref
from typing import Callable, List, Type

import kova_drawer_man as kova

records: List[logging.LogRecord] = []


class Recorder(logging.Handler):
    def emit(self, record: logging.LogRecord) -> None:
        records.append(record)


def expect(fact: bool, words: str) -> None:
    if not fact:
        sys.exit(f"not so: {words}")


def raised(kind: Type[BaseException], call: Callable[[], object]) -> BaseException:
    try:
        call()
    except kind as error:
        return error
    sys.exit(f"not raised: {kind.__name__}")


def leave(*calls: Callable[[], object]) -> None:
    for call in calls:
        call()


def movement() -> kova.Movement:
    return kova.Movement(1, 12.5, "€", "nota", 2, 9, False)


def write_all(m: kova.Movement) -> None:
    m.idpagamento, m.importo, m.cassetto, m.tipoIncasso = m.idpagamento + 1, m.importo + 1, m.cassetto + 1, 30
    m.Valuta, m.note, m.isIncasso = "CHF", m.note + "ü", not m.isIncasso


def members() -> None:
    with kova.DrawerMan() as drawer:
        expect(drawer.idCassa == -1 and drawer.ValutaAziendale == "€", "the first values")
        for name in "ChiusuraAutomatica", "InserimentoAutomatico", "DoppioInserimentoObbligatorio", "UsaSoloValutaAziendale":
            setattr(drawer, name, True)
            expect(getattr(drawer, name) is True, name)
        drawer.idCassa, drawer.ValutaAziendale = -(1 << 31), "Fr. ü€"
        expect((drawer.idCassa, drawer.ValutaAziendale) == (-(1 << 31), "Fr. ü€"), "what was written")
        drawer.ActiveColorMetroStyle = True
        raised(AttributeError, lambda: drawer.ActiveColorMetroStyle)
        raised(OverflowError, lambda: setattr(drawer, "idCassa", 1 << 31))
        raised(TypeError, lambda: setattr(drawer, "idCassa", "3"))
        raised(ValueError, lambda: setattr(drawer, "ValutaAziendale", "a\0b"))
        error = raised(kova.KovaError, lambda: kova.parse_date("31/02/2026"))
        expect(isinstance(error, kova.KovaError) and error.number == 13, "the number of an error")
        expect(kova.format_date(kova.parse_date("2026-11-16")) == "16/11/2026", "dates")
        expect(kova.format_amount(-1234.565) == "-1.234,57", "amounts")
        error = raised(kova.DatabaseError, lambda: kova.Database("DSN=none"))
        expect(getattr(error, "sql_state") == "IM002", "the state of a database's error")
        errors: List[BaseException] = []
        thread = threading.Thread(target=lambda: errors.append(raised(kova.KovaError, drawer.Show)))
        thread.start()
        thread.join()
        expect(getattr(errors[0], "status", 0) == 5, "another thread is refused")
    raised(kova.KovaError, lambda: drawer.idCassa)
    drawer.close()


def events() -> None:
    seen: List[kova.Movement] = []

    class Host(kova.Events):
        error: Exception = kova.Refusal("Chiuso", 700)

        def SalvaPagamento(self, m: kova.Movement) -> None:
            seen.append(kova.Movement(**vars(m)))
            write_all(m)
            raise self.error

    drawer, host = kova.DrawerMan(), Host()
    drawer.SalvaPagamento(movement())
    drawer.on_SalvaPagamento = write_all
    sink = drawer.connect(host)
    m = movement()
    error = raised(kova.KovaError, lambda: drawer.SalvaPagamento(m))
    expect(isinstance(error, kova.KovaError) and (str(error), error.number) == ("Chiuso", 700), "words and number")
    expect(error.__cause__ is host.error and not records, "the refusal itself")
    expect(seen == [kova.Movement(2, 13.5, "CHF", "notaü", 3, 30, True)], "what the one before wrote")
    expect(m == kova.Movement(3, 14.5, "CHF", "notaüü", 4, 30, False), "what was written before the refusal")

    host.error = ValueError("a fault")
    error = raised(kova.KovaError, lambda: drawer.SalvaPagamento(m))
    expect(isinstance(error, kova.KovaError) and error.number == 513, "a number for what has none")
    expect(len(records) == 1 and records[0].exc_info is not None, "the traceback of a fault")
    for name, value in ("cassetto", 1 << 15), ("Valuta", 3), ("importo", "x"):
        drawer.on_SalvaPagamento = lambda m: setattr(m, name, value)
        raised(kova.KovaError, lambda: drawer.SalvaPagamento(movement()))
    expect(len(records) == 4 and len(seen) == 2, "what cannot be written back is a failure")

    # What ends a host goes through; signals wait for the call's end.
    drawer.on_SalvaPagamento = lambda m: sys.exit(3)
    expect(getattr(raised(SystemExit, lambda: drawer.SalvaPagamento(movement())), "code") == 3, "an end")
    done: List[int] = []
    drawer.on_SalvaPagamento = lambda m: leave(lambda: signal.raise_signal(signal.SIGINT), lambda: done.append(1))
    drawer.on_Stampa = lambda text: setattr(text, "value", text.value + "!")
    sink.disconnect()
    raised(KeyboardInterrupt, lambda: drawer.SalvaPagamento(movement()))
    expect(done == [1], "the handler was not broken off")
    text = kova.Text("oggi")
    drawer.Stampa(text)
    drawer.Anteprima(text)
    expect(text.value == "oggi!", "a text comes back")

    # Nothing is kept beyond its time, also when it goes inside its own event.
    last = kova.Events()
    gone = weakref.ref(last)
    second = drawer.connect(last)
    del last
    gc.collect()
    expect(gone() is not None, "a connected handler is held")
    drawer.on_SalvaPagamento = None
    drawer.on_ApriCassetto = lambda: leave(second.disconnect, drawer.close)
    drawer.ApriCassetto()
    gc.collect()
    expect(gone() is None, "a handler that was disconnected is gone")
    with warnings.catch_warnings(record=True) as caught:
        warnings.simplefilter("always")
        left = weakref.ref(kova.DrawerMan())
        gc.collect()
        expect(left() is None and caught[0].category is ResourceWarning, "one that nobody holds is closed")


def many() -> None:
    def resident() -> int:
        with open("/proc/self/statm") as file:
            return int(file.read().split()[1]) * os.sysconf("SC_PAGE_SIZE")

    heard = 0

    class Host(kova.Events):
        def SalvaPagamento(self, m: kova.Movement) -> None:
            nonlocal heard
            heard += 1
            m.importo, m.note = m.importo + 1, f"{m.note[:4]}{heard}"
            if heard % 10 == 0:
                raise kova.Refusal("ogni decimo")

    with kova.DrawerMan() as drawer:
        drawer.connect(Host())

        def save(count: int) -> int:
            refused, m = 0, movement()
            for i in range(count):
                m.importo, m.note = float(i), "nota"
                try:
                    drawer.SalvaPagamento(m)
                except kova.KovaError:
                    refused += 1
                expect((m.importo, m.note) == (i + 1, f"nota{heard}"), "what was written back")
            return refused

        save(2000)
        tracemalloc.start()
        traced, before = tracemalloc.get_traced_memory()[0], resident()
        refused = save(10000)
        gc.collect()
        traced, grown = tracemalloc.get_traced_memory()[0] - traced, resident() - before
    print(f"{heard} events, {refused} refused, {traced} bytes traced, {grown} bytes resident")
    expect(heard == 12000 and refused == 1000, "every event")
    expect(traced < 1 << 18 and grown < 1 << 21, "memory is level")


def loop() -> None:
    async def shift() -> None:
        closed = asyncio.Event()
        drawer.on_closed = closed.set
        asyncio.get_running_loop().add_reader(kova.event_descriptor(), kova.process_events)
        drawer.Show(0)
        expect(drawer.is_open, "a modeless dialog")
        asyncio.get_running_loop().call_later(0.1, drawer.DiscardForm)
        await asyncio.wait_for(closed.wait(), 10)
        asyncio.get_running_loop().remove_reader(kova.event_descriptor())

    with kova.DrawerMan() as drawer:
        asyncio.run(shift())
        expect(not drawer.is_open, "closed from the host's loop")


def ending() -> None:
    """The cashier, whose plugin lies in the folder of the second argument, prints; the handler ends the host."""
    with tempfile.TemporaryDirectory() as folder:
        os.environ["QT_PLUGIN_PATH"] = sys.argv[2]
        os.environ["QT_QPA_GENERIC_PLUGINS"] = f"kova-cashier:{folder}/print.scenario"
        with open(f"{folder}/print.scenario", "w") as scenario:
            scenario.write("tab 1\npress cmd_print\n")
        with kova.DrawerMan() as drawer:
            drawer.on_Stampa = lambda day: sys.exit(7)
            expect(getattr(raised(SystemExit, drawer.Show), "code") == 7, "an end inside a modal dialog")
            expect(not drawer.is_open and not records, "the dialog has closed")


def region() -> None:
    """Of Italy, as LC_ALL names none; another one as soon as the user sets it and no dialog is open."""
    day = kova.parse_date("16/11/2026")
    expect((day.month, kova.format_date(day), kova.format_amount(-1234.565)) == (11, "16/11/2026", "-1.234,57"), "Italy")
    raised(kova.KovaError, lambda: kova.parse_date("31/02/2026"))
    with kova.DrawerMan() as drawer:
        drawer.Show(0)
        os.environ["LC_ALL"] = "en_US"
        expect(kova.format_amount(0.5, 1) == "0,5", "what stands in a dialog is read in the region that it was written in")
        drawer.DiscardForm()
        expect(kova.format_amount(0.5, 1) == "0.5", "the next conversion follows the user")
        drawer.Show(0)
        os.environ["LC_ALL"] = "C.UTF-8"
        expect(kova.format_amount(0.5, 1) == "0.5", "so does the next dialog")


def log_folder() -> None:
    """Of the host's own, named before and after the first component."""

    def refuse(drawer: kova.DrawerMan) -> None:
        thread = threading.Thread(target=lambda: raised(kova.KovaError, drawer.ApriCassetto))
        thread.start()
        thread.join()

    os.environ.pop("KOVA_LOG")
    drawer = None
    with tempfile.TemporaryDirectory() as first, tempfile.TemporaryDirectory() as second:
        for folder in first, second:
            kova.set_log_folder(folder)
            drawer = drawer or kova.DrawerMan()
            refuse(drawer)
            drawer.Show(0)
            refuse(drawer)
            with open(f"{folder}/logfile.log", encoding="utf-8") as file:
                expect(sum("ApriCassetto" in line for line in file) == 2, "the folder has its records")
            drawer.DiscardForm()
    kova.shut_down()


def display() -> None:
    """Where there is none, and once there is."""
    os.environ.pop("WAYLAND_DISPLAY", None)
    for name in "", ":4711":
        os.environ.update(QT_QPA_PLATFORM="", DISPLAY=name)
        raised(kova.KovaError, kova.DrawerMan)
    os.environ["QT_QPA_PLATFORM"] = "offscreen"
    with kova.DrawerMan() as drawer:
        drawer.Show(0)


if __name__ == "__main__":
    logging.getLogger("kova_drawer_man").addHandler(Recorder())
    logging.getLogger("kova_drawer_man").propagate = False
    globals()[sys.argv[1]]()
