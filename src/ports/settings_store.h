#pragma once
#include <optional>
#include <string>

namespace kova {

/// The per-machine settings, read only: base key, section and name give a text.
class SettingsStore {
  public:
    virtual ~SettingsStore() = default;
    /// Nothing when the value is absent, which is no error. Levels of `baseKey` are separated by a backslash.
    [[nodiscard]] virtual std::optional<std::string>
    read(const std::string& baseKey, const std::string& section, const std::string& name) const = 0;
};

} // namespace kova
