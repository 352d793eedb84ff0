#ifndef KOVA_DRAWER_MAN_C_H
#define KOVA_DRAWER_MAN_C_H

/* The cash-drawer component for hosts in any language that can call C.
 *
 * Order: kova_create, kova_connect, kova_Inizializza or kova_InizializzaByConnString, options, kova_Show;
 * then events; in the end kova_release. No function throws, and none ends the process. A process that has
 * used the library must not go on in the child of fork() without exec().
 *
 * Status: every function that can fail returns a kova_status. Only KOVA_OK is success; after anything else
 * kova_last_error() has the words, and nothing was done unless the function says so.
 *
 * Texts: UTF-8 that ends at the first zero byte. One that is not UTF-8 is refused with KOVA_INVALID_ARGUMENT;
 * a null pointer where a text goes in is the empty text. What comes out as `const char*` is the library's and
 * valid until the same thread calls a function of this header again that hands one out. Copy it.
 *
 * Handles: opaque, and never given twice. One that was released, or is of another kind, gives
 * KOVA_INVALID_HANDLE and does no harm. A null pointer for a result gives KOVA_INVALID_ARGUMENT.
 *
 * Threads: one thread, which made the first component, is the user interface's. A call from another one is
 * refused with KOVA_WRONG_THREAD or KOVA_FAILED and one record of the error log. What says "any thread" may
 * be called anywhere.
 *
 * Inside an event the host may call everything: change options, discard the dialog, show it again, disconnect
 * any handlers, release the component. What was released or disconnected lives until the event has returned.
 *
 * Failures that the component keeps to itself are no error for the host: kova_Show, kova_DiscardForm,
 * kova_Inizializza and kova_InizializzaByConnString return KOVA_OK when a database cannot be read, and the
 * error log has one record. The log is `logfile.log` beside the library, otherwise in the user's state
 * folder, otherwise the system's log; the environment variable KOVA_LOG names another file. */

#include <stdint.h>

#if defined(_WIN32) && defined(KOVA_EXPORTS)
#define KOVA_C_API __declspec(dllexport)
#elif defined(_WIN32)
#define KOVA_C_API __declspec(dllimport)
#else
#define KOVA_C_API __attribute__((visibility("default")))
#endif
/* How the library's functions are called, and how it calls the host's. */
#ifdef _WIN32
#define KOVA_CALL __cdecl
#else
#define KOVA_CALL
#endif

