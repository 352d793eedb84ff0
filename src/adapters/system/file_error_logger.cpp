#include "adapters/system/file_error_logger.h"

#include "adapters/system/machine.h"

#include "base/iso_date_time.h"

#include <filesystem>
#include <system_error>

namespace kova {
namespace {

constexpr std::size_t MostWaiting = 1000;

std::string timeStamp(DateTime time) {
    using namespace std::chrono;
    std::string text = formatIsoDateTime(time, 'T');
    if (floor<seconds>(time) == time)
        text += ".000";
    return text;
}

/// One field: what would end a field or a line is written as an escape.
std::string field(const std::string& text) {
    std::string result;
    for (const char c : text) {
        switch (c) {
        case '\t':
            result += "\\t";
            break;
        case '\n':
            result += "\\n";
            break;
        case '\r':
            result += "\\r";
            break;
        case '\\':
            result += "\\\\";
            break;
        default:
            result += c;
        }
    }
    return result;
}

std::vector<LogPlace> otherPlaces(LogPlace last) {
    std::vector<LogPlace> places;
    if (const std::string path = userLogFile(); !path.empty()) {
        LogPlace file = logFile(path);
        file.write = [path, write = file.write](const std::string& record) {
            std::error_code failed; // the file then says so, too
            std::filesystem::create_directories(pathOf(path).parent_path(), failed);
            return write(record);
        };
        places.push_back(std::move(file));
    }
    places.push_back(std::move(last));
    return places;
}

} // namespace

LogPlace logFile(const std::string& path) {
    return {path, [path](const std::string& record) { return appendToFile(path, record); }};
}

FileErrorLogger::FileErrorLogger(const Clock& clock, std::vector<LogPlace> elsewhere)
    : clock_(clock), places_(std::move(elsewhere)) {
    places_.insert(places_.begin(), LogPlace{});
}

void FileErrorLogger::SetApplicationName(const std::string& name) {
    const std::lock_guard lock(mutex_);
    application_ = name;
}

void FileErrorLogger::SetLogFile(const std::string& path) {
    const std::lock_guard lock(mutex_);
    if (path != places_.front().name) {
        places_.front() = logFile(path);
        used_ = 0;
    }
    flush();
}

void FileErrorLogger::LogError(const std::string& procedure, const std::string& message, const char* object,
                               std::int32_t number, const std::string& text) {
    const std::lock_guard lock(mutex_);
    try {
        waiting_.push_back(record(procedure, message, object, number, text));
        if (waiting_.size() > MostWaiting) {
            waiting_.pop_front();
            ++dropped_;
        }
    } catch (const std::exception&) {
        ++dropped_; // no memory for the record: the count is all that can be kept
    }
    flush();
}

std::string FileErrorLogger::record(const std::string& procedure, const std::string& message,
                                    const char* object, std::int32_t number, const std::string& text) const {
    return timeStamp(clock_.now()) + '\t' + field(application_) + '\t' + field(procedure) + '\t' +
           field(message) + '\t' + field(object == nullptr ? "" : object) + '\t' + std::to_string(number) +
           '\t' + field(text) + '\n';
}

void FileErrorLogger::flush() {
    if (!places_.front().write)
        return;
    try {
        std::string why;
        for (std::size_t place = 0; place < places_.size() && (!waiting_.empty() || dropped_ > 0); ++place)
            if (const std::string reason = flushTo(place, why); place == 0)
                why = reason;
    } catch (const std::exception&) {
        return; // the records wait for the next try
    }
}

/// Returns why the place did not take all that waits; empty when it did.
std::string FileErrorLogger::flushTo(std::size_t place, const std::string& why) {
    const auto write = [&](const std::string& line) {
        std::string reason = places_[place].write(line);
        if (reason.empty())
            used_ = place;
        return reason;
    };
    const auto note = [&](const std::string& message) { return write(record("", message, nullptr, 0, "")); };
    std::string reason;
    if (place > 0 && place != used_)
        reason =
            note("the log goes to " + places_[place].name + ", for " + places_.front().name + ": " + why);
    if (reason.empty() && dropped_ > 0) {
        reason = note(std::to_string(dropped_) + " records lost");
        dropped_ = reason.empty() ? 0 : dropped_;
    }
    while (reason.empty() && !waiting_.empty()) {
        reason = write(waiting_.front());
        if (reason.empty())
            waiting_.pop_front();
    }
    return reason;
}

SystemErrorLogger::SystemErrorLogger(const Clock& clock, LogPlace last)
    : FileErrorLogger(clock, otherPlaces(std::move(last))) {}

void SystemErrorLogger::SetLogFile(const std::string& path) {
    const std::string named = environmentVariable("KOVA_LOG");
    FileErrorLogger::SetLogFile(named.empty() ? path : named);
}

LogPlace SystemErrorLogger::systemLog() {
    return {"the system's log", writeToSystemLog};
}

std::string userLogFile() {
    const std::string folder = userStateFolder();
    return folder.empty() ? folder : utf8Of(pathOf(folder) / "kova" / "logfile.log");
}

} // namespace kova
