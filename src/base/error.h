#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>

namespace kova {

/// A failure as the error log records it: a number and a description.
class Error : public std::runtime_error {
  public:
    Error(std::int32_t number, const std::string& description)
        : std::runtime_error(description), number_(number) {}
    [[nodiscard]] std::int32_t number() const { return number_; }

  private:
    std::int32_t number_;
};

/// A database failure. `number()` is the provider's error number, `sqlState()` the five characters of ISO
/// 9075.
class DatabaseError : public Error {
  public:
    static constexpr std::int32_t CommandFailed =
        -2147217900; ///< the text was refused, or an object is missing
    static constexpr std::int32_t Unspecified = -2147467259; ///< anything without a number of its own
    static constexpr std::int32_t NotConnected = 3709;       ///< no usable connection

    DatabaseError(std::int32_t number, const std::string& description, std::string sqlState)
        : Error(number, description), sqlState_(std::move(sqlState)) {}
    [[nodiscard]] const std::string& sqlState() const { return sqlState_; }

  private:
    std::string sqlState_;
};

} // namespace kova
