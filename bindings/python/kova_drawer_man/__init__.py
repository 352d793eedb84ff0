"""The cash-drawer component for point-of-sale programs in Python."""

from ._drawer import (
    DrawerMan,
    Sink,
    event_descriptor,
    font_family,
    format_amount,
    format_date,
    get_language,
    parse_date,
    process_events,
    set_decimal_key,
    set_language,
    set_log_folder,
    set_parent_window,
    set_screen_aids,
    shut_down,
)
from ._library import Database, DatabaseError, KovaError, Refusal, Text
from ._members import DispatchId, Events, Movement, kDMTypeRow

__all__ = [
    "Database",
    "DatabaseError",
    "DispatchId",
    "DrawerMan",
    "Events",
    "KovaError",
    "Movement",
    "Refusal",
    "Sink",
    "Text",
    "event_descriptor",
    "font_family",
    "format_amount",
    "format_date",
    "get_language",
    "kDMTypeRow",
    "parse_date",
    "process_events",
    "set_decimal_key",
    "set_language",
    "set_log_folder",
    "set_parent_window",
    "set_screen_aids",
    "shut_down",
]
