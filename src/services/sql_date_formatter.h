#pragma once
#include "ports/regional_settings.h"

#include <cstdint>
#include <string>

namespace kova {

/// Writes dates as literals of SQL Server that mean the same whatever the language of the login.
class SqlDateFormatter {
  public:
    explicit SqlDateFormatter(const RegionalSettings& regional) : regional_(regional) {}
    /// 1 is the one mode there is: date and time by ISO 8601.
    void SetMode(std::int32_t mode) { mode_ = mode; }
    [[nodiscard]] std::int32_t mode() const { return mode_; }
    /// The literal for a date text in the user's form, with or without a time. A text ending in " 23:59.59"
    /// means the last second of its day. Throws Error 13 for a text that is no date. The literal always has
    /// date and time.
    [[nodiscard]] std::string FormatSqlDate(const std::string& text) const;

  private:
    const RegionalSettings& regional_;
    std::int32_t mode_ = 0;
};

} // namespace kova
