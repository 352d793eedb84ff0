#include "player/script_world.h"

#include <memory>

namespace kova {
namespace {

constexpr std::string_view Section = "Options";

DateTime defaultTime() {
    using namespace std::chrono;
    return local_days(2026y / November / 16) + 10h;
}

} // namespace

TimerId ScriptTime::startTimer(std::chrono::milliseconds interval, std::function<void()> tick) {
    // Shared, because an event loop may call a copy of what it was given.
    const auto due = std::make_shared<std::chrono::milliseconds>(elapsed_ + interval);
    return loop_.startTimer(interval, [this, due, interval, tick = std::move(tick)] {
        reach(*due);
        *due += interval;
        tick();
    });
}

void ScriptTime::wait(std::chrono::milliseconds time) {
    const auto end = elapsed_ + time;
    cashier_.wait(time);
    reach(end);
}

ScriptClock::ScriptClock(const ScriptTime& time) : time_(time), start_(defaultTime() - time.elapsed()) {}

void ScriptSettingsStore::set(const std::string& name, std::optional<std::string> value) {
    if (value)
        values_[name] = *value;
    else
        values_.erase(name);
}

std::optional<std::string> ScriptSettingsStore::read(const std::string& baseKey, const std::string& section,
                                                     const std::string& name) const {
    if (baseKey != SettingsStore::BaseKey || section != Section)
        return std::nullopt;
    const auto found = values_.find(name);
    return found == values_.end() ? std::nullopt : std::optional(found->second);
}

std::string ScriptLanguageRuntime::languageName() const {
    static const std::map<std::int32_t, std::string> names{
        {1040, "Italiano"}, {1031, "Deutsch"}, {9, "English"}};
    const auto found = names.find(id_);
    return found == names.end() ? std::to_string(id_) : found->second;
}

void ScriptLanguageRuntime::select(std::int32_t id) {
    id_ = id;
    languageChanged(id_, languageName());
}

void RecordingErrorLogger::SetApplicationName(const std::string& name) {
    if (file_)
        file_->SetApplicationName(name);
}

void RecordingErrorLogger::SetLogFile(const std::string& path) {
    if (file_)
        file_->SetLogFile(path);
}

void RecordingErrorLogger::LogError(const std::string& procedure, const std::string& message,
                                    const char* object, std::int32_t number, const std::string& text) {
    records_.push_back({procedure, message, number, text});
    if (file_)
        file_->LogError(procedure, message, object, number, text);
}

ErrorLoggerFactory ScriptWorld::loggerFactory(bool writesFile) {
    return [this, writesFile] {
        auto file = writesFile ? std::make_unique<FileErrorLogger>(clock) : nullptr;
        return std::make_unique<RecordingErrorLogger>(log, std::move(file));
    };
}

} // namespace kova
