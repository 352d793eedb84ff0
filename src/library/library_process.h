#pragma once
#include "adapters/databases/databases.h"
#include "adapters/qt/event_loop.h"
#include "adapters/qt/user_interface.h"
#include "adapters/system/ini_settings_store.h"
#include "adapters/system/system_clock.h"
#include "adapters/system/system_language_runtime.h"
#include "component/cls_Kova_Drawer_Man.h"
#include "services/process_state.h"

#include <memory>
#include <vector>

namespace kova {

/// What all components of a process share, put together for a real machine with a screen. The components
/// keep it alive: a host may hold them longer than the library does.
class LibraryProcess : public std::enable_shared_from_this<LibraryProcess> {
  public:
    LibraryProcess();

    [[nodiscard]] std::shared_ptr<cls_Kova_Drawer_Man> createComponent();
    [[nodiscard]] DatabaseProvider& databases() { return databases_; }
    [[nodiscard]] SystemLanguageRuntime& language() { return language_; }
    void setScreenAids(const ScreenAids& aids);
    void setDecimalKey(DecimalKey key);
    void processEvents() { eventLoop_.processPendingEvents(); }
    /// Closes all dialogs, and ends the Qt application if it is the library's. Components may be released
    /// afterwards, whenever the host likes.
    void end();

  private:
    Platform platform();

    // In order of dependence: the Qt application, which the event loop may own, goes last.
    QtEventLoop eventLoop_{QtEventLoop::Time::Live};
    RegionalSettings regional_;
    QtUserInterface userInterface_{eventLoop_, regional_};
    SystemClock clock_;
    SystemLanguageRuntime language_;
    IniSettingsStore settings_{settingsFile()};
    Databases databases_;
    ProcessState state_;
    std::vector<std::weak_ptr<cls_Kova_Drawer_Man>> components_;
};

} // namespace kova
