#include "library/library.h"

#include "adapters/databases/databases.h"
#include "adapters/qt/look.h"
#include "adapters/system/machine.h"
#include "adapters/system/system_regional_settings.h"
#include "library/library_process.h"
#include "services/conversions.h"
#include "services/number_format.h"

#include <QCoreApplication>

#include <mutex>
#include <optional>
#include <utility>

namespace kova {
namespace {

/// What the first component made, until its end.
struct Present {
    std::mutex mutex;
    std::shared_ptr<LibraryProcess> process;
};

/// Never destroyed by itself: when the program's static objects go, it is too late to end a Qt application.
Present& present() {
    static auto* const present = new Present;
    return *present;
}

std::shared_ptr<LibraryProcess> presentProcess() {
    auto& [mutex, process] = present();
    const std::lock_guard lock(mutex);
    return process;
}

/// For those who have no caller to tell: the log has it.
void shutDownQuietly() {
    try {
        shutDown();
    } catch (const Error&) { // NOLINT(bugprone-empty-catch)
    }
}

/// Ends the library with the thread that uses it. The objects of a thread go before the static ones of the
/// process, among them those that Qt needs, and a component may be one of these.
void threadEnds(bool processToo) {
    if (const auto process = presentProcess(); process && process->onItsThread() && process->unused())
        shutDownQuietly();
    if (processToo)
        LibraryProcess::exitBegins();
}

std::shared_ptr<LibraryProcess> process() {
    auto& [mutex, process] = present();
    const std::lock_guard lock(mutex);
    if (!process) {
        const bool hostHasQt = QCoreApplication::instance() != nullptr;
        process = std::make_shared<LibraryProcess>();
        if (hostHasQt)
            qAddPostRoutine(shutDownQuietly);
        atEndOfThread(threadEnds);
    }
    return process;
}

void forgetProcess() {
    qRemovePostRoutine(shutDownQuietly);
    auto& [mutex, process] = present();
    const std::lock_guard lock(mutex);
    process = nullptr;
}

/// One call of the host, on the process that `find` returns; without one it does nothing. What refuses it, or
/// keeps the library from beginning, is one record.
template <class Body>
auto call(const char* label, CallKind kind, std::shared_ptr<LibraryProcess> (*find)(), const Body& body) {
    std::shared_ptr<LibraryProcess> found;
    std::optional<HostCall> admitted;
    try {
        found = find();
        if (found)
            admitted.emplace(found, found.get(), kind);
    } catch (const Error& refusal) {
        LibraryProcess::log().LogError(label, refusal.what(), nullptr, 0, "");
        throw;
    }
    using Result = decltype(body(*found));
    return found ? body(*found) : Result();
}

} // namespace

std::shared_ptr<cls_Kova_Drawer_Man> createComponent() {
    return call("createComponent", CallKind::Opening, process,
                [](LibraryProcess& all) { return all.createComponent(); });
}

std::shared_ptr<DatabaseConnection> openDatabase(const std::string& connectionString) {
    return Databases(machineTimeouts(*machineSettings())).open(connectionString);
}

std::shared_ptr<DatabaseConnection> hostOdbcConnection(void* connectionHandle) {
    return shareOdbcConnection(connectionHandle);
}

void setLanguage(std::int32_t id, const std::string& name) {
    call("setLanguage", CallKind::Operation, process,
         [&](LibraryProcess& all) { all.language().setLanguage(id, name); });
}

std::int32_t languageId() {
    if (!presentProcess())
        return SystemLanguageRuntime().languageId();
    return call("languageId", CallKind::Operation, presentProcess,
                [](LibraryProcess& all) { return all.language().languageId(); });
}

void setScreenAids(const ScreenAids& aids) {
    call("setScreenAids", CallKind::Operation, process,
         [&](LibraryProcess& all) { all.setScreenAids(aids); });
}

void setSounds(bool wanted) {
    call("setSounds", CallKind::Operation, process, [&](LibraryProcess& all) { all.setSounds(wanted); });
}

void setWaitingSign(bool wanted) {
    call("setWaitingSign", CallKind::Operation, process,
         [&](LibraryProcess& all) { all.setWaitingSign(wanted); });
}

void setDecimalKey(DecimalKey key) {
    call("setDecimalKey", CallKind::Operation, process, [&](LibraryProcess& all) { all.setDecimalKey(key); });
}

void setParentWindow(std::uint64_t window) {
    call("setParentWindow", CallKind::Operation, process,
         [&](LibraryProcess& all) { all.setParentWindow(window); });
}

void setLogFolder(const std::string& folder) {
    if (presentProcess())
        call("setLogFolder", CallKind::Operation, presentProcess,
             [&](LibraryProcess& all) { all.useLogFolder(folder); });
    else
        LibraryProcess::setLogFolder(folder);
}

RegionalSettings regionalSettings() {
    const auto present = presentProcess();
    return present ? present->regional() : systemRegionalSettings();
}

std::optional<DateTime> parseDate(const std::string& text) {
    return parseDate(text, regionalSettings());
}

std::string formatDate(DateTime day) {
    return shortDate(day, regionalSettings());
}

std::string formatAmount(double amount, std::int16_t decimals) {
    const RegionalSettings regional = regionalSettings();
    return NumberFormat(regional).FormatAmount(amount, decimals);
}

std::string fontFamily() {
    if (QCoreApplication::instance() == nullptr)
        return {};
    return look::font(Font(), Scale()).family().toStdString();
}

void processEvents() {
    call("processEvents", CallKind::Operation, presentProcess,
         [](LibraryProcess& all) { all.processEvents(); });
}

int eventDescriptor() {
    return call("eventDescriptor", CallKind::Operation, process,
                [](LibraryProcess& all) { return all.eventDescriptor(); });
}

void onHostStack(const std::function<void()>& call) {
    if (const auto present = presentProcess(); present && present->onItsThread())
        present->onHostStack(call);
    else
        call();
}

void shutDown() {
    call("shutDown", CallKind::Operation, presentProcess,
         [](LibraryProcess& all) { all.end(forgetProcess); });
}

} // namespace kova
