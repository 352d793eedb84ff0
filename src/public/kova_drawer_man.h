#pragma once
#include "kova_drawer_man_component.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

/// What a C++ host includes: the component's interface for any compiler of C++17 or later, over the C
/// functions of the library, so that no type of the standard library crosses its border.
///
/// The first component makes what all components of the process share: the drawing with Qt, the clock, the
/// language and the regional settings of this machine, the error log: `logfile.log` beside the library's
/// file, otherwise in the user's state folder, otherwise the system's log; the environment variable KOVA_LOG
/// names another file.
///
/// All calls come from one thread, the one of the first component, which is the user interface's. A call from
/// another one does nothing but write one record of the error log and throw Error, where it may fail; only
/// where it says so may a function be called on any thread.
///
/// A host without Qt needs nothing of it: the library then makes the Qt application itself. A host with Qt
/// makes its own QApplication before the first component, and releases its components before or after that
/// application as it likes.
///
/// Texts are UTF-8 and end at the first zero byte.
namespace kova {

/// A new component; the caller's, to be released at any time. Throws Error when no windows can be shown: no
/// display can be opened, or the process has a Qt application without widgets; and while `shutDown` waits for
/// its end. Each is also one record in the log.
[[nodiscard]] inline std::shared_ptr<cls_Kova_Drawer_Man> createComponent() {
    kova_component created = nullptr;
    detail::check(kova_create(&created));
    return std::make_shared<cls_Kova_Drawer_Man>(created);
}

/// Opens a connection to hand to `Inizializza`; understands the same texts as `InizializzaByConnString`.
/// Never null. Any thread may call it. Throws DatabaseError.
[[nodiscard]] inline std::shared_ptr<DatabaseConnection> openDatabase(const std::string& connectionString) {
    kova_database opened = nullptr;
    detail::check(kova_database_open(connectionString.c_str(), &opened));
    return std::make_shared<DatabaseConnection>(opened);
}

/// A connection to hand to `Inizializza` over one that the host opened itself: `connectionHandle` is an ODBC
/// connection handle (an SQLHDBC) to a SQL Server, open and valid as long as the component uses it. It stays
/// the host's and is never closed here; the host reads its own results on it to the end before the component
/// may run a query. Any thread may call it. Throws DatabaseError in builds without ODBC.
[[nodiscard]] inline std::shared_ptr<DatabaseConnection> hostOdbcConnection(void* connectionHandle) {
    kova_database shared = nullptr;
    detail::check(kova_database_from_odbc(connectionHandle, &shared));
    return std::make_shared<DatabaseConnection>(shared);
}

/// Announces the language that the user works in from now on, by its Windows language identifier: 1040
/// Italian, 1031 German, 9 English; any other shows Italian. At first it is the environment's.
inline void setLanguage(std::int32_t id, const std::string& name) {
    detail::check(kova_set_language(id, name.c_str()));
}

/// The identifier of that language; the environment's, 0 where it names none, until `setLanguage` was called.
[[nodiscard]] inline std::int32_t languageId() {
    std::int32_t id = 0;
    detail::check(kova_get_language(&id));
    return id;
}

/// What the entry screen says beside its controls, so that a wrong movement is seen before and after it is
/// sent. None of it takes the focus or a touch, or changes what is sent.
struct ScreenAids {
    bool amountReadBack = true; ///< the amount and all else that would be sent, and what is missing
    bool direction = true;      ///< whether the money goes in or out, once that is known
    bool confirmation = true;   ///< a short notice of what was sent
};

/// Which aids the entry screens of all components show from now on, open ones included; at first all. The
/// machine's settings may leave out more of them.
inline void setScreenAids(const ScreenAids& aids) {
    detail::check(
        kova_set_screen_aids(aids.amountReadBack ? 1 : 0, aids.direction ? 1 : 0, aids.confirmation ? 1 : 0));
}

/// Whether the cashier hears a click for keys, a tone for a save and another for a refusal from now on, of
/// the sound theme that the user has chosen; at first not. The machine's settings, where they say so, decide
/// instead.
inline void setSounds(bool wanted) {
    detail::check(kova_set_sounds(wanted ? 1 : 0));
}

/// Whether a sign says what the cashier waits for when the server is slow, and a notice that it does not
/// answer, from now on; at first yes. The machine's settings may leave them out.
inline void setWaitingSign(bool wanted) {
    detail::check(kova_set_waiting_sign(wanted ? 1 : 0));
}

/// What the decimal key of the amount enters, on the screen and on a physical keyboard.
enum class DecimalKey {
    Comma = KOVA_DECIMAL_COMMA,     ///< a comma, which is no decimal separator in every region
    Region = KOVA_DECIMAL_OF_REGION ///< the region's decimal separator, once
};

/// What it enters in all components from now on, open dialogs included; at first a comma. The machine's
/// settings, where they say so, decide instead.
inline void setDecimalKey(DecimalKey key) {
    detail::check(kova_set_decimal_key(static_cast<std::int32_t>(key)));
}

/// The host's window that dialogs stand in front of when they open from now on: an X11 window id or an HWND;
/// 0, as at first, for none. An id that is no window's is no error. A host with Qt need not say it.
inline void setParentWindow(std::uint64_t window) {
    detail::check(kova_set_parent_window(window));
}

/// Writes `logfile.log` into this folder from now on instead of beside the library's file, unless KOVA_LOG
/// names a file. May be called before the first component, so that its records are there too. A folder that
/// cannot be written is no error: records then go where they always go when the file cannot be written.
inline void setLogFolder(const std::string& folder) {
    detail::check(kova_set_log_folder(folder.c_str()));
}

// What a host needs to say dates and amounts as the dialog says them: as the user has set the region now, or,
// while a dialog is open, had set it when that opened. Any thread may call these.

/// A day of the calendar; months and days count from 1.
struct Date {
    std::int32_t year, month, day;
};

/// The date that a text of `Stampa` or `Anteprima` names, read as the dialog reads it: day and month in the
/// region's order, or the year first with hyphens. Nothing for a text that is no date.
[[nodiscard]] inline std::optional<Date> parseDate(const std::string& text) {
    Date date{};
    if (kova_parse_date(text.c_str(), &date.year, &date.month, &date.day) != KOVA_OK)
        return std::nullopt;
    return date;
}

/// The day in the region's short form, such as 16/11/2026. Throws Error for a day that there is not.
[[nodiscard]] inline std::string formatDate(const Date& date) {
    const char* text = nullptr;
    detail::check(kova_format_date(date.year, date.month, date.day, &text));
    return text;
}

/// The amount with the region's separators, rounded half away from zero to that many decimals [0-15].
[[nodiscard]] inline std::string formatAmount(double amount, std::int16_t decimals) {
    const char* text = nullptr;
    detail::check(kova_format_amount(amount, decimals, &text));
    return text;
}

/// The font family that the dialog is drawn with, for windows of the host's beside it. Empty while the
/// process has no Qt application.
[[nodiscard]] inline std::string fontFamily() {
    const char* family = nullptr;
    detail::check(kova_font_family(&family));
    return family;
}

/// Handles the events that wait, and returns, also where a message or the coin count opens: what waits for
/// its answer goes on in a later call. For hosts whose event loop is not Qt's, GLib's or the system's, while
/// a modeless dialog is open. Inside an event it returns only when what it has opened is closed.
inline void processEvents() {
    detail::check(kova_process_events());
}

/// A file descriptor that can be read when `processEvents` has something to do; the library's, and valid
/// until `shutDown`. -1 on Windows, where the thread's queue of messages says it.
[[nodiscard]] inline std::int32_t eventDescriptor() {
    std::int32_t descriptor = -1;
    detail::check(kova_event_descriptor(&descriptor));
    return descriptor;
}

/// Closes open dialogs and ends what the first component began; the next one starts again. Components that
/// the host still holds may be released afterwards; their `Show` is one record of the error log. Inside an
/// event it takes effect when the outermost event has returned. The library calls it itself when the process
/// exits, and before a Qt application of the host's ends.
/// On Windows a host calls it before its user-interface thread ends while the process goes on; nobody else
/// does.
inline void shutDown() {
    detail::check(kova_shut_down());
}

} // namespace kova
