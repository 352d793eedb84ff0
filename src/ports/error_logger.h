#pragma once
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace kova {

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

} // namespace kova
