"""The component, its events, and what all components share."""

from __future__ import annotations

import atexit
import contextlib
import ctypes
import datetime
import itertools
import sys
import threading
import warnings
import weakref
from typing import Any, Callable, Dict, NamedTuple, Optional, Tuple

from ._library import Refusal, Text, call, call_handling, calling, in_range, in_text, keep, library, log, out_int, out_text
from ._members import Events, Members, Movement

_FAILED = 513  # the number of a failure that has none of its own
_handle, _integer = ctypes.c_void_p, ctypes.POINTER(ctypes.c_int32)
_SAVE = ctypes.CFUNCTYPE(
    ctypes.c_int32,
    _handle,
    _integer,
    ctypes.POINTER(ctypes.c_double),
    _handle,
    _handle,
    ctypes.POINTER(ctypes.c_int16),
    _integer,
    _integer,
)
_PRINT = ctypes.CFUNCTYPE(ctypes.c_int32, _handle, _handle)
_OPEN = ctypes.CFUNCTYPE(ctypes.c_int32, _handle)
_END = ctypes.CFUNCTYPE(None, _handle)


class _Handlers(ctypes.Structure):
    _fields_ = [
        ("size", ctypes.c_uint32),
        ("user", _handle),
        ("SalvaPagamento", _SAVE),
        ("Stampa", _PRINT),
        ("Anteprima", _PRINT),
        ("ApriCassetto", _OPEN),
        ("released", _END),
    ]


class _Listener(NamedTuple):
    """Who hears of a component's events. The library knows it by its key until it releases it."""

    component: Optional[int]
    find: Callable[[str], Any]


_listeners: Dict[int, _Listener] = {}
_keys = itertools.count(1)


_Delivery = Tuple[Tuple[object, ...], Callable[[], None]]  # arguments, and what then writes them back


def _hear(user: int, event: str, deliver: Callable[[], _Delivery] = lambda: ((), lambda: None)) -> int:
    """Calls the handler; 0, or the number of the failure that an exception becomes."""
    listener = _listeners[user]
    try:
        handler = listener.find(event)
        if handler is not None:
            arguments, write = deliver()
            try:
                handler(*arguments)
            except BaseException:
                with contextlib.suppress(Exception):
                    write()
                raise
            write()
    except BaseException as error:
        return _failed(listener, event, error)
    return 0


def _failed(listener: _Listener, event: str, error: BaseException) -> int:
    if not isinstance(error, Exception):  # the host is to end: so does a modal dialog
        library.kova_DiscardForm(_handle(listener.component))
    # Whoever refuses has nothing to mend; what nobody else will get must not be lost.
    if not isinstance(error, Refusal) and (isinstance(error, Exception) or not calling()):
        log.error("The handler of %s failed", event, exc_info=error)
    keep(error)
    library.kova_fail((str(error) or type(error).__name__).replace("\0", " ").encode(errors="replace"))
    number = getattr(error, "number", None)
    if not isinstance(number, int) or number == 0 or not -(1 << 31) <= number < 1 << 31:
        return _FAILED
    return number


def _read(text: int) -> str:
    return out_text("kova_text_get", _handle(text))


def _write(text: int, before: str, after: str) -> None:
    if after != before:
        call("kova_text_set", _handle(text), in_text(after))


def _movement(
    payment: Any, amount: Any, currency: int, note: int, drawer: Any, activity: Any, incoming: Any
) -> _Delivery:
    was = Movement(
        payment[0], amount[0], _read(currency), _read(note), drawer[0], activity[0], incoming[0] != 0
    )
    movement = Movement(**vars(was))

    def write() -> None:
        payment[0] = in_range(movement.idpagamento, 32)
        amount[0] = movement.importo
        _write(currency, was.Valuta, movement.Valuta)
        _write(note, was.note, movement.note)
        drawer[0] = in_range(movement.cassetto, 16)
        activity[0] = in_range(movement.tipoIncasso, 32)
        incoming[0] = bool(movement.isIncasso)

    return (movement,), write


def _text(handle: int) -> _Delivery:
    was = _read(handle)
    text = Text(was)
    return (text,), lambda: _write(handle, was, text.value)


def _save(user: int, *values: Any) -> int:
    return _hear(user, "SalvaPagamento", lambda: _movement(*values))


def _print(user: int, day: int) -> int:
    return _hear(user, "Stampa", lambda: _text(day))


def _preview(user: int, day: int) -> int:
    return _hear(user, "Anteprima", lambda: _text(day))


def _open(user: int) -> int:
    return _hear(user, "ApriCassetto")


def _released(user: int) -> None:
    _listeners.pop(user, None)


# The library keeps pointers to them for good.
_CALLED = (_SAVE(_save), _PRINT(_print), _PRINT(_preview), _OPEN(_open), _END(_released))
_CLOSED = _END(lambda user: _hear(user, "closed"))


class Sink:
    """A connected handler; connected until `disconnect`, or until the component is closed."""

    def __init__(self, component: ctypes.c_void_p, find: Callable[[str], Any]) -> None:
        self._sink = _handle()
        self.key = next(_keys)
        _listeners[self.key] = _Listener(component.value, find)
        handlers = _Handlers(ctypes.sizeof(_Handlers), self.key, *_CALLED)
        try:
            call("kova_connect", component, ctypes.byref(handlers), ctypes.byref(self._sink))
        except BaseException:
            del _listeners[self.key]
            raise

    def disconnect(self) -> None:
        """The handler is called no more. Disconnecting again does nothing."""
        if self._sink:
            sink, self._sink = self._sink, _handle()
            call_handling("kova_disconnect", sink)


