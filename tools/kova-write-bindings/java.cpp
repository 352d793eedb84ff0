#include "bindings.h"

namespace kova::bindings {
namespace {

using namespace type_description;

constexpr std::size_t Width = 110;

const char* inward(Type type, bool byReference) {
    switch (type) {
    case Type::Int16:
        return byReference ? "ShortByReference" : "short";
    case Type::Int32:
    case Type::Boolean:
        return byReference ? "IntByReference" : "int";
    case Type::Double:
        return byReference ? "DoubleByReference" : "double";
    case Type::String:
        return byReference ? "Pointer" : "String";
    case Type::Connection:
        return "Pointer";
    case Type::None:
        break;
    }
    return "void";
}

/// A native function as JNA finds it.
std::string declaration(const TypedFunction& function) {
    const Member& member = *function.member;
    std::vector<std::string> parameters{"Pointer component"};
    for (const auto& parameter : member.parameters)
        parameters.push_back(std::string(inward(parameter.type, raisesEvent(member))) + ' ' +
                             uncapitalized(parameter.name));
    if (member.result != Type::None)
        parameters.push_back(member.result == Type::String ? "PointerByReference result"
                                                           : "IntByReference result");
    return "int " + function.name + '(' + joined(parameters) + ");";
}

void writeDeclaration(std::ostream& source, const TypedFunction& function) {
    const char* lead = "        ";
    for (const auto& line : wrapped(declaration(function), Width - 12)) {
        source << lead << line << '\n';
        lead = "            ";
    }
}

void writeWords(std::ostream& source, std::string_view words) {
    const char* lead = "    /** ";
    for (const auto& line : wrapped(words, Width - 7)) {
        source << lead << line;
        lead = "\n     *  ";
    }
    source << " */\n";
}

const char* outward(Type type) {
    switch (type) {
    case Type::Boolean:
        return "boolean";
    case Type::String:
        return "String";
    case Type::Connection:
        return "Database";
    default:
        return inward(type, false);
    }
}

/// The head of a public method, up to its brace.
std::string head(Type result, const std::string& name, const Member& member) {
    std::vector<std::string> parameters;
    for (const auto& parameter : member.parameters)
        parameters.push_back(std::string(outward(parameter.type)) + ' ' + uncapitalized(parameter.name));
    return std::string("    public ") + outward(result) + ' ' + name + '(' + joined(parameters) + ") {\n";
}

void writeProperty(std::ostream& source, const TypedFunction& function) {
    const Member& member = *function.member;
    if (member.kind == MemberKind::PropertyRead) {
        const bool flag = member.result == Type::Boolean;
        source << head(member.result, (flag ? "is" : "get") + capitalized(member.name), member)
               << "        return read"
               << (flag                            ? "Flag"
                   : member.result == Type::String ? "Text"
                                                   : "Number")
               << "(LIBRARY::" << function.name << ");\n    }\n\n";
    } else {
        source << head(Type::None, "set" + capitalized(member.name), member) << "        check(LIBRARY."
               << function.name << "(handle(), value"
               << (member.parameters.front().type == Type::Boolean ? " ? 1 : 0" : "") << "));\n    }\n\n";
    }
}

/// What a handler writes comes back in an object.
void writeRaising(std::ostream& source, const TypedFunction& function) {
    const auto parameters = function.member->parameters.size();
    source << "    public void " << uncapitalized(function.member->name) << '('
           << (parameters == 0   ? ""
               : parameters == 1 ? "Text " + uncapitalized(function.member->parameters.front().name)
                                 : "Movement movement")
           << ") {\n        raise(LIBRARY::" << function.name
           << (parameters == 0   ? ""
               : parameters == 1 ? ", " + uncapitalized(function.member->parameters.front().name)
                                 : ", movement")
           << ");\n    }\n\n";
}

void writeMethod(std::ostream& source, const TypedFunction& function) {
    const Member& member = *function.member;
    std::vector<std::string> arguments;
    for (const auto& parameter : member.parameters)
        arguments.push_back(parameter.type == Type::Connection
                                ? "Database.handleOf(" + uncapitalized(parameter.name) + ')'
                                : uncapitalized(parameter.name));
    source << head(member.result, uncapitalized(member.name), member) << "        ";
    if (member.result == Type::None) {
        arguments.insert(arguments.begin(), "handle()");
        source << "check(LIBRARY." << function.name << '(' << joined(arguments) << "));\n    }\n\n";
    } else {
        arguments.insert(arguments.begin(), "component");
        arguments.emplace_back("result");
        source << "return readText((component, result) -> LIBRARY." << function.name << '('
               << joined(arguments) << "));\n    }\n\n";
    }
}

/// An enumeration whose constants have a number.
template <class Values, class Name, class Number>
void writeNumbers(std::ostream& source, const char* words, const char* type, const Values& values,
                  const Name& name, const Number& number) {
    writeWords(source, words);
    source << "    public enum " << type << " {\n";
    const char* separator = "";
    for (const auto& value : values) {
        source << separator << "        " << name(value) << '(' << number(value) << ')';
        separator = ",\n";
    }
    source << ";\n\n        public final int id;\n\n        " << type
           << "(int id) {\n            this.id = id;\n        }\n    }\n";
}

} // namespace

void writeJava(std::ostream& source) {
    source << "// Written by kova-write-bindings from the table of members.\npackage kova.drawer;\n\n"
              "import static kova.drawer.CInterface.LIBRARY;\n\n"
              "import com.sun.jna.Library;\nimport com.sun.jna.Pointer;\n"
              "import com.sun.jna.ptr.DoubleByReference;\nimport com.sun.jna.ptr.IntByReference;\n"
              "import com.sun.jna.ptr.PointerByReference;\nimport com.sun.jna.ptr.ShortByReference;\n\n"
              "/** The members of the component. A method that raises an event throws {@link KovaException} "
              "when "
              "a handler\n *  failed, with the handler's exception as its cause. */\n"
              "public abstract class DrawerMembers extends Component {\n    DrawerMembers() {}\n\n";
    for (const auto& function : typedFunctions()) {
        const Member& member = *function.member;
        writeWords(source, summary(member));
        if (member.kind != MemberKind::Method)
            writeProperty(source, function);
        else if (raisesEvent(member))
            writeRaising(source, function);
        else
            writeMethod(source, function);
    }
    writeNumbers(
        source, "The dispatch ids of the members, for calls by id.", "Member", distinctMembers(),
        [](const Member* member) { return member->name; },
        [](const Member* member) { return member->dispatchId; });
    source << '\n';
    writeNumbers(
        source, "The kinds of activity, as in the column idTypeRow of tabActivityDrawer.", "ActivityKind",
        enumeration(),
        [](const EnumerationValue& value) { return value.name.substr(value.name.find('_') + 1); },
        [](const EnumerationValue& value) { return value.value; });
    source << "\n    /** The functions of the library for the members. */\n    interface Functions extends "
              "Library {\n";
    for (const auto& function : typedFunctions())
        writeDeclaration(source, function);
    source << "    }\n}\n";
}

} // namespace kova::bindings
