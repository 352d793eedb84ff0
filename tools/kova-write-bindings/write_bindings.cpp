// Writes what the interfaces for other languages repeat of the component's table of members, so that it
// stands in the table alone:
//
//   kova-write-bindings LANGUAGE FILE
#include "bindings.h"

#include <fstream>
#include <iostream>
#include <map>

namespace kova::bindings {

using namespace type_description;

std::vector<TypedFunction> typedFunctions() {
    std::vector<TypedFunction> functions;
    for (const auto& member : members()) {
        const char* const prefix = member.kind == MemberKind::PropertyRead    ? "kova_get_"
                                   : member.kind == MemberKind::PropertyWrite ? "kova_set_"
                                                                              : "kova_";
        functions.push_back({&member, prefix + std::string(member.name)});
    }
    return functions;
}

std::vector<std::string> wrapped(std::string_view words, std::size_t width) {
    std::vector<std::string> lines;
    while (words.size() > width) {
        const auto end = words.rfind(' ', width);
        if (end == std::string_view::npos)
            break;
        lines.emplace_back(words.substr(0, end));
        words.remove_prefix(end + 1);
    }
    lines.emplace_back(words);
    return lines;
}

} // namespace kova::bindings

int main(int count, char** arguments) {
    const std::map<std::string, void (*)(std::ostream&)> writers{
        {"c", kova::bindings::writeC}, {"reference", kova::bindings::writeReference}};
    const auto writer = writers.find(count == 3 ? arguments[1] : "");
    if (writer == writers.end()) {
        std::cerr << "usage: kova-write-bindings LANGUAGE FILE\nlanguages:";
        for (const auto& [language, write] : writers)
            std::cerr << ' ' << language;
        std::cerr << '\n';
        return 2;
    }
    std::ofstream file(arguments[2], std::ios::binary);
    writer->second(file);
    file.flush();
    return file ? 0 : 1;
}
