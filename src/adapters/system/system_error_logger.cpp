#include "adapters/system/system_error_logger.h"

#include <syslog.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace kova {
namespace {

std::string variable(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? "" : value;
}

std::vector<LogPlace> otherPlaces(LogPlace last) {
    std::vector<LogPlace> places;
    if (const std::string path = userLogFile(); !path.empty()) {
        LogPlace file = logFile(path);
        file.write = [path, write = file.write](const std::string& record) {
            std::error_code failed; // the file then says so, too
            std::filesystem::create_directories(std::filesystem::path(path).parent_path(), failed);
            return write(record);
        };
        places.push_back(std::move(file));
    }
    places.push_back(std::move(last));
    return places;
}

} // namespace

SystemErrorLogger::SystemErrorLogger(const Clock& clock, LogPlace last)
    : FileErrorLogger(clock, otherPlaces(std::move(last))) {}

void SystemErrorLogger::SetLogFile(const std::string& path) {
    const std::string named = variable("KOVA_LOG");
    FileErrorLogger::SetLogFile(named.empty() ? path : named);
}

LogPlace SystemErrorLogger::systemLog() {
    return {"the system's log", [](const std::string& record) -> std::string {
                // syslog itself never tells that nobody listens.
                if (access("/dev/log", W_OK) != 0)
                    return std::generic_category().message(errno);
                syslog(LOG_USER | LOG_ERR, "kova: %s", record.c_str());
                return {};
            }};
}

std::string userLogFile() {
    // A relative folder counts as none, wherever the program happens to run.
    if (const std::filesystem::path state = variable("XDG_STATE_HOME"); state.is_absolute())
        return state / "kova/logfile.log";
    if (const std::filesystem::path home = variable("HOME"); home.is_absolute())
        return home / ".local/state/kova/logfile.log";
    return {};
}

} // namespace kova
