#pragma once
#include "base/signal.h"

#include <cstdint>
#include <string>

namespace kova {

/// The platform's language runtime: which language the user works in, and when that changes.
class LanguageRuntime {
  public:
    virtual ~LanguageRuntime() = default;
    /// Windows language identifier (MS-LCID), for instance 1040 Italian, 1031 German, 9 English.
    [[nodiscard]] virtual std::int32_t languageId() const = 0;
    [[nodiscard]] virtual std::string languageName() const = 0;
    /// Emitted after a change with the new id and name.
    Signal<std::int32_t, const std::string&> languageChanged;
};

} // namespace kova
