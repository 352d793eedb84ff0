#include "bindings.h"

#include <algorithm>

namespace kova::bindings {
namespace {

using namespace type_description;

constexpr std::size_t Width = 110;

std::string inward(const Parameter& parameter, bool byReference) {
    const std::string name(parameter.name);
    switch (parameter.type) {
    case Type::Int16:
        return (byReference ? "int16_t* " : "int16_t ") + name;
    case Type::Int32:
    case Type::Boolean:
        return (byReference ? "int32_t* " : "int32_t ") + name;
    case Type::Double:
        return (byReference ? "double* " : "double ") + name;
    case Type::String:
        return (byReference ? "kova_text " : "const char* ") + name;
    case Type::Connection:
        return "kova_database " + name;
    case Type::None:
        break;
    }
    return {};
}

std::string outward(Type type) {
    return type == Type::String ? "const char** result" : "int32_t* result";
}

std::size_t longest(const std::vector<std::string>& words) {
    std::size_t size = 0;
    for (const auto& word : words)
        size = std::max(size, word.size());
    return size;
}

/// The members whose arguments a handler may change.
bool raisesEvent(const Member& member) {
    for (const auto& event : events())
        if (event.name == member.name)
            return true;
    return false;
}

void writeComment(std::ostream& header, std::string_view words) {
    const char* lead = "/* ";
    for (const auto& line : wrapped(words, Width - 3)) {
        header << lead << line;
        lead = "\n * ";
    }
    header << " */\n";
}

void writeFunction(std::ostream& header, const TypedFunction& function) {
    const Member& member = *function.member;
    std::vector<std::string> parameters{"kova_component component"};
    for (const auto& parameter : member.parameters)
        parameters.push_back(inward(parameter, raisesEvent(member)));
    if (member.result != Type::None)
        parameters.push_back(outward(member.result));
    std::string line = "KOVA_C_API kova_status KOVA_CALL " + function.name + '(';
    const std::string indentation =
        line.size() + longest(parameters) < Width ? std::string(line.size(), ' ') : "    ";
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        const std::string next = parameters[i] + (i + 1 < parameters.size() ? "," : ");");
        if (line.size() + next.size() > Width) {
            header << line << '\n';
            line = indentation;
        }
        line += (line.ends_with(',') ? " " : "") + next;
    }
    header << line << '\n';
}

} // namespace

void writeC(std::ostream& header) {
    header
        << "/* clang-format off */\n/* Written by kova-write-bindings from the table of members; included by "
           "kova_drawer_man_c.h.\n *\n"
           " * The members of the component. Booleans are 1 or 0 when read, and any number but 0 is true. "
           "What raises an "
           "event\n * returns KOVA_FAILED when a handler failed, with its number and words. */\n\n";
    std::string_view said;
    for (const auto& function : typedFunctions()) {
        if (said != function.member->name)
            writeComment(header, summary(*function.member));
        said = function.member->name;
        writeFunction(header, function);
    }
    header << "\n/* Their dispatch ids; the two halves of a property share one. */\nenum {\n";
    said = {};
    const char* separator = "";
    for (const auto& member : members()) {
        if (said == member.name)
            continue;
        said = member.name;
        header << separator << "    KOVA_ID_" << member.name << " = " << member.dispatchId;
        separator = ",\n";
    }
    header
        << "\n};\n\n/* The kinds of activity, as in the column idTypeRow of tabActivityDrawer. */\nenum {\n";
    separator = "";
    for (const auto& value : enumeration()) {
        header << separator << "    " << value.name << " = " << value.value;
        separator = ",\n";
    }
    header << "\n};\n";
}

} // namespace kova::bindings
