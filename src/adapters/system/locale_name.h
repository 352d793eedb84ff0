#pragma once
#include <string>
#include <string_view>

namespace kova {

/// The locale that the environment chooses for a category, for instance "LC_NUMERIC": LC_ALL, the category,
/// LANG, the first that is not empty. Empty when none is.
std::string localeName(const char* category);

/// Language and region of a locale's name, without encoding and variant: it_IT of it_IT.UTF-8@euro.
std::string_view localeRegion(std::string_view locale);

} // namespace kova
