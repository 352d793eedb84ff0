#include "bindings.h"

#include <algorithm>
#include <sstream>

namespace kova::bindings {
namespace {

using namespace type_description;

constexpr std::size_t Width = 110;

const char* nameOf(Type type) {
    switch (type) {
    case Type::Int16:
        return "SmallInt";
    case Type::Int32:
        return "LongInt";
    case Type::Double:
        return "Double";
    case Type::Boolean:
        return "Boolean";
    case Type::String:
        return "UTF8String";
    case Type::Connection:
        return "TKovaDatabase";
    case Type::None:
        break;
    }
    return "";
}

/// What the library's function has in its place.
std::string importedName(Type type, bool byReference) {
    switch (type) {
    case Type::String:
        return byReference ? "TKovaHandle" : "PAnsiChar";
    case Type::Connection:
        return "TKovaHandle";
    case Type::Boolean:
        return byReference ? "PLongInt" : "LongInt";
    default:
        return (byReference ? "P" : "") + std::string(nameOf(type));
    }
}

std::string declared(const Parameter& parameter, bool byReference) {
    return (byReference ? "var " : "") + std::string(parameter.name) + ": " + nameOf(parameter.type) +
           (parameter.optional ? " = -1" : "");
}

std::string joined(std::span<const Parameter> parameters, bool byReference) {
    std::string all;
    for (const auto& parameter : parameters)
        all += (all.empty() ? "" : "; ") + declared(parameter, byReference);
    return all;
}

std::string inBrackets(const std::string& words) {
    return words.empty() ? "" : '(' + words + ')';
}

/// "Show(method: LongInt = -1): UTF8String"; properties are read and written by Get_ and Set_ methods.
std::string signature(const Member& member, const std::string& owner = {}) {
    std::string parameters = joined(member.parameters, raisesEvent(member));
    if (const auto end = parameters.find(" = "); end != std::string::npos && !owner.empty())
        parameters.resize(end);
    const char* const prefix = member.kind == MemberKind::PropertyRead    ? "Get_"
                               : member.kind == MemberKind::PropertyWrite ? "Set_"
                                                                          : "";
    const std::string start = member.result != Type::None ? "function " : "procedure ";
    return start + owner + prefix + std::string(member.name) + inBrackets(parameters) +
           (member.result != Type::None ? std::string(": ") + nameOf(member.result) : "") + ";";
}

/// Breaks a long line, but not between a name and its type or value.
void writeLine(std::ostream& include, std::string words, std::size_t indentation) {
    constexpr char Glue = '\1';
    for (const std::string_view joint : {": ", " = ", "var "})
        for (auto at = words.find(joint); at != std::string::npos; at = words.find(joint, at + 1))
            std::replace(words.begin() + static_cast<std::ptrdiff_t>(at),
                         words.begin() + static_cast<std::ptrdiff_t>(at + joint.size()), ' ', Glue);
    std::string lead(indentation, ' ');
    for (auto line : wrapped(words, Width - indentation - 4)) {
        std::ranges::replace(line, Glue, ' ');
        include << lead << line << '\n';
        lead = std::string(indentation + 4, ' ');
    }
}

void writeComment(std::ostream& include, std::string_view words, std::size_t indentation) {
    writeLine(include, "{ " + std::string(words) + " }", indentation);
}

void writeTypes(std::ostream& include) {
    include << "{$ifdef KovaTypes}\ntype\n  { The kinds of activity, as in the column idTypeRow of "
               "tabActivityDrawer. }\n  "
            << library().enumerationName << " = (\n";
    std::string values, ids;
    for (const auto& value : enumeration())
        values +=
            (values.empty() ? "" : ", ") + std::string(value.name) + " = " + std::to_string(value.value);
    writeLine(include, values + ");", 4);
    include << "\nconst\n  { Dispatch ids. }\n";
    for (const Member* member : distinctMembers())
        ids += (ids.empty() ? "" : " ") + std::string("KovaId_") + std::string(member->name) + " = " +
               std::to_string(member->dispatchId) + ';';
    writeLine(include, ids, 2);
    include << "\ntype\n";
    for (const auto& event : events()) {
        writeComment(include, summary(event), 2);
        const std::string parameters = joined(event.parameters, true);
        writeLine(include,
                  "T" + std::string(event.name) + "Event = procedure(Sender: TObject" +
                      (parameters.empty() ? "" : "; ") + parameters + ") of object;",
                  2);
    }
    include << "{$endif}\n\n";
}

void writeMembers(std::ostream& include) {
    include << "{$ifdef KovaAccess}\n";
    for (const auto& member : members())
        if (member.kind != MemberKind::Method)
            writeLine(include, signature(member), 4);
    include << "{$endif}\n\n{$ifdef KovaMembers}\n";
    for (const Member* member : distinctMembers()) {
        writeComment(include, summary(*member), 4);
        if (member->kind == MemberKind::Method) {
            writeLine(include, signature(*member), 4);
            continue;
        }
        const Member* const read = find(member->name, MemberKind::PropertyRead);
        const Member* const write = find(member->name, MemberKind::PropertyWrite);
        const std::string name(member->name);
        writeLine(include,
                  "property " + name + ": " +
                      nameOf(read != nullptr ? read->result : write->parameters[0].type) +
                      (read != nullptr ? " read Get_" + name : "") +
                      (write != nullptr ? " write Set_" + name : "") + ";",
                  4);
    }
    include << "{$endif}\n\n";
}

void writeImports(std::ostream& include) {
    include << "{$ifdef KovaImports}\n";
    for (const auto& function : typedFunctions()) {
        const Member& member = *function.member;
        std::string parameters = "component: TKovaHandle";
        for (const auto& parameter : member.parameters)
            parameters +=
                "; " + std::string(parameter.name) + ": " + importedName(parameter.type, raisesEvent(member));
        if (member.result != Type::None)
            parameters += member.result == Type::String ? "; result_: PPAnsiChar" : "; result_: PLongInt";
        writeLine(include,
                  "function " + function.name + "(" + parameters + "): LongInt; cdecl; external KovaLibrary;",
                  0);
    }
    include << "{$endif}\n\n";
}

/// What is by reference goes through variables of the library's types and comes back also after a failure.
void writeRaising(std::ostream& include, const TypedFunction& function) {
    std::ostringstream variables, before, after;
    std::string arguments;
    for (const auto& parameter : function.member->parameters) {
        const std::string_view name = parameter.name;
        const bool text = parameter.type == Type::String;
        const bool boolean = parameter.type == Type::Boolean;
        if (text || boolean)
            variables << "  in_" << name << (text ? ": TKovaHandle;\n" : ": LongInt;\n");
        if (text) {
            before << "  in_" << name << " := NewText(" << name << ");\n";
            after << "  TakeText(in_" << name << ", " << name << ");\n";
        } else if (boolean) {
            before << "  in_" << name << " := Ord(" << name << ");\n";
            after << "  " << name << " := in_" << name << " <> 0;\n";
        }
        arguments.append(text ? ", in_" : boolean ? ", @in_" : ", @").append(name);
    }
    include << "var\n  status: LongInt;\n" << variables.str() << "begin\n" << before.str();
    writeLine(include, "status := " + function.name + "(FHandle" + arguments + ");", 2);
    include << after.str() << "  Check(status);\nend;\n\n";
}

void writeImplementation(std::ostream& include) {
    include << "{$ifdef KovaImplementation}\n";
    for (const auto& function : typedFunctions()) {
        const Member& member = *function.member;
        writeLine(include, signature(member, "TKovaDrawerMan."), 0);
        if (raisesEvent(member)) {
            writeRaising(include, function);
            continue;
        }
        std::string arguments = "FHandle";
        for (const auto& parameter : member.parameters) {
            const std::string name(parameter.name);
            arguments += ", " + (parameter.type == Type::String       ? "Passed(" + name + ")"
                                 : parameter.type == Type::Boolean    ? "Ord(" + name + ")"
                                 : parameter.type == Type::Connection ? "HandleOf(" + name + ")"
                                                                      : name);
        }
        const Type result = member.result;
        if (result == Type::String)
            include << "var\n  value: PAnsiChar;\n";
        arguments += result == Type::String    ? ", @value"
                     : result == Type::Boolean ? ", @FNumber"
                     : result == Type::Int32   ? ", @Result"
                                               : "";
        include << "begin\n  Check(" << function.name << '(' << arguments << "));\n";
        if (result == Type::String || result == Type::Boolean)
            include << "  Result := " << (result == Type::String ? "Copied(value)" : "FNumber <> 0") << ";\n";
        include << "end;\n\n";
    }
    include << "{$endif}\n";
}

} // namespace

void writePascal(std::ostream& include) {
    include
        << "{ Written by kova-write-bindings from the table of members; included by KovaDrawerMan.pas. }\n\n";
    writeTypes(include);
    writeMembers(include);
    writeImports(include);
    writeImplementation(include);
}

} // namespace kova::bindings
