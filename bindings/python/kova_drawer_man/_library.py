"""The shared library: how it is found, what its failures are, and how values pass."""

from __future__ import annotations

import contextlib
import ctypes
import logging
import operator
import os
import signal
import sys
import threading
from dataclasses import dataclass
from typing import TYPE_CHECKING, Any, Dict, Iterator, List, Optional, Tuple

if TYPE_CHECKING:
    from ._members import Movement

VERSION = 410
_DATABASE_FAILED, _OUT_OF_MEMORY = 2, 6
log = logging.getLogger("kova_drawer_man")


class KovaError(Exception):
    """The component refused. `number` is the error's, 0 where there is none; `status` the library's."""

    def __init__(self, words: str, number: int = 0, status: int = 1) -> None:
        super().__init__(words)
        self.number = number
        self.status = status


class DatabaseError(KovaError):
    """A database refused; `sql_state` has the five characters of ISO 9075."""

    sql_state = ""


class Refusal(Exception):
    """For handlers: what was asked is not done. The cashier keeps the entry and reads the words."""

    def __init__(self, words: str, number: int = 513) -> None:
        super().__init__(words)
        self.number = number


def _load() -> ctypes.CDLL:
    own = "Kova_Drawer_Man.dll" if sys.platform == "win32" else "libKova_Drawer_Man.so.4"
    name = os.environ.get("KOVA_LIBRARY") or own
    try:
        loaded = ctypes.CDLL(name)
    except OSError as error:
        raise ImportError(f"{error}; KOVA_LIBRARY may name the library's file") from error
    loaded.kova_last_error.restype = ctypes.c_char_p
    loaded.kova_last_sql_state.restype = ctypes.c_char_p
    found = loaded.kova_version()
    if found < VERSION or found // 100 != VERSION // 100:
        raise ImportError(f"{name} has version {found} of the interface, not {VERSION}")
    return loaded


library = _load()


class _Thread(threading.local):
    """What a thread does in the library: how many calls deep, and what a handler raised in the innermost."""

    calls = 0
    raised: Optional[BaseException] = None


_thread = _Thread()
_SIGNALS = [
    getattr(signal, name)
    for name in ("SIGINT", "SIGTERM", "SIGHUP", "SIGQUIT", "SIGBREAK", "SIGALRM", "SIGUSR1", "SIGUSR2", "SIGCHLD")
    if hasattr(signal, name)
]


def calling() -> bool:
    """Whether somebody is there who will get what a handler raises."""
    return _thread.calls > 0


def keep(error: BaseException) -> None:
    _thread.raised = error


@contextlib.contextmanager
def _signals_wait() -> Iterator[None]:
    """Keeps Python's handlers of signals until the call has returned. They may raise anywhere, and what is
    raised before a callback's first line gets lost: the event would pass for one that was handled."""
    if calling() or threading.current_thread() is not threading.main_thread():
        yield
        return
    waiting: List[int] = []
    handlers: Dict[int, Any] = {number: signal.getsignal(number) for number in _SIGNALS}
    handlers = {number: handler for number, handler in handlers.items() if callable(handler)}
    for number in handlers:
        signal.signal(number, lambda arrived, _: waiting.append(arrived))
    try:
        yield
    finally:
        for number, handler in handlers.items():
            signal.signal(number, handler)
    for number in waiting:
        signal.raise_signal(number)


def call(name: str, *arguments: Any) -> None:
    """Calls a function of the library, one that calls nobody back, and raises what its status says."""
    failure = _failure(getattr(library, name)(*arguments))
    if failure is not None:
        raise failure


def call_handling(name: str, *arguments: Any) -> None:
    """The same for one that may call handlers, and raises what they raised, too."""
    with _signals_wait():
        before, _thread.raised = _thread.raised, None
        _thread.calls += 1
        try:
            status: int = getattr(library, name)(*arguments)
        finally:
            _thread.calls -= 1
            raised, _thread.raised = _thread.raised, before
        failure = _failure(status)
    if raised is not None and not isinstance(raised, Exception):
        raise raised  # the host is to end
    if failure is not None:
        raise failure from raised


def _failure(status: int) -> Optional[Exception]:
    if status == 0:
        return None
    if status == _OUT_OF_MEMORY:
        return MemoryError()
    kind = DatabaseError if status == _DATABASE_FAILED else KovaError
    failure = kind(library.kova_last_error().decode(), library.kova_last_error_number(), status)
    if isinstance(failure, DatabaseError):
        failure.sql_state = library.kova_last_sql_state().decode()
    return failure