class DrawerMan(Members):
    """The component. Its calls belong to the thread that made the first one.

    Handlers are assigned to `on_SalvaPagamento`, `on_Stampa`, `on_Anteprima`, `on_ApriCassetto`, or
    connected together by `connect`. A handler that raises has not done what was asked: the cashier keeps
    what was entered. `Refusal` is for that; anything else is also written to the log `kova_drawer_man`.
    KeyboardInterrupt and SystemExit close the dialog and go on in `Show` or `process_events`.
    """

    on_SalvaPagamento: Optional[Callable[[Movement], None]] = None
    on_Stampa: Optional[Callable[[Text], None]] = None
    on_Anteprima: Optional[Callable[[Text], None]] = None
    on_ApriCassetto: Optional[Callable[[], None]] = None
    on_closed: Optional[Callable[[], None]] = None
    """The dialog has closed, whoever closed it; it may be shown again."""

    def __init__(self) -> None:
        global _thread
        component = _handle()
        call("kova_create", ctypes.byref(component))
        self._handle = component
        self._thread = _thread = threading.get_ident()
        own = weakref.ref(self)
        self._sinks = [Sink(component, lambda event: getattr(own(), "on_" + event, None))]
        call("kova_on_closed", component, _CLOSED, _handle(self._sinks[0].key))

    def connect(self, handler: Events) -> Sink:
        """Connects all events to the methods of `handler`, after those that are connected already."""
        sink = Sink(self._handle, lambda event: getattr(handler, event, None))
        self._sinks.append(sink)
        return sink

    @property
    def is_open(self) -> bool:
        """Whether the dialog is on the screen."""
        return self._out_bool("kova_is_open")

    def close(self) -> None:
        """Ends the component and closes its dialog. Closing again does nothing."""
        if self._handle:
            handle, self._handle = self._handle, _handle()
            call_handling("kova_release", handle)
            for sink in self._sinks:
                sink.disconnect()

    def __enter__(self) -> DrawerMan:
        return self

    def __exit__(self, *_: object) -> None:
        self.close()

    def __del__(self) -> None:
        if getattr(self, "_sinks", None) and self._handle and not sys.is_finalizing():
            warnings.warn("a DrawerMan was not closed", ResourceWarning, stacklevel=2)
            if threading.get_ident() == self._thread:
                self.close()


_thread: Optional[int] = None


@atexit.register
def _end() -> None:
    if _thread == threading.get_ident():  # while there are still handlers to call
        library.kova_shut_down()


def set_language(id: int, name: str = "") -> None:
    """The user's language from now on: 1040 Italian, 1031 German, 9 English; any other shows Italian."""
    call("kova_set_language", ctypes.c_int32(in_range(id, 32)), in_text(name))


def get_language() -> int:
    """0 where the environment names none."""
    return out_int("kova_get_language")


def set_screen_aids(amount_read_back: bool = True, direction: bool = True, confirmation: bool = True) -> None:
    """What the entry screen says beside its controls."""
    call("kova_set_screen_aids", *(ctypes.c_int32(bool(a)) for a in (amount_read_back, direction, confirmation)))


def set_sounds(wanted: bool) -> None:
    """Whether the cashier hears keys, saves and refusals; at first not."""
    call("kova_set_sounds", ctypes.c_int32(bool(wanted)))


def set_waiting_sign(wanted: bool) -> None:
    """Whether a sign says what the cashier waits for when the server is slow, or dead; at first it does."""
    call("kova_set_waiting_sign", ctypes.c_int32(bool(wanted)))


def set_parent_window(window: int) -> None:
    """The X11 window id or HWND that dialogs stand in front of; 0 for none."""
    call("kova_set_parent_window", ctypes.c_uint64(window))


def set_decimal_key(of_region: bool) -> None:
    """Whether the decimal key enters the region's separator, and not a comma."""
    call("kova_set_decimal_key", ctypes.c_int32(bool(of_region)))


def set_log_folder(folder: str) -> None:
    """The folder of `logfile.log`, unless KOVA_LOG names a file."""
    call("kova_set_log_folder", in_text(folder))


def shut_down() -> None:
    """Closes open dialogs and ends what all components share. The interpreter's end does it, too."""
    call_handling("kova_shut_down")


def process_events() -> None:
    """Handles the events that wait, and returns: for hosts with a loop of their own."""
    call_handling("kova_process_events")


def event_descriptor() -> int:
    """A file descriptor that can be read when `process_events` has something to do; -1 on Windows."""
    return out_int("kova_event_descriptor")


def parse_date(text: str) -> datetime.date:
    """The day that a text of Stampa or Anteprima names; KovaError with number 13 for a text that is no date."""
    parts = [ctypes.c_int32() for _ in range(3)]
    call("kova_parse_date", in_text(text), *map(ctypes.byref, parts))
    return datetime.date(*(part.value for part in parts))


def format_date(day: datetime.date) -> str:
    """As the dialog writes it."""
    return out_text("kova_format_date", *map(ctypes.c_int32, (day.year, day.month, day.day)))


def format_amount(amount: float, decimals: int = 2) -> str:
    """As the dialog writes it, with [0-15] decimals."""
    return out_text("kova_format_amount", ctypes.c_double(amount), ctypes.c_int32(in_range(decimals, 32)))


def font_family() -> str:
    """What the dialog is drawn with, for windows of the host's beside it."""
    return out_text("kova_font_family")
