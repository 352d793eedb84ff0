#include "adapters/system/ini_settings_store.h"

#include "adapters/system/machine.h"

#include "base/ascii_text.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <string_view>

namespace kova {
namespace {

/// Sections and names compare in small letters, with `/` between the levels.
std::string canonical(std::string_view text) {
    std::string result(text);
    std::ranges::transform(result, result.begin(), [](char c) { return c == '\\' ? '/' : lowered(c); });
    return result;
}

} // namespace

std::optional<std::string> IniSettingsStore::read(const std::string& baseKey, const std::string& section,
                                                  const std::string& name) const {
    const std::string wantedSection = canonical(baseKey + '/' + section);
    const std::string wantedName = canonical(name);
    std::ifstream file(pathOf(file_));
    std::string line;
    bool inside = false;
    while (std::getline(file, line)) {
        const auto text = trimmed(line);
        if (text.empty() || text.front() == ';' || text.front() == '#')
            continue;
        if (text.front() == '[' && text.back() == ']') {
            inside = canonical(trimmed(text.substr(1, text.size() - 2))) == wantedSection;
            continue;
        }
        const auto equals = text.find('=');
        if (inside && equals != std::string_view::npos &&
            canonical(trimmed(text.substr(0, equals))) == wantedName)
            return std::string(trimmed(text.substr(equals + 1)));
    }
    return std::nullopt;
}

} // namespace kova
