#pragma once
#include "ports/platform.h"

#include <string_view>

namespace kova {

/// The user's language: at first the one of the environment (LC_ALL, LC_MESSAGES, LANG), later what the host
/// sets.
class SystemLanguageRuntime final : public LanguageRuntime {
  public:
    SystemLanguageRuntime();
    [[nodiscard]] std::int32_t languageId() const override { return id_; }
    [[nodiscard]] std::string languageName() const override { return name_; }
    /// Announced also when it is the present one.
    void setLanguage(std::int32_t id, std::string name);

  private:
    std::int32_t id_;
    std::string name_;
};

/// Language identifier of a locale's name; 0 for a language that has none here, and for C and POSIX.
std::int32_t languageIdOfLocale(std::string_view locale);

} // namespace kova
