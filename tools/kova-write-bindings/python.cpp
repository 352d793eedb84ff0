#include "bindings.h"

namespace kova::bindings {
namespace {

using namespace type_description;

constexpr std::size_t Width = 100;

const char* nameOf(Type type) {
    switch (type) {
    case Type::Int16:
    case Type::Int32:
        return "int";
    case Type::Double:
        return "float";
    case Type::Boolean:
        return "bool";
    case Type::String:
        return "str";
    case Type::Connection:
        return "Database";
    case Type::None:
        break;
    }
    return "None";
}

/// The method of the base class that hands a value of the type in or out.
const char* wordOf(Type type) {
    switch (type) {
    case Type::Boolean:
        return "bool";
    case Type::String:
        return "text";
    case Type::Connection:
        return "database";
    default:
        return "int";
    }
}

const char* startOf(Type type) {
    return type == Type::String    ? "\"\""
           : type == Type::Double  ? "0.0"
           : type == Type::Boolean ? "False"
                                   : "0";
}

void writeDocumentation(std::ostream& module, std::string_view words, std::size_t indentation) {
    const std::string lead(indentation, ' ');
    const auto lines = wrapped(words, Width - indentation - 3);
    module << lead << "\"\"\"";
    for (std::size_t i = 0; i < lines.size(); ++i)
        module << (i == 0 ? "" : "\n" + lead) << lines[i];
    module << (lines.size() == 1 ? "" : "\n" + lead) << "\"\"\"\n";
}

/// What an event's parameters are to a handler, and what a host hands over that raises it.
std::string eventParameter(std::span<const Parameter> parameters) {
    if (parameters.empty())
        return {};
    return parameters.size() == 1 ? std::string(parameters[0].name) + ": Text" : "movement: Movement";
}

void writeMethod(std::ostream& module, const Member& member) {
    std::string parameters, arguments;
    if (raisesEvent(member)) {
        const std::string parameter = eventParameter(member.parameters);
        parameters = parameter.empty() ? "" : ", " + parameter;
        arguments = parameter.empty() ? "" : ", " + parameter.substr(0, parameter.find(':'));
    } else {
        for (const auto& parameter : member.parameters) {
            parameters += ", " + std::string(parameter.name) + ": " + nameOf(parameter.type) +
                          (parameter.optional ? " = -1" : "");
            arguments +=
                std::string(", self._in_") + wordOf(parameter.type) + "(" + std::string(parameter.name) + ")";
        }
    }
    module << "\n    def " << member.name << "(self" << parameters << ") -> " << nameOf(member.result)
           << ":\n";
    writeDocumentation(module, summary(member), 8);
    const char* const call = !raisesEvent(member) || member.parameters.empty() ? "call"
                             : member.parameters.size() == 1                   ? "raise_text"
                                                                               : "raise_movement";
    module << "        ";
    if (member.result != Type::None)
        module << "return self._out_" << wordOf(member.result) << "(\"kova_" << member.name << '"'
               << arguments << ")\n";
    else
        module << "self._" << call << "(\"kova_" << member.name << '"' << arguments << ")\n";
}

void writeProperty(std::ostream& module, const Member* read, const Member* write) {
    const Member& member = read != nullptr ? *read : *write;
    const Type type = read != nullptr ? read->result : write->parameters[0].type;
    module << "\n    @property\n    def " << member.name << "(self) -> " << nameOf(type) << ":\n";
    writeDocumentation(module, summary(member), 8);
    if (read != nullptr)
        module << "        return self._out_" << wordOf(type) << "(\"kova_get_" << member.name << "\")\n";
    else
        module << "        raise AttributeError(\"" << member.name << " can only be written\")\n";
    if (write != nullptr)
        module << "\n    @" << member.name << ".setter\n    def " << member.name
               << "(self, value: " << nameOf(type) << ") -> None:\n        self._call(\"kova_set_"
               << member.name << "\", self._in_" << wordOf(type) << "(value))\n";
}

void writeEvents(std::ostream& module) {
    for (const auto& event : events())
        if (event.parameters.size() > 1) {
            module << "\n\n@dataclass\nclass Movement:\n"
                      "    \"\"\"What the cashier entered; a handler may change it.\"\"\"\n\n";
            for (const auto& parameter : event.parameters)
                module << "    " << parameter.name << ": " << nameOf(parameter.type) << " = "
                       << startOf(parameter.type) << '\n';
        }
    module << "\n\nclass Events:\n    \"\"\"What the component asks its host for. Override what the host "
              "answers; the rest is "
              "ignored.\"\"\"\n";
    for (const auto& event : events()) {
        const std::string parameter = eventParameter(event.parameters);
        module << "\n    def " << event.name << "(self" << (parameter.empty() ? "" : ", ") << parameter
               << ") -> None:\n";
        writeDocumentation(module, summary(event), 8);
    }
}

} // namespace

void writePython(std::ostream& module) {
    module << "# Written by kova-write-bindings from the table of members.\n"
              "\"\"\"The members of the component, its events and its numbers.\"\"\"\n\n"
              "from __future__ import annotations\n\nimport enum\nfrom dataclasses import dataclass\n\n"
              "from ._library import Component, Database, Text\n\n\nclass "
           << library().enumerationName
           << "(enum.IntEnum):\n    \"\"\"The kinds of activity, as in the column idTypeRow of "
              "tabActivityDrawer.\"\"\"\n\n";
    for (const auto& value : enumeration())
        module << "    " << value.name << " = " << value.value << '\n';
    module << "\n\nclass DispatchId(enum.IntEnum):\n    \"\"\"The members' dispatch ids.\"\"\"\n\n";
    for (const Member* member : distinctMembers())
        module << "    " << member->name << " = " << member->dispatchId << '\n';
    writeEvents(module);
    module << "\n\nclass Members(Component):\n    \"\"\"Properties and methods, under the names that they "
              "have in every "
              "language.\"\"\"\n";
    for (const Member* member : distinctMembers())
        if (member->kind == MemberKind::Method)
            writeMethod(module, *member);
        else
            writeProperty(module, find(member->name, MemberKind::PropertyRead),
                          find(member->name, MemberKind::PropertyWrite));
}

} // namespace kova::bindings
