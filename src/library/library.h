#pragma once
#include "base/date_time.h"
#include "base/error.h"
#include "component/cls_Kova_Drawer_Man.h"
#include "component/events.h"
#include "ports/regional_settings.h"
#include "services/activity_kinds.h"
#include "services/screen_aids.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

/// What a C++ host includes. The first component makes what all components of the process share: the drawing
/// with Qt, the clock, the language and the regional settings of this machine, the error log: `logfile.log`
/// beside the library's file, otherwise in the user's state folder, otherwise the system's log; the
/// environment variable KOVA_LOG names another file.
///
/// All calls come from one thread, the one of the first component, which is the user interface's. A call from
/// another one does nothing but write one record of the error log and throw Error; only where it says so may
/// a function be called on any thread.
///
/// A host without Qt needs nothing of it: the library then makes the Qt application itself. A host with Qt
/// makes its own QApplication before the first component, and releases its components before or after that
/// application as it likes.
namespace kova {

/// A new component; the caller's, to be released at any time. Throws Error when no windows can be shown: no
/// display can be opened, or the process has a Qt application without widgets; and while `shutDown` waits for
/// its end. Each is also one record in the log.
[[nodiscard]] std::shared_ptr<cls_Kova_Drawer_Man> createComponent();

/// Opens a connection to hand to `Inizializza`; understands the same texts as `InizializzaByConnString`.
/// Never null. Any thread may call it. Throws DatabaseError.
[[nodiscard]] std::shared_ptr<DatabaseConnection> openDatabase(const std::string& connectionString);

/// A connection to hand to `Inizializza` over one that the host opened itself: `connectionHandle` is an ODBC
/// connection handle (an SQLHDBC) to a SQL Server, open and valid as long as the component uses it. It stays
/// the host's and is never closed here; the host reads its own results on it to the end before the component
/// may run a query. Any thread may call it. Throws DatabaseError in builds without ODBC.
[[nodiscard]] std::shared_ptr<DatabaseConnection> hostOdbcConnection(void* connectionHandle);

/// Announces the language that the user works in from now on, by its Windows language identifier: 1040
/// Italian, 1031 German, 9 English; any other shows Italian. At first it is the environment's.
void setLanguage(std::int32_t id, const std::string& name);

/// The identifier of that language; the environment's, 0 where it names none, until `setLanguage` was called.
[[nodiscard]] std::int32_t languageId();

/// Which aids the entry screens of all components show from now on, open ones included; at first all. The
/// machine's settings may leave out more of them.
void setScreenAids(const ScreenAids& aids);

/// What the decimal key of the amount enters in all components from now on, open dialogs included; at first a
/// comma. The machine's settings, where they say so, decide instead.
void setDecimalKey(DecimalKey key);

/// Whether a cashier hears keys, saves and refusals from now on; at first not. The machine's settings, where
/// they say so, decide instead.
void setSounds(bool wanted);

/// Whether a sign says what a cashier waits for when the server is slow, and a notice that it does not
/// answer, from now on; at first yes. The machine's settings may leave them out.
void setWaitingSign(bool wanted);

/// The host's window that dialogs stand in front of when they open from now on: an X11 window id or an HWND;
/// 0, as at first, for none. An id that is no window's is no error. A host with Qt need not say it.
void setParentWindow(std::uint64_t window);

/// Writes `logfile.log` into this folder from now on instead of beside the library's file, unless KOVA_LOG
/// names a file. May be called before the first component, so that its records are there too. A folder that
/// cannot be written is no error: records then go where they always go when the file cannot be written.
void setLogFolder(const std::string& folder);

// What a host needs to say dates and amounts as the dialog says them. Any thread may call these.

/// How the region of this machine writes numbers, dates and times: as the user has set it now, or, while a
/// dialog is open, had set it when that opened.
[[nodiscard]] RegionalSettings regionalSettings();

/// The date that a text of `Stampa` or `Anteprima` names, read as the dialog reads it: day and month in the
/// region's order, or the year first with hyphens. Nothing for a text that is no date.
[[nodiscard]] std::optional<DateTime> parseDate(const std::string& text);

/// The day in the region's short form, such as 16/11/2026.
[[nodiscard]] std::string formatDate(DateTime day);

/// The amount with the region's separators, rounded half away from zero to that many decimals [0-15].
[[nodiscard]] std::string formatAmount(double amount, std::int16_t decimals);

/// The font family that the dialog is drawn with, for windows of the host's beside it. Empty while the
/// process has no Qt application.
[[nodiscard]] std::string fontFamily();

/// Handles the events that wait, and returns, also where a message or the coin count opens: what waits for
/// its answer goes on in a later call. For hosts whose event loop is not Qt's, GLib's or the system's, while
/// a modeless dialog is open.
void processEvents();

/// A file descriptor that can be read when `processEvents` has something to do; the library's, and valid
/// until `shutDown`. -1 on Windows, where the thread's queue of messages says it. Throws Error without a
/// component.
[[nodiscard]] int eventDescriptor();

/// Closes open dialogs and ends what the first component began; the next one starts again. Components that
/// the host still holds may be released afterwards; their `Show` is one record of the error log. Inside an
/// event it takes effect when the outermost event has returned. The library calls it itself when the process
/// exits, and before a Qt application of the host's ends.
/// On Windows a host calls it before its user-interface thread ends while the process goes on; nobody else
/// does.
void shutDown();

} // namespace kova
