#pragma once
#include "base/error.h"
#include "base/export.h"
#include "component/cls_Kova_Drawer_Man.h"
#include "component/events.h"
#include "services/activity_kinds.h"
#include "services/screen_aids.h"

#include <cstdint>
#include <memory>
#include <string>

/// What a C++ host includes. The first component makes what all components of the process share: the drawing
/// with Qt, the clock, the language and the regional settings of this machine, the error log: `logfile.log`
/// beside the library's file, otherwise in the user's state folder, otherwise the system's log; the
/// environment variable KOVA_LOG names another file.
///
/// All calls come from one thread, the one of the first component, which is the user interface's. A call from
/// another one does nothing but write one record of the error log and throw Error; only `openDatabase` and
/// `hostOdbcConnection` may be called on any thread.
///
/// A host without Qt needs nothing of it: the library then makes the Qt application itself. A host with Qt
/// makes its own QApplication before the first component, and releases its components before or after that
/// application as it likes.
namespace kova {

/// A new component; the caller's, to be released at any time. Throws Error when no windows can be shown: no
/// display can be opened, or the process has a Qt application without widgets; and while `shutDown` waits for
/// its end. Each is also one record in the log.
[[nodiscard]] KOVA_API std::shared_ptr<cls_Kova_Drawer_Man> createComponent();

/// Opens a connection to hand to `Inizializza`; understands the same texts as `InizializzaByConnString`.
/// Never null. Throws DatabaseError.
[[nodiscard]] KOVA_API std::shared_ptr<DatabaseConnection> openDatabase(const std::string& connectionString);

/// A connection to hand to `Inizializza` over one that the host opened itself: `connectionHandle` is an ODBC
/// connection handle (an SQLHDBC) to a SQL Server, open and valid as long as the component uses it. It stays
/// the host's and is never closed here; the host reads its own results on it to the end before the component
/// may run a query. Throws DatabaseError in builds without ODBC.
[[nodiscard]] KOVA_API std::shared_ptr<DatabaseConnection> hostOdbcConnection(void* connectionHandle);

/// Announces the language that the user works in from now on, by its Windows language identifier: 1040
/// Italian, 1031 German, 9 English; any other shows Italian. At first it is the environment's.
KOVA_API void setLanguage(std::int32_t id, const std::string& name);

/// Which aids the entry screens of all components show from now on, open ones included; at first all. The
/// machine's settings may leave out more of them.
KOVA_API void setScreenAids(const ScreenAids& aids);

/// What the decimal key of the amount enters in all components from now on, open dialogs included; at first a
/// comma. The machine's settings, where they say so, decide instead.
KOVA_API void setDecimalKey(DecimalKey key);

/// Handles the events that wait. For hosts without an event loop of their own while a modeless dialog is
/// open.
KOVA_API void processEvents();

/// Closes open dialogs and ends what the first component began; the next one begins anew. Components that
/// the host still holds may be released afterwards; their `Show` is one record of the error log. Inside an
/// event it takes effect when the outermost event has returned. The library calls it itself when the process
/// exits, and before a Qt application of the host's ends.
KOVA_API void shutDown();

} // namespace kova