def in_range(value: int, bits: int) -> int:
    number = operator.index(value)
    if not -(1 << bits - 1) <= number < 1 << bits - 1:
        raise OverflowError(f"{number} has more than {bits} bits")
    return number


def in_text(value: str) -> ctypes.c_char_p:
    if "\0" in value:
        raise ValueError("a text ends at its first zero character")
    return ctypes.c_char_p(value.encode())


def out_text(name: str, *arguments: Any) -> str:
    result = ctypes.c_char_p()
    call(name, *arguments, ctypes.byref(result))
    return (result.value or b"").decode()


def out_int(name: str, *arguments: Any) -> int:
    result = ctypes.c_int32()
    call(name, *arguments, ctypes.byref(result))
    return result.value


@contextlib.contextmanager
def lent_text(value: str) -> Iterator[ctypes.c_void_p]:
    """A text that the library may change."""
    text = ctypes.c_void_p()
    call("kova_text_create", in_text(value), ctypes.byref(text))
    try:
        yield text
    finally:
        call("kova_text_release", text)


@dataclass
class Text:
    """A text that may be changed."""

    value: str = ""


class Database:
    """A database to hand to Inizializza: a file or connection text, as InizializzaByConnString has it."""

    def __init__(self, connection: str = "", *, odbc: Optional[int] = None) -> None:
        """Opens `connection`, or takes the host's own ODBC connection handle, which stays the host's."""
        self.handle = ctypes.c_void_p()
        if odbc is None:
            call("kova_database_open", in_text(connection), ctypes.byref(self.handle))
        else:
            call("kova_database_from_odbc", ctypes.c_void_p(odbc), ctypes.byref(self.handle))

    def close(self) -> None:
        """The component keeps what it was given. Closing again does nothing."""
        if self.handle:
            handle, self.handle = self.handle, ctypes.c_void_p()
            call("kova_database_release", handle)

    def __enter__(self) -> Database:
        return self

    def __exit__(self, *_: object) -> None:
        self.close()

    def __del__(self) -> None:
        if getattr(self, "handle", None) and not sys.is_finalizing():
            self.close()


class Component:
    """What the members are made of."""

    _handle = ctypes.c_void_p()

    def _call(self, name: str, *arguments: Any) -> None:
        call_handling(name, self._handle, *arguments)

    def _out_int(self, name: str, *arguments: Any) -> int:
        return out_int(name, self._handle, *arguments)

    def _out_bool(self, name: str, *arguments: Any) -> bool:
        return out_int(name, self._handle, *arguments) != 0

    def _out_text(self, name: str, *arguments: Any) -> str:
        result = ctypes.c_char_p()
        self._call(name, *arguments, ctypes.byref(result))
        return (result.value or b"").decode()

    def _in_int(self, value: int) -> ctypes.c_int32:
        return ctypes.c_int32(in_range(value, 32))

    def _in_bool(self, value: bool) -> ctypes.c_int32:
        return ctypes.c_int32(bool(value))

    def _in_text(self, value: str) -> ctypes.c_char_p:
        return in_text(value)

    def _in_database(self, database: Database) -> ctypes.c_void_p:
        return database.handle

    def _raise_text(self, name: str, text: Text) -> None:
        with lent_text(text.value) as lent:
            try:
                self._call(name, lent)
            finally:
                text.value = out_text("kova_text_get", lent)

    def _raise_movement(self, name: str, movement: Movement) -> None:
        payment = self._in_int(movement.idpagamento)
        amount = ctypes.c_double(movement.importo)
        drawer = ctypes.c_int16(in_range(movement.cassetto, 16))
        activity = self._in_int(movement.tipoIncasso)
        incoming = self._in_bool(movement.isIncasso)
        with lent_text(movement.Valuta) as currency, lent_text(movement.note) as note:
            values: Tuple[Any, ...] = (payment, amount, currency, note, drawer, activity, incoming)
            passed: List[Any] = [v if isinstance(v, ctypes.c_void_p) else ctypes.byref(v) for v in values]
            try:
                self._call(name, *passed)
            finally:
                movement.idpagamento = payment.value
                movement.importo = amount.value
                movement.Valuta = out_text("kova_text_get", currency)
                movement.note = out_text("kova_text_get", note)
                movement.cassetto = drawer.value
                movement.tipoIncasso = activity.value
                movement.isIncasso = incoming.value != 0
