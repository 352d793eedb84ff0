#pragma once
#include "ports/platform.h"

#include <deque>
#include <functional>
#include <mutex>
#include <vector>

namespace kova {

/// Somewhere that takes records.
struct LogPlace {
    std::string name; ///< for the record that tells of it
    /// Takes a record, which ends with a line break; returns why not, empty when it did.
    std::function<std::string(const std::string& record)> write;
};

/// A file, to which each record is appended; it is opened again each time, so that one that was deleted or
/// moved away is begun again.
LogPlace logFile(const std::string& path);

/// Writes each record as one line of tab-separated fields: time (ISO 8601), application, label, message,
/// object, number, text. Tabs, line breaks and backslashes inside a field are written \t, \n, \r and \\.
/// Each record goes to the first place that takes it: the file, then the others in their order. The first
/// record in another place than the file says so, and why. Until there is a file, and while no place takes
/// them, records wait in memory (the oldest of more than 1,000 are dropped and counted in a line of their
/// own). All operations may be called on any thread.
class FileErrorLogger : public ErrorLogger {
  public:
    explicit FileErrorLogger(const Clock& clock, std::vector<LogPlace> elsewhere = {});
    void SetApplicationName(const std::string& name) override;
    void SetLogFile(const std::string& path) override;
    void LogError(const std::string& procedure, const std::string& message, const char* object,
                  std::int32_t number, const std::string& text) override;

  private:
    [[nodiscard]] std::string record(const std::string& procedure, const std::string& message,
                                     const char* object, std::int32_t number, const std::string& text) const;
    void flush();
    std::string flushTo(std::size_t place, const std::string& why);
    const Clock& clock_;
    std::mutex mutex_; ///< of all below
    std::string application_;
    std::vector<LogPlace> places_; ///< the file first; without a `write` until there is one
    std::size_t used_ = 0;         ///< the place that took the last record
    std::deque<std::string> waiting_;
    std::size_t dropped_ = 0;
};

/// The error log of a machine: the file that the environment variable KOVA_LOG names, otherwise the one that
/// is set; when it cannot be written, the user's own file, and when that cannot either, the system's log.
class SystemErrorLogger final : public FileErrorLogger {
  public:
    explicit SystemErrorLogger(const Clock& clock, LogPlace last = systemLog());
    void SetLogFile(const std::string& path) override;

    /// Takes no record on a machine without one.
    static LogPlace systemLog();
};

/// The log file of the user: kova/logfile.log in `userStateFolder`. Empty when there is none.
std::string userLogFile();

} // namespace kova
