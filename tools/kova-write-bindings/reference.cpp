// docs/reference.md: the members as the table has them, and the C header's functions with its own comments.
#include "bindings.h"

#include <algorithm>
#include <fstream>
#include <span>
#include <stdexcept>
#include <utility>

namespace kova::bindings {
namespace {

using namespace type_description;

constexpr std::size_t Width = 120;

const char* nameOf(Type type) {
    switch (type) {
    case Type::Int16:
        return "16-bit integer";
    case Type::Int32:
        return "32-bit integer";
    case Type::Double:
        return "double";
    case Type::Boolean:
        return "Boolean";
    case Type::String:
        return "text";
    case Type::Connection:
        return "database";
    case Type::None:
        break;
    }
    return "nothing";
}

/// A paragraph; empty words are none.
void writeParagraph(std::ostream& page, std::string_view words) {
    if (words.empty())
        return;
    for (const auto& line : wrapped(words, Width))
        page << line << '\n';
    page << '\n';
}

std::string listed(std::span<const Parameter> parameters) {
    std::string list;
    for (const auto& parameter : parameters)
        list.append(list.empty() ? "" : ", ")
            .append("`" + std::string(parameter.name) + "` ")
            .append(nameOf(parameter.type))
            .append(parameter.optional ? " (optional)" : "");
    return list.empty() ? "No arguments" : list;
}

void writeMember(std::ostream& page, std::span<const TypedFunction> halves) {
    const Member& first = *halves.front().member;
    bool read = false, written = false;
    Type type = first.result;
    std::string names;
    for (const auto& half : halves) {
        read = read || half.member->kind == MemberKind::PropertyRead;
        if (half.member->kind == MemberKind::PropertyWrite) {
            written = true;
            type = half.member->parameters.front().type;
        }
        names.append(names.empty() ? "" : ", ").append("`" + half.name + "`");
    }
    page << "### " << first.name << "\n\n";
    std::string kind = "Method. " + listed(first.parameters);
    if (read || written)
        kind = std::string("Property, ") + nameOf(type) + (read ? ", read and written" : ", written only");
    writeParagraph(page, kind + ". Dispatch id " + std::to_string(first.dispatchId) + ". C: " + names + ".");
    writeParagraph(page, summary(first));
}

void writeMembers(std::ostream& page) {
    const auto functions = typedFunctions();
    for (std::size_t begin = 0, end = 0; begin < functions.size(); begin = end) {
        while (end < functions.size() && functions[end].member->name == functions[begin].member->name)
            ++end;
        writeMember(page, std::span(functions).subspan(begin, end - begin));
    }
}

/// A comment of the C header and the declarations that it is about.
struct Entry {
    std::string comment, code;
};

/// What stands between the marks of a comment at the beginning of a line, in one line; paragraphs are kept.
std::string commentIn(std::istream& header, std::string line) {
    std::string words;
    for (;;) {
        const auto end = line.find("*/");
        std::string text = line.substr(0, end);
        text.erase(0, text.find_first_not_of("/* "));
        text.erase(text.find_last_not_of(' ') + 1);
        if (!text.empty())
            words.append(words.empty() || words.ends_with('\n') ? "" : " ").append(text);
        else if (end == std::string::npos)
            words += "\n\n";
        if (end != std::string::npos || !std::getline(header, line))
            return words;
    }
}

/// Everything but the compilers' own lines.
std::vector<Entry> entriesOf(std::istream& header) {
    std::vector<Entry> entries;
    bool fresh = true;
    for (std::string line; std::getline(header, line);) {
        if (line.starts_with("/*")) {
            entries.push_back({commentIn(header, line), {}});
            fresh = false;
        } else if (line.empty()) {
            fresh = true;
        } else if (line.starts_with('#')) {
            while (line.ends_with('\\') && std::getline(header, line)) {
            }
        } else if (line != "}" && !line.starts_with("extern ")) {
            if (fresh)
                entries.emplace_back();
            fresh = false;
            entries.back().code += line + '\n';
        }
    }
    return entries;
}

/// The functions and types that are declared, as they are called.
std::string namesIn(const std::string& code) {
    std::string names;
    for (std::size_t at = 0; (at = code.find("KOVA_CALL kova_", at)) != std::string::npos;) {
        at += std::string_view("KOVA_CALL ").size();
        names.append(names.empty() ? "" : ", ").append(code, at, code.find('(', at) - at);
    }
    return names;
}

/// For people: without the compilers' words, each declaration in one line.
std::string readable(std::string code) {
    for (const auto& [piece, by] : {std::pair("KOVA_C_API ", ""), {"(KOVA_CALL* ", "(*"}, {"KOVA_CALL ", ""}})
        for (std::size_t at = 0; (at = code.find(piece, at)) != std::string::npos;)
            code.replace(at, std::string_view(piece).size(), by);
    constexpr std::size_t Indentation = 8; // of what goes on, not of an enumeration's values
    for (std::size_t at = 0; (at = code.find(",\n", at)) != std::string::npos; ++at)
        if (const auto next = code.find_first_not_of(' ', at + 2); next > at + Indentation)
            code.replace(at, next - at, ", ");
    return code;
}

void writeEntry(std::ostream& page, const Entry& entry) {
    if (const std::string names = namesIn(entry.code); !names.empty())
        page << "#### " << names << "\n\n";
    for (std::size_t at = 0; at < entry.comment.size();) {
        const auto end = std::min(entry.comment.find("\n\n", at), entry.comment.size());
        writeParagraph(page, entry.comment.substr(at, end - at));
        at = end + 2;
    }
    if (!entry.code.empty())
        page << "```\n" << readable(entry.code) << "```\n\n";
}

void writeHeader(std::ostream& page) {
    std::ifstream header(KOVA_C_HEADER);
    if (!header)
        throw std::runtime_error("cannot be read: " KOVA_C_HEADER);
    constexpr std::string_view Dashes = "---- ";
    for (const Entry& entry : entriesOf(header)) {
        if (entry.comment.starts_with("How the library's functions are called"))
            continue; // about the compilers' words
        if (!entry.comment.starts_with(Dashes)) {
            writeEntry(page, entry);
            continue;
        }
        const std::string title =
            entry.comment.substr(Dashes.size(), entry.comment.size() - 2 * Dashes.size());
        const auto end = std::min(title.find(". "), title.size());
        page << "### " << title.substr(0, end) << "\n\n";
        if (end < title.size())
            writeParagraph(page, title.substr(end + 2));
    }
}

} // namespace

void writeReference(std::ostream& page) {
    page << "# Reference\n\n"
            "<!-- Written by kova-write-bindings from the table of members and the C header. -->\n\n"
            "What each member, event and function is. How to use them: "
            "[writing_a_host.md](writing_a_host.md). The members\nhave the same names in every language; "
            "first they are told as the component has them, then the C interface, from the\ncomments of "
            "`kova_drawer_man_c.h`.\n\n## Members\n\n";
    writeMembers(page);
    page << "## Events\n\n";
    for (const auto& event : events()) {
        page << "### Event " << event.name << "\n\n";
        writeParagraph(page, listed(event.parameters) + ". Dispatch id " + std::to_string(event.dispatchId) +
                                 ". C: `" + std::string(event.name) + "` of `kova_handlers`.");
        writeParagraph(page, summary(event));
    }
    page << "## Values\n\nThe kinds of activity, `" << library().enumerationName
         << "`, as in the column `idTypeRow` of `tabActivityDrawer`.\n\n| name | value |\n|---|---|\n";
    for (const auto& value : enumeration())
        page << "| `" << value.name << "` | " << value.value << " |\n";
    page << "\n## The C interface\n\n";
    writeHeader(page);
}

} // namespace kova::bindings
