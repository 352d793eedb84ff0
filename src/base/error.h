#pragma once
#include "base/export.h"

#include <cstdint>
#include <stdexcept>
#include <string>

namespace kova {

/// A failure as the error log records it: a number and a description.
class KOVA_API Error : public std::runtime_error {
  public:
    Error(std::int32_t number, const std::string& description)
        : std::runtime_error(description), number_(number) {}
    [[nodiscard]] std::int32_t number() const { return number_; }

  private:
    std::int32_t number_;
};

/// A text or value that the wanted type cannot be made from.
inline Error typeMismatch() {
    return {13, "Type mismatch"};
}
/// A number outside the range of the wanted type.
inline Error overflow() {
    return {6, "Overflow"};
}

} // namespace kova
