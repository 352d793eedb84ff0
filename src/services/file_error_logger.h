#pragma once
#include "platform/clock.h"
#include "platform/error_logger.h"

#include <deque>

namespace kova {

/// Writes each record as one line of tab-separated fields: time (ISO 8601), application, label, message,
/// object, number, text. Tabs, line breaks and backslashes inside a field are written \t, \n, \r and \\.
/// Until there is a file, and while it cannot be written, records wait in memory (the oldest of more than
/// 1,000 are dropped and counted in a line of their own); the file is opened anew for each write, so that one
/// that was deleted or moved away is begun again.
class FileErrorLogger final : public ErrorLogger {
  public:
    explicit FileErrorLogger(const Clock& clock) : clock_(clock) {}
    void SetApplicationName(const std::string& name) override;
    void SetLogFile(const std::string& path) override;
    void LogError(const std::string& procedure, const std::string& message, const char* object,
                  std::int32_t number, const std::string& text) override;
    [[nodiscard]] std::size_t waiting() const { return waiting_.size(); }

  private:
    void flush();
    const Clock& clock_;
    std::string application_;
    std::string path_;
    std::deque<std::string> waiting_;
    std::size_t dropped_ = 0;
};

} // namespace kova
