#pragma once
#include "adapters/system/file_error_logger.h"
#include "base/ascii_text.h"
#include "player/cashier.h"
#include "ports/event_loop.h"
#include "ports/platform.h"
#include "ports/regional_settings.h"

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace kova {

/// The time of a script. It passes only while the cashier waits; inside a timer's tick it is the instant at
/// which the tick fell due. The timers are those of another event loop, which keeps their order.
class ScriptTime final : public EventLoop {
  public:
    /// Both outlive this; time on the loop must pass in the cashier's waits alone too.
    ScriptTime(EventLoop& loop, Cashier& cashier) : loop_(loop), cashier_(cashier) {}

    TimerId startTimer(std::chrono::milliseconds interval, std::function<void()> tick) override;
    void stopTimer(TimerId id) override { loop_.stopTimer(id); }
    void processPendingEvents() override { loop_.processPendingEvents(); }

    /// The cashier's wait. Those that a tick makes inside another count once.
    void wait(std::chrono::milliseconds time);
    [[nodiscard]] std::chrono::milliseconds elapsed() const { return elapsed_; }

  private:
    void reach(std::chrono::milliseconds instant) { elapsed_ = std::max(elapsed_, instant); }
    EventLoop& loop_;
    Cashier& cashier_;
    std::chrono::milliseconds elapsed_{0};
};

/// A clock that a script sets and that goes on with the time that its waits let pass.
class ScriptClock final : public Clock {
  public:
    explicit ScriptClock(const ScriptTime& time); ///< which outlives the clock
    [[nodiscard]] DateTime now() const override { return start_ + time_.elapsed(); }
    void set(DateTime time) { start_ = time - time_.elapsed(); }

  private:
    const ScriptTime& time_;
    DateTime start_;
};

/// The values of section "Options" under the component's key.
class ScriptSettingsStore final : public SettingsStore {
  public:
    /// Nothing makes the value absent.
    void set(const std::string& name, std::optional<std::string> value);
    [[nodiscard]] std::optional<std::string> read(const std::string& baseKey, const std::string& section,
                                                  const std::string& name) const override;

  private:
    struct IgnoringCase {
        bool operator()(const std::string& a, const std::string& b) const {
            return std::ranges::lexicographical_compare(a, b, {}, lowered, lowered);
        }
    };
    std::map<std::string, std::string, IgnoringCase> values_; ///< by name
};

class ScriptLanguageRuntime final : public LanguageRuntime {
  public:
    [[nodiscard]] std::int32_t languageId() const override { return id_; }
    [[nodiscard]] std::string languageName() const override;
    /// Also announces it.
    void select(std::int32_t id);

  private:
    std::int32_t id_ = 1040;
};

struct LogRecord {
    std::string procedure, message;
    std::int32_t number;
    std::string text;
};

/// Collects records, and hands them on to a log file when there is to be one.
class RecordingErrorLogger final : public ErrorLogger {
  public:
    /// `records` and the clock outlive the logger; `file` may be null.
    RecordingErrorLogger(std::vector<LogRecord>& records, std::unique_ptr<FileErrorLogger> file)
        : records_(records), file_(std::move(file)) {}
    void SetApplicationName(const std::string& name) override;
    void SetLogFile(const std::string& path) override;
    void LogError(const std::string& procedure, const std::string& message, const char* object,
                  std::int32_t number, const std::string& text) override;

  private:
    std::vector<LogRecord>& records_;
    std::unique_ptr<FileErrorLogger> file_;
};

/// What a script controls around the component, besides user interface and database.
struct ScriptWorld {
    /// Both outlive the world.
    ScriptWorld(const ScriptTime& time, RegionalSettings& regionalSettings)
        : clock(time), regional(regionalSettings) {}
    [[nodiscard]] ErrorLoggerFactory loggerFactory(bool writesFile);

    ScriptClock clock;
    RegionalSettings& regional;
    ScriptSettingsStore registry;
    ScriptLanguageRuntime language;
    std::vector<LogRecord> log; ///< since it was looked at last
};

} // namespace kova
