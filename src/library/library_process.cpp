#include "library/library_process.h"

#include "adapters/system/file_error_logger.h"
#include "adapters/system/machine.h"
#include "adapters/system/system_regional_settings.h"
#include "base/error.h"
#include "component/component_state.h"

#include <cstdlib>
#include <utility>

namespace kova {
namespace {

constexpr std::int32_t InvalidCall = 5;
constexpr const char* LogFileName = "/logfile.log";

/// Of the log's file; at first the one of the library's.
std::string& logFolder() {
    static std::string folder = ownFolder();
    return folder;
}

/// The process's log, which nobody deletes: threads may still write to it while the process exits.
std::shared_ptr<ErrorLogger> processLog() {
    static const SystemClock clock;
    static auto* const log = [] {
        auto made = std::make_shared<SystemErrorLogger>(clock);
        // At once, so that records are not lost in a process that never shows a dialog.
        made->SetLogFile(logFolder() + LogFileName);
        return new std::shared_ptr<ErrorLogger>(std::move(made));
    }();
    return *log;
}

std::atomic<bool> exiting = false;

/// Never deletes what is shared.
void leave(std::shared_ptr<LibraryProcess> process) {
    static auto* const left = new std::vector<std::shared_ptr<LibraryProcess>>;
    left->push_back(std::move(process));
}

} // namespace

LibraryProcess::LibraryProcess() : regional_(systemRegionalSettings()), state_(platform()) {
    userInterface_.onTouch([this] { state_.play(Sounds::Tone::Key); });
}

void LibraryProcess::exitBegins() {
    exiting = true;
}

ErrorLogger& LibraryProcess::log() {
    return *processLog();
}

void LibraryProcess::setLogFolder(const std::string& folder) {
    logFolder() = folder;
    log().SetLogFile(folder + LogFileName);
}

void LibraryProcess::useLogFolder(const std::string& folder) {
    setLogFolder(folder);
    state_.platform.componentFolder = folder; // where each dialog sets the file
}

Platform LibraryProcess::platform() {
    return {.userInterface = userInterface_,
            .eventLoop = eventLoop_,
            .clock = clock_,
            .languageRuntime = language_,
            .settingsStore = *settings_,
            .databases = databases_,
            .regional = regional_,
            .makeErrorLogger = processLog,
            .componentFolder = logFolder(),
            .hostCalls = this,
            .sounds = sounds_.get()};
}

void LibraryProcess::enter(CallKind kind) {
    if (!onItsThread())
        throw Error(InvalidCall, "Called from another thread than the user interface's");
    if (kind == CallKind::Opening && phase_ != Phase::Running)
        throw Error(InvalidCall, "The library has been shut down");
    if (kind == CallKind::Opening)
        followRegion();
    ++calls_;
    if (userInterface_.showsWindow() || eventLoop_.handling()) // else there is nothing to touch
        eventLoop_.workBegins();
    events_ += kind == CallKind::Event ? 1 : 0;
}

void LibraryProcess::leave(CallKind kind) noexcept {
    if (kind == CallKind::Event && --events_ == 0 && phase_ == Phase::Ending)
        closeDialogs();
    eventLoop_.workEnds();
    if (--calls_ > 0)
        return;
    if (phase_ == Phase::Ending) {
        eventLoop_.finishTurns();
        eventLoop_.afterHandlers([this] {
            if (calls_ == 0)
                finish();
        });
    }
    eventLoop_.hostLeaves();
}

// The user may set another region at any time. What stands on the screen was written in the one before, and
// is read in no other: 1.500 may be a thousand times as much there.
void LibraryProcess::followRegion() {
    if (userInterface_.showsWindow())
        return;
    RegionalSettings present = systemRegionalSettings();
    const std::lock_guard lock(regionalMutex_);
    regional_ = std::move(present);
}

RegionalSettings LibraryProcess::regional() {
    if (onItsThread())
        followRegion();
    const std::lock_guard lock(regionalMutex_);
    return regional_;
}

bool LibraryProcess::unused() const {
    return calls_ == 0 && !eventLoop_.handling();
}

std::shared_ptr<cls_Kova_Drawer_Man> LibraryProcess::createComponent() {
    std::erase_if(components_, [](const auto& component) { return component.expired(); });
    static const int registered = std::atexit(exitBegins);
    (void)registered;
    // A component keeps this alive until it is deleted, and no longer: weak references stay to it.
    auto component = ComponentState::createComponent(
        state_, [self = shared_from_this()](cls_Kova_Drawer_Man* released) mutable {
            const auto process = std::move(self);
            process->release(released);
        });
    components_.push_back(component);
    return component;
}

void LibraryProcess::release(cls_Kova_Drawer_Man* component) {
    std::unique_ptr<cls_Kova_Drawer_Man> released(component);
    if (!exiting && (onItsThread() || phase_ == Phase::Ended))
        return;
    if (exiting)
        kova::leave(shared_from_this());
    else
        state_.logError("release", "Called from another thread than the user interface's");
    const std::lock_guard lock(strayMutex_);
    strays_.push_back(std::move(released));
}

void LibraryProcess::setScreenAids(const ScreenAids& aids) {
    state_.screenAids = aids;
    state_.entryChanged();
}

void LibraryProcess::setDecimalKey(DecimalKey key) {
    state_.decimalKey = key;
    state_.entryChanged();
}

void LibraryProcess::closeDialogs() {
    for (const auto& known : std::vector(components_))
        if (const auto component = known.lock())
            component->DiscardForm();
}

void LibraryProcess::end(std::function<void()> ended) {
    if (phase_ != Phase::Running)
        return;
    phase_ = Phase::Ending;
    ended_ = std::move(ended);
    if (events_ == 0)
        closeDialogs();
}

void LibraryProcess::finish() {
    const auto self = shared_from_this();
    phase_ = Phase::Ended;
    ended_();
    closeDialogs();
    {
        const std::lock_guard lock(strayMutex_);
        strays_.clear();
    }
    eventLoop_.settle();
    eventLoop_.endApplication();
}

} // namespace kova
