// Writes what the interfaces for other languages repeat of the component's table of members, so that it
// stands in the table alone:
//
//   kova-write-bindings LANGUAGE FILE
#include "bindings.h"

#include "base/ascii_text.h"

#include <algorithm>
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

std::vector<const Member*> distinctMembers() {
    std::vector<const Member*> distinct;
    for (const auto& member : members())
        if (distinct.empty() || distinct.back()->name != member.name)
            distinct.push_back(&member);
    return distinct;
}

bool raisesEvent(const Member& member) {
    return std::ranges::find(events(), member.name, &Event::name) != events().end();
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

std::string joined(const std::vector<std::string>& words) {
    std::string line;
    for (const auto& word : words)
        line += (line.empty() ? "" : ", ") + word;
    return line;
}

std::string capitalized(std::string_view name) {
    std::string result(name);
    if (const char first = result.front(); first >= 'a' && first <= 'z')
        result.front() = static_cast<char>(first - 'a' + 'A');
    return result;
}

std::string uncapitalized(std::string_view name) {
    std::string result(name);
    result.front() = lowered(result.front());
    return result;
}

} // namespace kova::bindings

int main(int count, char** arguments) {
    const std::map<std::string, void (*)(std::ostream&)> writers{
        {"c", kova::bindings::writeC},           {"csharp", kova::bindings::writeCSharp},
        {"java", kova::bindings::writeJava},     {"pascal", kova::bindings::writePascal},
        {"python", kova::bindings::writePython}, {"reference", kova::bindings::writeReference}};
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
