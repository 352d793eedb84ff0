#pragma once
#include "base/signal.h"
#include "ports/database.h"
#include "ports/event_loop.h"
#include "ports/host_calls.h"
#include "ports/regional_settings.h"
#include "ports/user_interface.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace kova {

/// The host's local time.
class Clock {
  public:
    virtual ~Clock() = default;
    [[nodiscard]] virtual DateTime now() const = 0;
};

/// The per-machine settings, read only: base key, section and name give a text.
class SettingsStore {
  public:
    /// Below which all of the component's settings stand. Frozen: tills are configured there.
    static constexpr std::string_view BaseKey = "SOFTWARE\\ZELT\\KOVA";

    virtual ~SettingsStore() = default;
    /// Nothing when the value is absent, which is no error. Levels of `baseKey` are separated by a backslash.
    [[nodiscard]] virtual std::optional<std::string>
    read(const std::string& baseKey, const std::string& section, const std::string& name) const = 0;
};

/// The platform's language runtime: which language the user works in, and when that changes.
class LanguageRuntime {
  public:
    virtual ~LanguageRuntime() = default;
    /// Windows language identifier (MS-LCID), for instance 1040 Italian, 1031 German, 9 English.
    [[nodiscard]] virtual std::int32_t languageId() const = 0;
    [[nodiscard]] virtual std::string languageName() const = 0;
    /// Emitted after a change with the new id and name.
    Signal<std::int32_t, const std::string&> languageChanged;
};

/// Keeps error records for a support engineer. No operation throws. Records may come from any thread.
class ErrorLogger {
  public:
    virtual ~ErrorLogger() = default;
    virtual void SetApplicationName(const std::string& name) = 0;
    virtual void SetLogFile(const std::string& path) = 0;
    /// `object` is an object's name for the record, or null for none.
    virtual void LogError(const std::string& procedure, const std::string& message, const char* object,
                          std::int32_t number, const std::string& text) = 0;
};

using ErrorLoggerFactory = std::function<std::shared_ptr<ErrorLogger>()>;

/// What a cashier hears. A tone that cannot be played is left out; nobody waits for one.
class Sounds {
  public:
    enum class Tone { Key, Saved, Refused };
    virtual ~Sounds() = default;
    virtual void play(Tone tone) noexcept = 0;
};

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
    Sounds* sounds = nullptr;       ///< null where nothing is heard
};

} // namespace kova
