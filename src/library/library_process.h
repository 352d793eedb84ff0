#pragma once
#include "adapters/databases/databases.h"
#include "adapters/qt/event_loop.h"
#include "adapters/qt/user_interface.h"
#include "adapters/system/machine.h"
#include "adapters/system/system_language_runtime.h"
#include "component/cls_Kova_Drawer_Man.h"
#include "ports/host_calls.h"
#include "services/process_state.h"

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace kova {

/// Calls a function of the host's where its language may run, wherever the library runs just now.
void onHostStack(const std::function<void()>& call);

/// What all components of a process share, put together for a real machine with a screen. The components
/// keep it alive: a host may hold them longer than the library does. It belongs to the thread that made it,
/// and admits calls of the host on that one alone.
class LibraryProcess final : public HostCalls, public std::enable_shared_from_this<LibraryProcess> {
  public:
    /// Throws Error when no windows can be shown.
    LibraryProcess();

    /// From now on components that a host releases stay as they are: Qt's own static objects may be gone.
    static void exitBegins();
    /// The error log of the whole process, which is there before and after any of this.
    static ErrorLogger& log();
    /// Where that writes its file; of processes that begin later too.
    static void setLogFolder(const std::string& folder);

    void enter(CallKind kind) override;
    void leave(CallKind kind) noexcept override;
    /// Whether no call of the host's is running, nor anything that Qt called.
    [[nodiscard]] bool unused() const;
    [[nodiscard]] bool onItsThread() const { return std::this_thread::get_id() == thread_; }

    [[nodiscard]] std::shared_ptr<cls_Kova_Drawer_Man> createComponent();
    [[nodiscard]] SystemLanguageRuntime& language() { return language_; }
    /// Of the moment; while a window shows, of when it opened. Any thread may ask.
    [[nodiscard]] RegionalSettings regional();
    void useLogFolder(const std::string& folder);
    void setScreenAids(const ScreenAids& aids);
    void setDecimalKey(DecimalKey key);
    void setSounds(bool wanted) { state_.sounds = wanted; }
    void setWaitingSign(bool wanted) { state_.waitingSign = wanted; }
    void setParentWindow(std::uint64_t window) { userInterface_.setHostWindow(static_cast<WId>(window)); }
    void processEvents() { eventLoop_.takeTurn(); }
    [[nodiscard]] int eventDescriptor() { return eventLoop_.eventDescriptor(); }
    void onHostStack(const std::function<void()>& call) { eventLoop_.onHostStack(call); }
    /// Closes all dialogs, at once or when the outermost event has returned, and ends the Qt application, if
    /// it is the library's, when also all other calls have; then calls `ended`. Components may be released
    /// afterwards, whenever the host likes.
    void end(std::function<void()> ended);

  private:
    enum class Phase { Running, Ending, Ended };
    Platform platform();
    void release(cls_Kova_Drawer_Man* component);
    void followRegion();
    void closeDialogs();
    void finish();

    const std::thread::id thread_ = std::this_thread::get_id();
    std::atomic<Phase> phase_ = Phase::Running;
    int calls_ = 0;  ///< of the host, one inside another
    int events_ = 0; ///< of these, requests to the host
    std::function<void()> ended_;
    // In order of dependence: the Qt application, which the event loop may own, goes last.
    QtEventLoop eventLoop_;
    RegionalSettings regional_; ///< only its thread writes
    std::mutex regionalMutex_;  ///< of that writing, and of reading on other threads
    QtUserInterface userInterface_{eventLoop_, regional_};
    SystemClock clock_;
    SystemLanguageRuntime language_;
    std::unique_ptr<SettingsStore> settings_ = machineSettings();
    Databases databases_{machineTimeouts(*settings_)};
    std::unique_ptr<Sounds> sounds_ = systemSounds();
    ProcessState state_;
    std::vector<std::weak_ptr<cls_Kova_Drawer_Man>> components_;
    std::mutex strayMutex_;
    /// Released where they could not be deleted.
    std::vector<std::unique_ptr<cls_Kova_Drawer_Man>> strays_;
};

} // namespace kova
