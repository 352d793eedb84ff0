#pragma once
#include "platform/clock.h"
#include "platform/database.h"
#include "platform/error_logger.h"
#include "platform/event_loop.h"
#include "platform/host_calls.h"
#include "platform/language_runtime.h"
#include "platform/regional_settings.h"
#include "platform/settings_store.h"
#include "platform/user_interface.h"

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
