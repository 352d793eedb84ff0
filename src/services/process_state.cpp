#include "services/process_state.h"

#include "base/ascii_text.h"
#include "services/conversions.h"
#include "services/message_box.h"

#include <atomic>
#include <utility>

namespace kova {

ProcessState::ProcessState(Platform services) : platform(std::move(services)) {}
ProcessState::~ProcessState() = default;

void ProcessState::play(Sounds::Tone tone) noexcept {
    if (platform.sounds != nullptr && machineSounds.value_or(sounds))
        platform.sounds->play(tone);
}

ErrorLogger& ProcessState::ErrorLog() {
    std::call_once(loggerMade_, [this] { errorLogger_ = platform.makeErrorLogger(); });
    return *errorLogger_;
}

NumberFormat& ProcessState::numberFormat() {
    if (!numberFormat_)
        numberFormat_ = std::make_unique<NumberFormat>(platform.regional);
    return *numberFormat_;
}

SqlDateFormatter& ProcessState::sqlDateFormatter() {
    if (!sqlDateFormatter_)
        sqlDateFormatter_ = std::make_unique<SqlDateFormatter>(platform.regional);
    return *sqlDateFormatter_;
}

frmMsgBox& ProcessState::messageWindow() {
    if (!messageWindow_)
        messageWindow_ = std::make_unique<frmMsgBox>(*this);
    return *messageWindow_;
}

std::string ProcessState::waitingText(std::int32_t language, Word what, std::chrono::seconds gone,
                                      std::chrono::seconds limit, std::size_t rows) {
    constexpr std::chrono::seconds LimitShown{3};
    const auto word = [&](Word which) { return std::string(inWords(which, language)); };
    std::string text;
    if (gone.count() > 0)
        text = std::to_string(gone.count()) + " s";
    if (gone >= LimitShown && gone <= limit) // behind it the driver waits for the end of its query
        text += " " + word(Word::OfLimit) + " " + std::to_string(limit.count()) + " s";
    if (rows > 0)
        text += (text.empty() ? "" : " · ") + std::to_string(rows) + " " + word(Word::Rows);
    return word(what) + " …\n" + text;
}

std::optional<bool> machineSwitch(const SettingsStore& store, const std::string& name) {
    const auto value = store.read(std::string(SettingsStore::BaseKey), "Screen", name);
    return value ? std::optional(*value != "0" && !equalIgnoringCase(*value, "off")) : std::nullopt;
}

bool ProcessState::tellsOfWaiting() const {
    return waitingSign && machineSwitch(platform.settingsStore, "Waiting").value_or(true);
}

void ProcessState::await(const Awaited& awaited, const std::function<void()>& work) {
    if (tellsOfWaiting())
        platform.userInterface.await(awaited, work);
    else
        work();
}

void ProcessState::work(Word what, const std::function<void()>& work) {
    const auto text = [what, language = CurrentLanguageId](std::chrono::seconds gone) {
        return waitingText(language, what, gone, {}, 0);
    };
    await({text, true}, work);
}

void ProcessState::askServer(const Awaited& awaited, const std::function<void()>& work) {
    try {
        await(awaited, work);
        if (std::exchange(serverSilent, false))
            serverSilenceChanged();
    } catch (const DatabaseError& error) {
        const bool silent =
            meansNoAnswer(error) || (serverSilent && error.number() == DatabaseError::NotConnected);
        if (std::exchange(serverSilent, silent) != silent)
            serverSilenceChanged();
        throw;
    }
}

Recordset ProcessState::query(Query query, Word what) {
    std::optional<Recordset> result;
    this->query(std::move(query), what, [&](Recordset rows) { result = std::move(rows); });
    return *result;
}

void ProcessState::query(Query query, Word what, const std::function<void(Recordset)>& use) {
    // The slot may be refilled while the query runs.
    const auto connection = SharedConnection ? SharedConnection : std::make_shared<ClosedConnection>();
    std::atomic<std::size_t> rows = 0;
    std::atomic<bool> answered = false;
    query.rowsRead = &rows;
    const auto text = [&, what, language = CurrentLanguageId](std::chrono::seconds gone) {
        const auto limit = answered ? std::chrono::seconds() : connection->timeout();
        return waitingText(language, what, gone, limit, rows);
    };
    askServer({text, connection->onAnyThread()}, [&] {
        Recordset result = connection->query(query);
        rows = static_cast<std::size_t>(result.recordCount());
        answered = true;
        use(std::move(result));
    });
}

std::shared_ptr<DatabaseConnection> ProcessState::openDatabase(const std::string& connectionString) {
    std::shared_ptr<DatabaseConnection> opened;
    auto& databases = platform.databases;
    const auto text = [language = CurrentLanguageId,
                       limit = databases.logInTimeout(connectionString)](std::chrono::seconds gone) {
        return waitingText(language, Word::Connecting, gone, limit, 0);
    };
    askServer({text, databases.opensOnAnyThread(connectionString)},
              [&] { opened = databases.open(connectionString); });
    return opened;
}

void ProcessState::logError(std::string_view label, const std::string& message) {
    ErrorLog().LogError(std::string(label), message, nullptr, 0, "");
}

std::string getDbValue(ProcessState& process, const std::string& key, const std::string& fallback) {
    constexpr std::string_view Procedure = "getDbValue";
    std::string result;
    try {
        const Recordset rows = process.query(
            {"SELECT * FROM tabImpostazioni WHERE descrizione='" + key + "'"}, Word::ReadingSettings);
        if (rows.endOfFile())
            result = fallback;
        else
            result = asText(NullToDefault(rows.field("valore"), fallback), process.platform.regional);
    } catch (const Error& failure) {
        process.logError(Procedure, std::to_string(failure.number()) + "-" + failure.what());
    } catch (const std::exception& failure) {
        process.logError(Procedure, std::to_string(DatabaseError::Unspecified) + "-" + failure.what());
    } catch (...) {
        process.logError(Procedure, std::to_string(DatabaseError::Unspecified) + "-Unknown error");
    }
    return result;
}

void InitOpt(ProcessState& process) {
    trapped(process, "InitOpt : ", [&] {
        auto& selection = process.selection;
        selection.idAttivita = -1;
        selection.isIncasso = false;
        selection.isOpenECRDrawer = false;
        selection.Cassetto = 0;
        selection.idPagamento = -1;
        selection.idPagamentoVersamento = -1;

        auto& settings = process.settings;
        const auto& regional = process.platform.regional;
        settings.ValutaAziendale = getDbValue(process, "ValutaAziendale", "€");
        settings.CifreDecimali = toInt16(getDbValue(process, "CifreDecimali", "2"), regional);
        process.numberFormat().SetAmountDecimals(settings.CifreDecimali);
        settings.CifreDecimaliQuantita = toInt16(getDbValue(process, "CifreDecimaliQuantita", "0"), regional);
        process.numberFormat().SetQuantityDecimals(settings.CifreDecimaliQuantita);
        settings.idCassettoCausPred_Prelievi =
            toInt32(getDbValue(process, "idCassettoCausPred_Prelievi", "-1"), regional);
        settings.idCassettoCausPred_Versamenti =
            toInt32(getDbValue(process, "idCassettoCausPred_Versamenti", "-1"), regional);
    });
    process.entryChanged();
}

} // namespace kova
