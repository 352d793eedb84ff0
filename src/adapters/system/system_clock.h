#pragma once
#include "ports/platform.h"

namespace kova {

/// The machine's clock in its local time zone.
class SystemClock final : public Clock {
  public:
    [[nodiscard]] DateTime now() const override;
};

} // namespace kova
