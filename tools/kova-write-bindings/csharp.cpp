#include "bindings.h"

#include <algorithm>

namespace kova::bindings {
namespace {

using namespace type_description;

constexpr std::size_t Width = 110;

std::string inward(const Parameter& parameter, bool byReference) {
    const std::string name = ' ' + uncapitalized(parameter.name);
    switch (parameter.type) {
    case Type::Int16:
        return (byReference ? "ref short" : "short") + name;
    case Type::Int32:
    case Type::Boolean:
        return (byReference ? "ref int" : "int") + name;
    case Type::Double:
        return (byReference ? "ref double" : "double") + name;
    case Type::String:
        return (byReference ? "IntPtr" : "byte[]") + name;
    case Type::Connection:
        return "IntPtr" + name;
    case Type::None:
        break;
    }
    return {};
}

const char* outward(Type type) {
    switch (type) {
    case Type::Int16:
        return "short";
    case Type::Int32:
        return "int";
    case Type::Double:
        return "double";
    case Type::Boolean:
        return "bool";
    case Type::String:
        return "string";
    case Type::Connection:
        return "Database";
    case Type::None:
        break;
    }
    return "void";
}

void writeDeclaration(std::ostream& source, const TypedFunction& function) {
    const Member& member = *function.member;
    std::vector<std::string> parameters{"IntPtr component"};
    for (const auto& parameter : member.parameters)
        parameters.push_back(inward(parameter, raisesEvent(member)));
    if (member.result != Type::None)
        parameters.push_back(member.result == Type::String ? "out IntPtr result" : "out int result");
    source << "        [DllImport(Library, CallingConvention = CallingConvention.Cdecl)]\n";
    const char* lead = "        ";
    for (const auto& line : wrapped(
             "internal static extern int " + function.name + '(' + joined(parameters) + ");", Width - 12)) {
        source << lead << line << '\n';
        lead = "            ";
    }
}

void writeWords(std::ostream& source, std::string_view words) {
    const auto lines = wrapped("<summary>" + std::string(words) + "</summary>", Width - 12);
    for (const auto& line : lines)
        source << "        /// " << line << '\n';
}

/// What the host's value is for the native function.
std::string argument(const Parameter& parameter) {
    std::string name = uncapitalized(parameter.name);
    switch (parameter.type) {
    case Type::Boolean:
        return name + " ? 1 : 0";
    case Type::String:
        return "Utf8.Bytes(" + name + ')';
    case Type::Connection:
        return "Database.HandleOf(" + name + ')';
    default:
        return name;
    }
}

const char* reader(Type type) {
    return type == Type::Boolean ? "ReadFlag" : type == Type::String ? "ReadText" : "ReadNumber";
}

void writeProperty(std::ostream& source, const Member& member) {
    const Member* const read = find(member.name, MemberKind::PropertyRead);
    const Member* const write = find(member.name, MemberKind::PropertyWrite);
    const std::string name(member.name);
    source << "        public " << outward(read != nullptr ? read->result : write->parameters.front().type)
           << ' ' << capitalized(member.name) << "\n        {\n";
    if (read != nullptr)
        source << "            get { return " << reader(read->result) << "(Native.kova_get_" << name
               << "); }\n";
    if (write != nullptr)
        source << "            set { Check(Native.kova_set_" << name << "(Handle, "
               << argument(write->parameters.front()) << ")); }\n";
    source << "        }\n\n";
}

/// The event itself has the member's name, and what a handler writes comes back in its arguments.
void writeRaising(std::ostream& source, const Member& member) {
    const char* const words[][2] = {
        {"", ""}, {"DayEventArgs day", ", day"}, {"MovementEventArgs movement", ", movement"}};
    const auto& [parameter, forwarded] = words[std::min<std::size_t>(member.parameters.size(), 2)];
    source << "        public void Raise" << member.name << '(' << parameter
           << ")\n        {\n            Raise(Native.kova_" << member.name << forwarded
           << ");\n        }\n\n";
}

void writeMethod(std::ostream& source, const Member& member) {
    std::vector<std::string> parameters, arguments{"Handle"};
    for (const auto& parameter : member.parameters) {
        parameters.push_back(std::string(outward(parameter.type)) + ' ' + uncapitalized(parameter.name));
        arguments.push_back(argument(parameter));
    }
    const bool returns = member.result != Type::None;
    if (returns)
        arguments.emplace_back("out result");
    source << "        public " << outward(member.result) << ' ' << member.name << '(' << joined(parameters)
           << ")\n        {\n"
           << (returns ? "            IntPtr result;\n" : "") << "            Check(Native.kova_"
           << member.name << '(' << joined(arguments) << "));\n"
           << (returns ? "            return Utf8.Text(result);\n" : "") << "        }\n\n";
}

template <class Values, class Name, class Number>
void writeNumbers(std::ostream& source, const char* words, const char* type, const Values& values,
                  const Name& name, const Number& number) {
    source << "    /// <summary>" << words << "</summary>\n    public enum " << type << "\n    {\n";
    const char* separator = "";
    for (const auto& value : values) {
        source << separator << "        " << name(value) << " = " << number(value);
        separator = ",\n";
    }
    source << "\n    }\n";
}

} // namespace

void writeCSharp(std::ostream& source) {
    source << "// Written by kova-write-bindings from the table of members.\nusing System;\n"
              "using System.Runtime.InteropServices;\n\nnamespace Kova.Drawer\n{\n"
              "    /// <summary>The component. A method that raises an event throws KovaException when a "
              "handler "
              "failed, with\n    /// the handler's exception inside.</summary>\n"
              "    public sealed partial class DrawerMan\n    {\n";
    for (const auto* member : distinctMembers()) {
        writeWords(source, summary(*member));
        if (member->kind != MemberKind::Method)
            writeProperty(source, *member);
        else if (raisesEvent(*member))
            writeRaising(source, *member);
        else
            writeMethod(source, *member);
    }
    source.seekp(-1, std::ios::cur); // the last empty line
    source << "    }\n\n";
    writeNumbers(
        source, "The dispatch ids of the members, for calls by id.", "Member", distinctMembers(),
        [](const Member* member) { return capitalized(member->name); },
        [](const Member* member) { return member->dispatchId; });
    source << '\n';
    writeNumbers(
        source, "The kinds of activity, as in the column idTypeRow of tabActivityDrawer.", "ActivityKind",
        enumeration(),
        [](const EnumerationValue& value) { return value.name.substr(value.name.find('_') + 1); },
        [](const EnumerationValue& value) { return value.value; });
    source << "\n    static partial class Native\n    {\n";
    for (const auto& function : typedFunctions())
        writeDeclaration(source, function);
    source << "    }\n}\n";
}

} // namespace kova::bindings
