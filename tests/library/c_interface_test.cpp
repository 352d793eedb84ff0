// A host of the C interface: plays the part that its argument names, in a process of its own.

#include "host.h"
#include "kova_drawer_man_c.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QTabBar>
#include <QTimer>

#include <poll.h>

#include <algorithm>
#include <map>
#include <thread>

namespace {

using namespace kova::test;

/// What the handlers saw and do.
struct Till {
    std::vector<std::string> seen;
    std::function<std::int32_t()> inside = [] { return 0; };
    int released = 0;
};

Till& of(void* user) {
    return *static_cast<Till*>(user);
}

std::string content(kova_text text) {
    const char* words = nullptr;
    expect(kova_text_get(text, &words) == KOVA_OK, "a text can be read");
    return words == nullptr ? "" : words;
}

constexpr kova_handlers handlersOf(Till& till) {
    return {sizeof(kova_handlers),
            &till,
            nullptr,
            [](void* user, kova_text day) {
                of(user).seen.push_back(content(day));
                kova_text_set(day, "17/11/2026");
                return of(user).inside();
            },
            nullptr,
            [](void* user) { return of(user).inside(); },
            [](void* user) { ++of(user).released; }};
}

kova_component created() {
    kova_component component = nullptr;
    expect(kova_create(&component) == KOVA_OK && component != nullptr, "a component is created");
    return component;
}

kova_sink connected(kova_component component, Till& till) {
    kova_sink sink = nullptr;
    const kova_handlers handlers = handlersOf(till);
    expect(kova_connect(component, &handlers, &sink) == KOVA_OK, "handlers are connected");
    return sink;
}

void connectShop(kova_component component) {
    expect(kova_Inizializza(component, shop()->handle()) == KOVA_OK,
           "a shop is connected, which the component keeps");
}

/// Bindings show what handlers get and write; here is how they fail, and what they may let go.
void events() {
    const kova_component component = created();
    Till first, second;
    const kova_sink sinks[] = {connected(component, first), connected(component, second)};
    kova_text day = nullptr;
    kova_text_create("today", &day);
    kova_value late{KOVA_TEXT, 0, 0, "tomorrow", nullptr};
    first.inside = [] { return kova_fail("The safe is shut"), 513; };
    expect(kova_Stampa(component, day) == KOVA_FAILED && content(day) == "17/11/2026" &&
               kova_invoke(component, "stampa", &late, 1, nullptr) == KOVA_FAILED &&
               late.text == std::string("17/11/2026") && kova_last_error_number() == 513 &&
               kova_last_error() == std::string("The safe is shut") && second.seen.empty(),
           "a failure comes with its number and words, and what was written before it");
    first.inside = [] { return kova_fail("nothing"), 0; };
    kova_ApriCassetto(component);
    first.inside = [] { return -7; };
    expect(kova_ApriCassetto(component) == KOVA_FAILED && kova_last_error_number() == -7 &&
               kova_last_error() == std::string("The event handler failed"),
           "words that an earlier handler has left are not used");
    expect(kova_Anteprima(component, day) == KOVA_OK, "a null handler ignores the request");
    first.inside = [&] {
        expect(kova_disconnect(sinks[1]) == KOVA_OK && second.released == 1,
               "one that comes later is gone at once");
        expect(kova_disconnect(sinks[0]) == KOVA_OK && first.released == 0,
               "the running one stays until it returns");
        return 0;
    };
    expect(kova_Stampa(component, day) == KOVA_OK && first.released == 1 && second.seen.empty(),
           "handlers disconnect each other and themselves");

    Till last;
    const kova_sink lastSink = connected(component, last);
    last.inside = [&] {
        return kova_text_release(day) == KOVA_OK && kova_release(component) == KOVA_OK ? 0 : 1;
    };
    expect(kova_Stampa(component, day) == KOVA_OK && last.seen.back() == "17/11/2026",
           "a handler releases the component and the text");
    expect(kova_Stampa(component, day) == KOVA_INVALID_HANDLE && last.released == 0 &&
               kova_disconnect(lastSink) == KOVA_OK && last.released == 1 && newRecords() == 0,
           "the handlers outlive the component, and nothing of all this is a record");
}

void misuse() {
    const kova_component component = created(), gone = created();
    kova_release(gone);
    kova_component none = nullptr;
    kova_text text = nullptr;
    kova_text_create("text", &text);
    kova_sink sink = nullptr;
    kova_database database = nullptr;
    kova_value value{};
    std::int32_t number = 0;
    const char* words = nullptr;
    kova_handlers handlers{};
    kova_value odd{.kind = 99, .integer = 0, .number = 0, .text = nullptr, .database = nullptr};
    const struct {
        const char* what;
        kova_status expected, status;
    } calls[] = {
        {"create", KOVA_INVALID_ARGUMENT, kova_create(nullptr)},
        {"release null", KOVA_INVALID_HANDLE, kova_release(none)},
        {"release again", KOVA_INVALID_HANDLE, kova_release(gone)},
        {"another kind", KOVA_INVALID_HANDLE, kova_release(reinterpret_cast<kova_component>(text))},
        {"no handle at all", KOVA_INVALID_HANDLE,
         kova_Show(reinterpret_cast<kova_component>(&number), 1, nullptr)},
        {"null result", KOVA_INVALID_ARGUMENT, kova_get_idCassa(component, nullptr)},
        {"null text result", KOVA_INVALID_ARGUMENT, kova_get_ValutaAziendale(component, nullptr)},
        {"null text", KOVA_INVALID_HANDLE, kova_Stampa(component, nullptr)},
        {"null arguments", KOVA_INVALID_ARGUMENT,
         kova_SalvaPagamento(component, nullptr, nullptr, text, text, nullptr, nullptr, nullptr)},
        {"not UTF-8", KOVA_INVALID_ARGUMENT, kova_set_ValutaAziendale(component, "\xe9t\xe9")},
        {"not UTF-8 for a text", KOVA_INVALID_ARGUMENT, kova_text_set(text, "\xff")},
        {"null handlers", KOVA_INVALID_ARGUMENT, kova_connect(component, nullptr, &sink)},
        {"handlers of no size", KOVA_INVALID_ARGUMENT, kova_connect(component, &handlers, &sink)},
        {"null sink", KOVA_INVALID_HANDLE, kova_disconnect(sink)},
        {"no database", KOVA_INVALID_HANDLE,
         kova_Inizializza(component, reinterpret_cast<kova_database>(component))},
        {"null ODBC handle", KOVA_INVALID_ARGUMENT, kova_database_from_odbc(nullptr, &database)},
        {"no driver", KOVA_DATABASE_FAILED, kova_database_open("Driver=none", &database)},
        {"release no database", KOVA_INVALID_HANDLE, kova_database_release(database)},
        {"null name", KOVA_FAILED, kova_get(component, nullptr, &value)},
        {"null value", KOVA_INVALID_ARGUMENT, kova_set(component, "idCassa", nullptr)},
        {"odd kind", KOVA_INVALID_ARGUMENT, kova_set(component, "idCassa", &odd)},
        {"null array", KOVA_INVALID_ARGUMENT, kova_invoke(component, "Show", nullptr, 1, nullptr)},
        {"negative count", KOVA_INVALID_ARGUMENT, kova_invoke(component, "Show", &value, -1, nullptr)},
        {"decimal key", KOVA_INVALID_ARGUMENT, kova_set_decimal_key(2)},
        {"decimals", KOVA_INVALID_ARGUMENT, kova_format_amount(1, 16, &words)},
        {"no day", KOVA_FAILED, kova_format_date(2026, 2, 29, &words)},
        {"no date", KOVA_FAILED, kova_parse_date("31/02/2026", &number, &number, &number)},
    };
    for (const auto& call : calls)
        expect(call.status == call.expected, std::string(call.what) + " is " + std::to_string(call.status));
    expect(none == nullptr && sink == nullptr && database == nullptr && words == nullptr,
           "no result was touched");

    Till till;
    connected(component, till);
    std::thread([&] {
        expect(kova_Show(component, 0, nullptr) == KOVA_WRONG_THREAD &&
                   kova_set_idCassa(component, 3) == KOVA_WRONG_THREAD &&
                   kova_release(component) == KOVA_WRONG_THREAD && newRecords() == 3,
               "calls elsewhere are refused with a record each");
        expect(kova_shut_down() == KOVA_FAILED && newRecords() == 1, "so is the end");
        expect(kova_text_set(text, "elsewhere") == KOVA_OK, "texts are anyone's");
    }).join();
}

/// Touches a button from the event loop, as fingers do.
void touch(const char* name) {
    QTimer::singleShot(0, qApp, [name] {
        for (const QWidget* const window : QApplication::topLevelWidgets())
            if (auto* const button = window->findChild<QAbstractButton*>(name);
                window->isVisible() && button != nullptr)
                return button->click();
        expect(false, std::string("there is a button ") + name);
    });
}

void turnPage(int key) {
    for (QWidget* const window : QApplication::topLevelWidgets())
        if (auto* const tabs = window->findChild<QTabBar*>()) {
            QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
            QCoreApplication::sendEvent(tabs, &press);
        }
}

int windows() {
    return static_cast<int>(std::ranges::count_if(QApplication::topLevelWidgets(),
                                                  [](const QWidget* window) { return window->isVisible(); }));
}

/// A loop of the host's own, on poll() alone; it ends when nothing has happened for a while. How often it
/// woke.
int hostLoop() {
    pollfd waits{};
    expect(kova_event_descriptor(&waits.fd) == KOVA_OK && waits.fd >= 0, "there is a descriptor");
    waits.events = POLLIN;
    int woken = 0;
    while (woken < 1000 && poll(&waits, 1, 100) > 0) {
        ++woken;
        expect(kova_process_events() == KOVA_OK, "what waits is handled");
    }
    return woken;
}

/// What the host hears of a closing, where it may show the dialog again and release the component.
void dialog() {
    const kova_component component = created();
    std::int32_t open = -1;
    Till till;
    kova_on_closed(
        component,
        [](void* user) {
            of(user).seen.emplace_back("closed");
            const auto inside = of(user).inside; // which may set another
            inside();
        },
        &till);
    connectShop(component);
    kova_set_parent_window(4711); // which is none
    kova_Show(component, 0, nullptr);
    kova_DiscardForm(component);
    till.inside = [&] {
        till.inside = [&] { return kova_release(component); };
        return kova_Show(component, 0, nullptr);
    };
    expect(till.seen.empty() && hostLoop() > 0 && till.seen.size() == 1 && windows() == 1,
           "in the host's loop");
    kova_DiscardForm(component);
    hostLoop();
    expect(till.seen.size() == 2 && kova_is_open(component, &open) == KOVA_INVALID_HANDLE &&
               newRecords() == 0,
           "then it is gone, and nothing of all this is a failure");
}

void ownLoop() {
    const kova_component component = created();
    Till till;
    connected(component, till);
    connectShop(component);
    kova_Show(component, 0, nullptr);
    const int quiet = hostLoop();
    expect(quiet > 0 && quiet < 200 && windows() == 1, "the host sleeps while nothing happens");
    touch("cmdConferma");
    hostLoop();
    expect(windows() == 2, "a message is open, and the host goes on");
    touch("cmd1");
    hostLoop();
    expect(windows() == 1, "it is answered in a later turn");

    char here = 0;
    std::ptrdiff_t distance = 0;
    till.inside = [&] {
        const char there = 0;
        turnPage(Qt::Key_Left);
        distance = std::abs(&there - &here);
        touch("cmdConferma");
        touch("cmd1");
        kova_process_events();
        expect(windows() == 1, "what opens inside an event closes there");
        return kova_fail("no paper"), 513;
    };
    turnPage(Qt::Key_Right);
    touch("cmd_print");
    hostLoop();
    expect(till.seen.size() == 1 && distance > 0 && distance < 1 << 20,
           "a handler runs on the host's own stack");
    expect(windows() == 1 && newRecords() == 1, "its failure comes where it belongs");

    touch("CMD_CaricaMoneta");
    hostLoop();
    expect(windows() == 2 && kova_DiscardForm(component) == KOVA_OK && windows() == 0,
           "a coin count is discarded");
    hostLoop();
    kova_Show(component, 0, nullptr);
    touch("cmdConferma");
    hostLoop();
    expect(windows() == 2 && kova_release(component) == KOVA_OK && windows() == 0 &&
               kova_shut_down() == KOVA_OK,
           "a component goes while a message waits");
    const kova_component next = created();
    connectShop(next);
    expect(kova_Show(next, 0, nullptr) == KOVA_OK && hostLoop() > 0 && windows() == 1 && newRecords() == 0,
           "and everything begins again");
    touch("cmdConferma");
    hostLoop();
    expect(windows() == 2 && kova_shut_down() == KOVA_OK && windows() == 0,
           "the end comes while a message waits");
}

const std::map<std::string, void (*)()> parts{
    {"own-loop", ownLoop}, {"events", events}, {"misuse", misuse}, {"dialog", dialog}};

} // namespace

int main(int, char** arguments) {
    setenv("KOVA_LOG", logFile.c_str(), 1);
    parts.at(arguments[1])();
    std::filesystem::remove(logFile);
    return failures == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
