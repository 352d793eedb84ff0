#pragma once
#include "ports/platform.h"

namespace kova {

/// Per-machine settings in an INI file, UTF-8. Base key `A\B` and section `C` are the file's section [A/B/C],
/// whose lines are `name=value`; blanks around both are dropped and letter case of sections and names does
/// not count. Lines that start with `;` or `#` are comments; of equal names the first one counts. The file is
/// read again each time; one that is missing or unreadable holds nothing, which is no error.
class IniSettingsStore final : public SettingsStore {
  public:
    explicit IniSettingsStore(std::string file) : file_(std::move(file)) {}
    [[nodiscard]] std::optional<std::string> read(const std::string& baseKey, const std::string& section,
                                                  const std::string& name) const override;

  private:
    std::string file_;
};

} // namespace kova
