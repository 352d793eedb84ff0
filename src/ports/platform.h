#pragma once
#include "ports/clock.h"
#include "ports/database.h"
#include "ports/error_logger.h"
#include "ports/event_loop.h"
#include "ports/host_calls.h"
#include "ports/language_runtime.h"
#include "ports/regional_settings.h"
#include "ports/settings_store.h"
#include "ports/user_interface.h"

namespace kova {

/// Everything that the component asks of its surroundings. The composition root owns the parts, which outlive
/// every component.
struct Platform {
    UserInterface& userInterface;
    EventLoop& eventLoop;
    Clock& clock;
    LanguageRuntime& languageRuntime;
    const SettingsStore& settingsStore;
    DatabaseProvider& databases;
    const RegionalSettings& regional; ///< read at each use, so that a change shows at once
    ErrorLoggerFactory makeErrorLogger;
    std::string componentFolder; ///< folder of the component's own file, without a separator at its end
    std::string applicationTitle = "Kova_Drawer_Man";
    HostCalls* hostCalls = nullptr; ///< null admits all calls
};

} // namespace kova
