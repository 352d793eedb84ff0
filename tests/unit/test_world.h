#pragma once
#include "adapters/headless/headless.h"
#include "coin_count/frm_CaricaMoneta.h"
#include "component/component_state.h"
#include "drawer_dialog/frm_Drawer_Management.h"
#include "services/movement.h"
#include "services/process_state.h"
#include "widgets/control.h"

#include <functional>
#include <map>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace kova {

inline void PrintTo(const Movement& one, std::ostream* out) {
    *out << one.idpagamento << ' ' << one.importo << ' ' << one.Valuta << " \"" << one.note << "\" "
         << one.cassetto << ' ' << one.tipoIncasso << (one.isIncasso ? " in" : " out");
}

} // namespace kova

namespace kova::test {

/// Answers each query by the first table whose piece the text contains; records the texts, and fails on
/// demand.
class ScriptedDatabase final : public DatabaseConnection {
  public:
    struct Failure {
        std::string piece;
        std::optional<std::size_t> afterRows; ///< nothing: when opened
    };
    void table(const std::string& piece, std::vector<std::string> columns,
               std::vector<std::vector<Value>> rows);
    void setting(const std::string& key, const Value& value);
    Recordset query(const Query& query) override;

    std::vector<Failure> failures;
    std::vector<std::string> texts;

  private:
    std::vector<std::pair<std::string, std::shared_ptr<Snapshot>>> tables_;
};

struct LogRecord {
    std::string label, message;
    friend bool operator==(const LogRecord&, const LogRecord&) = default;
};

inline void PrintTo(const LogRecord& record, std::ostream* out) {
    *out << record.label << " | " << record.message;
}

/// A sink that records and then does what the test says.
class RecordingSink : public EventSink {
  public:
    void SalvaPagamento(std::int32_t& idpagamento, double& importo, std::string& Valuta, std::string& note,
                        std::int16_t& cassetto, std::int32_t& tipoIncasso, bool& isIncasso) override {
        movements.push_back({idpagamento, importo, Valuta, note, cassetto, tipoIncasso, isIncasso});
        happened("SalvaPagamento");
    }
    void Stampa(std::string& day) override {
        days.push_back(day);
        happened("Stampa");
    }
    void Anteprima(std::string& day) override {
        days.push_back(day);
        happened("Anteprima");
    }
    void ApriCassetto() override { happened("ApriCassetto"); }

    std::vector<Movement> movements;
    std::vector<std::string> events;
    std::vector<std::string> days; ///< of which documents were asked for
    std::function<void(const std::string&)> then;

  private:
    void happened(const std::string& event) {
        events.push_back(event);
        if (then)
            then(event);
    }
};

/// A control of the wanted kind; anything else throws, which fails the test.
template <class Kind>
Kind& as(Control* control) {
    struct Pick : ControlVisitor {
        using ControlVisitor::visit;
        void visit(Kind& found) override { kind = &found; }
        Kind* kind = nullptr;
    } pick;
    if (control != nullptr)
        control->accept(pick);
    if (pick.kind == nullptr)
        throw std::logic_error("no such control");
    return *pick.kind;
}

/// One process with a component on doubles: virtual time, a scripted database, and hooks to make each fail.
class World {
  public:
    World();
    /// On other windows, which are made before it and go after it.
    World(UserInterface& userInterface, EventLoop& events);

    ScriptedDatabase& database() { return *database_; }
    /// Connects, and forgets the records and texts of that.
    void connect();
    void show(std::int32_t method = 0) { component->Show(method); }
    void wait(int milliseconds) { loop.advance(std::chrono::milliseconds(milliseconds)); }
    Window& dialog() { return *dialogOf(*component)->window(); }
    template <class Kind>
    Kind& control(const std::string& name, std::optional<int> index = {}) {
        return as<Kind>(dialog().find(name, index));
    }
    /// Of the coin count, which must be loaded.
    template <class Kind>
    Kind& coin(const std::string& name, std::optional<int> index = {}) {
        return as<Kind>(process.coinDialog->window()->find(name, index));
    }
    /// Opens the coin count and does that in it; left open, it is closed by the system then.
    void countCoins(const std::function<void()>& then);
    /// Fills in everything that a single movement needs.
    void composeMovement();
    /// A modal loop: does what the test says, then leaves the window as its user would.
    void passModal(Window& window);
    std::vector<LogRecord> takeLog() { return std::exchange(log, {}); }

    struct FixedClock final : Clock {
        [[nodiscard]] DateTime now() const override { return time; }
        DateTime time{};
    } clock;
    struct Store final : SettingsStore {
        [[nodiscard]] std::optional<std::string> read(const std::string&, const std::string&,
                                                      const std::string& name) const override {
            const auto found = values.find(name);
            return found == values.end() ? std::nullopt : std::optional(found->second);
        }
        std::map<std::string, std::string> values;
    } store;
    struct Runtime final : LanguageRuntime {
        [[nodiscard]] std::int32_t languageId() const override { return id; }
        [[nodiscard]] std::string languageName() const override { return "name"; }
        void change(std::int32_t to) {
            id = to;
            languageChanged(id, "name");
        }
        std::int32_t id = 1040;
    } runtime;
    /// Fails the next calls of the kinds named.
    struct Faults {
        bool startTimer = false, present = false, runModal = false, messageBox = false;
        bool leaveModal = false; ///< a modal loop ends with its window on the screen
        int log = 0;             ///< how many records fail to be written
    } faults;

    std::vector<LogRecord> log;
    std::vector<std::string> messages;   ///< texts of the message window, and of platform boxes behind a "!"
    std::string logApplication, logFile; ///< as the error log was told
    int views = 0;                       ///< of windows that are loaded
    RegionalSettings regional;
    std::function<std::shared_ptr<DatabaseConnection>(const std::string&)>
        openDatabase;                         ///< instead of the double
    std::function<void(Window&)> onPresent;   ///< sees each window before its start-up
    std::function<void(Window&)> insideModal; ///< what happens in a modal loop before it is closed
    std::function<void()> insideBox;          ///< what happens while a platform box is open
    HeadlessEventLoop loop;

  private:
    Platform platform(UserInterface& userInterface, EventLoop& events);
    void open();
    class FaultyLoop;
    class FaultyInterface;
    struct Provider final : DatabaseProvider {
        explicit Provider(World& owner) : world(owner) {}
        std::shared_ptr<DatabaseConnection> open(const std::string& text) override;
        World& world;
    } provider_{*this};
    std::shared_ptr<ScriptedDatabase> database_ = std::make_shared<ScriptedDatabase>();
    std::unique_ptr<EventLoop> faultyLoop_;
    std::unique_ptr<UserInterface> userInterface_;

  public:
    ProcessState process;
    RecordingSink sink;
    std::shared_ptr<cls_Kova_Drawer_Man> component;
    Connection sinkConnection;
};

/// 0 without an error.
inline std::int32_t errorNumber(const std::function<void()>& action) {
    try {
        action();
    } catch (const Error& error) {
        return error.number();
    }
    return 0;
}

} // namespace kova::test
