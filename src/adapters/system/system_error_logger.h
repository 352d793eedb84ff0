#pragma once
#include "adapters/system/file_error_logger.h"

namespace kova {

/// The error log of a machine: the file that the environment variable KOVA_LOG names, otherwise the one that
/// is set; when it cannot be written, the user's own file, and when that cannot either, the system's log.
class SystemErrorLogger final : public FileErrorLogger {
  public:
    explicit SystemErrorLogger(const Clock& clock, LogPlace last = systemLog());
    void SetLogFile(const std::string& path) override;

    /// syslog(3). Takes no record on a machine without one.
    static LogPlace systemLog();
};

/// The log file of the user: kova/logfile.log in $XDG_STATE_HOME, otherwise in ~/.local/state. Empty when the
/// environment names neither folder.
std::string userLogFile();

} // namespace kova
