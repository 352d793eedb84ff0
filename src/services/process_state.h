#pragma once
#include "ports/platform.h"
#include "services/conversions.h"
#include "services/number_format.h"
#include "services/screen_aids.h"
#include "services/texts.h"
#include "widgets/window.h"

#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

namespace kova {

class frmMsgBox;
class frm_CaricaMoneta;
class frm_Drawer_Management;

/// The movement being composed; one per process, shared by all components and kept while no dialog is open.
struct SelectionState {
    std::int32_t idAttivita = -1; ///< -1: none
    bool isIncasso = false;
    bool isOpenECRDrawer = false;
    std::int16_t Cassetto = 0;               ///< [1-4], 0: none
    std::int32_t idPagamento = -1;           ///< -1: none
    std::int32_t idPagamentoVersamento = -1; ///< -1: none
    std::string Valuta;                      ///< empty: none
    bool MultiValuta = false;
};

/// The settings read from the database when a host connects.
struct Settings {
    std::string ValutaAziendale; ///< the company currency as configured; not the component's option
    std::int16_t CifreDecimali = 0;
    std::int16_t CifreDecimaliQuantita = 0;
    std::int32_t idCassettoCausPred_Prelievi = 0;
    std::int32_t idCassettoCausPred_Versamenti = 0;
};

/// Everything that exists once per process and is shared by its components. The composition root builds it
/// and hands it down; it outlives every component.
class ProcessState {
  public:
    explicit ProcessState(Platform platform);
    ~ProcessState();
    ProcessState(const ProcessState&) = delete;
    ProcessState& operator=(const ProcessState&) = delete;

    Platform platform;
    std::shared_ptr<DatabaseConnection> SharedConnection; ///< null until a host connects
    Settings settings;
    std::string SoftwareName;
    SelectionState selection;
    ScreenAids screenAids;   ///< as the host wants them; the machine's settings may leave out more
    bool waitingSign = true; ///< the same, also of the notice that the server does not answer
    DecimalKey decimalKey =
        DecimalKey::Comma; ///< as the host wants it, where the machine's settings do not say
    bool sounds = false;   ///< as the host wants them, where the machine's settings do not say
    std::optional<bool> machineSounds;
    /// The selection, or a setting that open dialogs show, may have changed.
    Signal<> entryChanged;
    int loadedDialogs = 0; ///< movement dialogs
    /// The movement dialog whose handler runs, the innermost of several; null between handlers.
    const frm_Drawer_Management* acting = nullptr;
    StringSource strings;
    std::int32_t CurrentLanguageId = 0; ///< 0 until the first selection, then 1040, 1031 or 9
    WindowStack windows;
    /// The coin count while one is open, and after it could not be taken over; otherwise null.
    std::shared_ptr<frm_CaricaMoneta> coinDialog;

    /// Where sounds are wanted.
    void play(Sounds::Tone tone) noexcept;

    /// Created on first use, like those below.
    ErrorLogger& ErrorLog();
    NumberFormat& numberFormat();
    SqlDateFormatter& sqlDateFormatter();
    frmMsgBox& messageWindow();
    /// Null while no message was ever shown.
    [[nodiscard]] frmMsgBox* existingMessageWindow() { return messageWindow_.get(); }

    /// Runs a query on the shared connection; without one it fails like a closed connection. `what` is read
    /// tells a user who has to wait.
    Recordset query(Query query, Word what);
    /// The same; making something of a long result is part of what is waited for. `use` runs where the query
    /// does, perhaps beside the user interface's thread: it leaves the models alone.
    void query(Query query, Word what, const std::function<void(Recordset)>& use);
    /// Opens a connection. Throws DatabaseError.
    std::shared_ptr<DatabaseConnection> openDatabase(const std::string& connectionString);
    /// Does what has nothing to do with the server and leaves the models alone, beside the user interface's
    /// thread; `what` is done tells a user who has to wait.
    void work(Word what, const std::function<void()>& work);
    /// Whether users are told that they wait, and that the server is silent.
    [[nodiscard]] bool tellsOfWaiting() const;
    bool serverSilent = false; ///< the last time that the server was asked, no answer came
    Signal<> serverSilenceChanged;
    /// One record of the error log: the fixed label of a procedure and the error's description. May be called
    /// on any thread, as long as the logger allows it.
    void logError(std::string_view label, const std::string& message);

  private:
    void await(const Awaited& awaited, const std::function<void()>& work);
    void askServer(const Awaited& awaited, const std::function<void()>& work);
    [[nodiscard]] static std::string waitingText(std::int32_t language, Word what, std::chrono::seconds gone,
                                                 std::chrono::seconds limit, std::size_t rows);
    std::once_flag loggerMade_;
    std::shared_ptr<ErrorLogger> errorLogger_;
    std::unique_ptr<NumberFormat> numberFormat_;
    std::unique_ptr<SqlDateFormatter> sqlDateFormatter_;
    std::unique_ptr<frmMsgBox> messageWindow_;
};

/// A switch of the machine's, of section Screen; nothing where the machine leaves it to the host.
std::optional<bool> machineSwitch(const SettingsStore& store, const std::string& name);

/// Runs `body`. Any failure ends it, becomes exactly one record under `label`, and goes no further;
/// `onFailure` is then called with its description. Returns whether `body` ended without a failure.
template <class OnFailure, class Body>
bool trapped(ProcessState& process, std::string_view label, OnFailure&& onFailure, Body&& body) {
    std::string description;
    try {
        std::forward<Body>(body)();
        return true;
    } catch (const std::exception& failure) {
        description = failure.what();
    } catch (...) {
        description = "Unknown error";
    }
    process.logError(label, description);
    std::forward<OnFailure>(onFailure)(description);
    return false;
}

template <class Body>
bool trapped(ProcessState& process, std::string_view label, Body&& body) {
    return trapped(
        process, label, [](const std::string&) {}, std::forward<Body>(body));
}

/// Runs `step`; a failure is skipped and leaves no record. Returns whether there was none.
template <class Step>
bool attempt(Step&& step) noexcept {
    try {
        std::forward<Step>(step)();
        return true;
    } catch (...) {
        return false;
    }
}

/// Runs `body` and then `last`, also where `body` fails: its failure goes on after `last`. A destructor could
/// not do so, since `last` may fail as well.
template <class Body, class Last>
void ended(Body&& body, Last&& last) {
    try {
        std::forward<Body>(body)();
    } catch (...) {
        last();
        throw;
    }
    last();
}

/// One setting of `tabImpostazioni` as text: `fallback` when the key is missing or its value Null. The key
/// goes into the query as it stands. A failure is logged and gives an empty text, not `fallback`.
std::string getDbValue(ProcessState& process, const std::string& key, const std::string& fallback);

/// Reads the settings and resets the selection, but for its currency. A failure is logged and ends the
/// reading; settings not yet read keep what they had.
void InitOpt(ProcessState& process);

} // namespace kova