#ifdef __cplusplus
extern "C" {
#endif

typedef int32_t kova_status;
enum {
    KOVA_OK = 0,
    KOVA_FAILED = 1,           /* the component refused; kova_last_error_number() says which error it is */
    KOVA_DATABASE_FAILED = 2,  /* as KOVA_FAILED; kova_last_sql_state() has the state, too */
    KOVA_INVALID_ARGUMENT = 3, /* a null pointer, an unknown kind, a text that is not UTF-8 */
    KOVA_INVALID_HANDLE = 4,   /* released, of another kind, or never handed out */
    KOVA_WRONG_THREAD = 5,
    KOVA_OUT_OF_MEMORY = 6
};

typedef struct kova_component_* kova_component; /* a component; the host's until kova_release */
typedef struct kova_database_* kova_database;   /* a database; the host's until kova_database_release */
typedef struct kova_sink_* kova_sink;           /* connected handlers; the host's until kova_disconnect */
typedef struct kova_text_* kova_text;           /* a text that can be changed; see kova_text_set */

/* ---- Errors. Any thread; each thread has its own last error. ---- */

/* The words of the calling thread's last call that failed; "" before any. Never null. */
KOVA_C_API const char* KOVA_CALL kova_last_error(void);
/* Its number: 5 invalid call, 6 overflow, 13 type mismatch, 438 no such member, 450 wrong number of
 * arguments, a handler's own number, or the number of a database's error; 0 where there is none. */
KOVA_C_API int32_t KOVA_CALL kova_last_error_number(void);
/* The five characters of ISO 9075 after KOVA_DATABASE_FAILED, else "". */
KOVA_C_API const char* KOVA_CALL kova_last_sql_state(void);
/* The version of this interface that the library has. A host that was built against an older one runs. */
enum { KOVA_VERSION = 410 }; /* of this header: 4.10 */
KOVA_C_API int32_t KOVA_CALL kova_version(void);

/* ---- Components ---- */

/* A new component. The first one makes what all share: without a Qt application of the host's, the library
 * makes one. Fails when no windows can be shown. */
KOVA_C_API kova_status KOVA_CALL kova_create(kova_component* component);
/* Releases it; an open dialog closes. Sinks stay the host's and get no more events. */
KOVA_C_API kova_status KOVA_CALL kova_release(kova_component component);

/* Whether the dialog is on the screen: 1 or 0. */
KOVA_C_API kova_status KOVA_CALL kova_is_open(kova_component component, int32_t* open);
/* Called with `user` each time the dialog has closed, whoever closed it: before a modal kova_Show returns,
 * else from the event loop; the dialog may be shown again in it. One a component; a null handler ends it.
 * Neither when the component is released nor when the library is shut down. */
typedef void(KOVA_CALL* kova_closed_handler)(void* user);
KOVA_C_API kova_status KOVA_CALL kova_on_closed(kova_component component, kova_closed_handler handler,
                                                void* user);
#include "kova_drawer_man_members.h"

/* ---- Events ---- */

/* What the host does about the component's requests; a null handler ignores the request. Calls come on the
 * user-interface thread, and the component waits for their return. Each parameter is by reference: what a
 * handler writes reaches the handlers connected later, and the component. A text is read by kova_text_get and
 * changed by kova_text_set, and is valid inside the handler alone.
 *
 * A handler returns 0 when it has done what was asked. Anything else is the number of its failure, whose
 * words it may give with kova_fail before: handlers connected later are not called, the cashier keeps what
 * was entered and, if it was SalvaPagamento, reads the words, and the log gets one record. It must not return
 * by longjmp or an exception. */
typedef struct kova_handlers {
    uint32_t size; /* sizeof(kova_handlers): tells the library how much the host knows */
    void* user;    /* handed to each handler */
    /* Store one movement. `importo` in units of `Valuta`, as typed: not signed by direction; `isIncasso` is 1
     * when the money enters the drawer. `cassetto` [0-4], 0 for none chosen. `tipoIncasso` is the activity's
     * id. In a double movement the withdrawal comes first; if it fails, the deposit does not come. */
    int32_t(KOVA_CALL* SalvaPagamento)(void* user, int32_t* idpagamento, double* importo, kova_text Valuta,
                                       kova_text note, int16_t* cassetto, int32_t* tipoIncasso,
                                       int32_t* isIncasso);
    /* Print the movements of a day. The text is as the cashier left it and need not be a date;
     * kova_parse_date reads it as the dialog does. */
    int32_t(KOVA_CALL* Stampa)(void* user, kova_text DataOperazione);
    /* Show a print preview of the movements of a day. */
    int32_t(KOVA_CALL* Anteprima)(void* user, kova_text DataOperazione);
    /* Open the cash drawer. */
    int32_t(KOVA_CALL* ApriCassetto)(void* user);
    /* No handler will be called any more, and `user` is not used again: after kova_disconnect, at once or
     * when the running handler has returned. May be null. */
    void(KOVA_CALL* released)(void* user);
} kova_handlers;

/* Connects handlers, which are copied. They are called in the order of connection. */
KOVA_C_API kova_status KOVA_CALL kova_connect(kova_component component, const kova_handlers* handlers,
                                              kova_sink* sink);
/* Disconnects and releases them; before or after the component is released, also inside an event. */
KOVA_C_API kova_status KOVA_CALL kova_disconnect(kova_sink sink);
/* Inside a handler: the words of the failure that it is about to return. */
KOVA_C_API kova_status KOVA_CALL kova_fail(const char* words);

/* ---- Texts by reference ---- */

/* A text of the host's, for kova_Stampa, kova_Anteprima and kova_SalvaPagamento. Any thread. */
KOVA_C_API kova_status KOVA_CALL kova_text_create(const char* content, kova_text* text);
/* Those of an event are the library's and cannot be released. Any thread. */
KOVA_C_API kova_status KOVA_CALL kova_text_release(kova_text text);
/* What it holds now. Any thread. */
KOVA_C_API kova_status KOVA_CALL kova_text_get(kova_text text, const char** content);
/* Copies `content`. */
KOVA_C_API kova_status KOVA_CALL kova_text_set(kova_text text, const char* content);

/* ---- Calls by name or dispatch id ---- */

enum {
    KOVA_EMPTY = 0,
    KOVA_INT16 = 1,
    KOVA_INT32 = 2,
    KOVA_DOUBLE = 3,
    KOVA_BOOLEAN = 4, /* in `integer`, 0 or 1 */
    KOVA_TEXT = 5,
    KOVA_DATABASE = 6
};
/* A value; `kind` says which of the others holds it. */
typedef struct kova_value {
    int32_t kind;
    int32_t integer;
    double number;
    const char* text;
    kova_database database;
} kova_value;

/* Reads or writes a property, or calls a method; letter case aside. Values are converted as the old languages
 * do: "12" for a number, 1 for a Boolean. Numbers of errors: 438 for a member that there is not, 450 for a
 * wrong number of arguments, 13 and 6 for values of the wrong type or range. */
KOVA_C_API kova_status KOVA_CALL kova_get(kova_component component, const char* name, kova_value* value);
KOVA_C_API kova_status KOVA_CALL kova_get_by_id(kova_component component, int32_t id, kova_value* value);
KOVA_C_API kova_status KOVA_CALL kova_set(kova_component component, const char* name,
                                          const kova_value* value);
KOVA_C_API kova_status KOVA_CALL kova_set_by_id(kova_component component, int32_t id,
                                                const kova_value* value);
/* Arguments are by reference: what a handler wrote stands in them afterwards, also when the call failed, in
 * the types that are declared. `result` may be null. Texts that come back are the library's until the
 * thread's next kova_invoke or kova_invoke_by_id. */
KOVA_C_API kova_status KOVA_CALL kova_invoke(kova_component component, const char* name,
                                             kova_value* arguments, int32_t count, kova_value* result);
KOVA_C_API kova_status KOVA_CALL kova_invoke_by_id(kova_component component, int32_t id,
                                                   kova_value* arguments, int32_t count, kova_value* result);

/* ---- Databases. Any thread. ---- */

/* Opens one to hand to kova_Inizializza; understands the texts of kova_InizializzaByConnString. */
KOVA_C_API kova_status KOVA_CALL kova_database_open(const char* connection, kova_database* database);
/* One over an ODBC connection handle (an SQLHDBC) to a SQL Server that the host has opened. It stays the
 * host's, must be open as long as the component uses it, and is never closed here; the host reads its own
 * results on it to the end before the component may run a query. */
KOVA_C_API kova_status KOVA_CALL kova_database_from_odbc(void* connection_handle, kova_database* database);
/* The component keeps what it was given. */
KOVA_C_API kova_status KOVA_CALL kova_database_release(kova_database database);

/* ---- What all components share ---- */

/* The language that the user works in from now on, in open dialogs too, by its Windows language identifier:
 * 1040 Italian, 1031 German, 9 English; any other shows Italian. At first it is the environment's. */
KOVA_C_API kova_status KOVA_CALL kova_set_language(int32_t id, const char* name);
/* 0 where the environment names none. */
KOVA_C_API kova_status KOVA_CALL kova_get_language(int32_t* id);
/* What the entry screen says beside its controls, each 1 or 0 and at first 1: the typed amount and all else
 * that would be sent, with what contradicts itself or is missing; whether the money goes in or out; a short
 * notice of what was sent. The machine's settings may leave out more. */
KOVA_C_API kova_status KOVA_CALL kova_set_screen_aids(int32_t amount_read_back, int32_t direction,
                                                      int32_t confirmation);
/* Whether the cashier hears a click for keys, a tone for a save and another for a refusal, of the sound theme
 * that the user has chosen: 1 or 0, as at first. The machine's settings, where they say so, decide instead.
 */
KOVA_C_API kova_status KOVA_CALL kova_set_sounds(int32_t wanted);
/* Whether a sign says what the cashier waits for when the server is slow, and a notice that it does not
 * answer: 1, as at first, or 0. The machine's settings may leave them out. */
KOVA_C_API kova_status KOVA_CALL kova_set_waiting_sign(int32_t wanted);
/* The host's window that dialogs stand in front of when they open from now on: an X11 window id or an HWND;
 * 0, as at first, for none. Wayland has no such ids. An id that is no window's is no error. */
KOVA_C_API kova_status KOVA_CALL kova_set_parent_window(uint64_t window);
enum { KOVA_DECIMAL_COMMA = 0, KOVA_DECIMAL_OF_REGION = 1 };
/* What the decimal key of the amount enters: a comma, as at first, or the region's decimal separator. The
 * machine's settings, where they say so, decide instead. */
KOVA_C_API kova_status KOVA_CALL kova_set_decimal_key(int32_t key);
/* The folder of `logfile.log` from now on, unless KOVA_LOG names a file. May be called before kova_create. A
 * folder that cannot be written is no error. */
KOVA_C_API kova_status KOVA_CALL kova_set_log_folder(const char* folder);
/* Closes open dialogs and ends what the first component began; the next one starts again. What the host still
 * holds is released as ever; kova_Show does nothing then but write a record. Inside an event it takes effect
 * when the outermost event has returned. The library calls it itself when the process exits. */
KOVA_C_API kova_status KOVA_CALL kova_shut_down(void);

/* ---- Hosts with an event loop of their own ---- */

/* Handles the events that wait, and always returns: where a message or the coin count opens, what waits for
 * its answer goes on in a later call. A host with a loop of its own calls it while a modeless dialog is open,
 * when kova_event_descriptor says so. Handlers of events are called on the host's own stack. Called inside an
 * event it returns only when what it has opened is closed. On Windows, and where GLib or Qt runs the host's
 * loop, the system's own loop handles the component's events, too, and nobody need call this. */
KOVA_C_API kova_status KOVA_CALL kova_process_events(void);
/* A file descriptor to wait for, with poll() or a library of events: it can be read when kova_process_events
 * has something to do. It must not be read or closed, and is the same until kova_shut_down. -1 on Windows,
 * where the thread's queue of messages says it (MsgWaitForMultipleObjects). Needs a component. */
KOVA_C_API kova_status KOVA_CALL kova_event_descriptor(int32_t* descriptor);

/* ---- Dates and amounts as the dialog writes them. Any thread. ---- */

/* The date that a text of Stampa or Anteprima names: day and month in the region's order, or the year first
 * with hyphens. KOVA_FAILED with 13 for a text that is no date. */
KOVA_C_API kova_status KOVA_CALL kova_parse_date(const char* text, int32_t* year, int32_t* month,
                                                 int32_t* day);
/* In the region's short form, such as 16/11/2026. KOVA_FAILED with 5 for a day that there is not. */
KOVA_C_API kova_status KOVA_CALL kova_format_date(int32_t year, int32_t month, int32_t day,
                                                  const char** text);
/* With the region's separators, rounded half away from zero to `decimals` [0-15]. */
KOVA_C_API kova_status KOVA_CALL kova_format_amount(double amount, int32_t decimals, const char** text);

/* The font family that the dialog is drawn with, for windows of the host's beside it; "" while the process
 * has no Qt application. On the user-interface thread. */
KOVA_C_API kova_status KOVA_CALL kova_font_family(const char** family);

#ifdef __cplusplus
}
#endif

#endif
