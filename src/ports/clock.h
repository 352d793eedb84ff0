#pragma once
#include "ports/database.h"

namespace kova {

/// The host's local time.
class Clock {
  public:
    virtual ~Clock() = default;
    [[nodiscard]] virtual DateTime now() const = 0;
};

} // namespace kova
