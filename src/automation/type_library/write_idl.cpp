// Writes the interface definition that the type library and the early-bound header are compiled from, so that
// both say what the component's own table of members says:
//
//   kova-write-idl FILE
#include "component/type_description.h"

#include <algorithm>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

namespace {

using namespace kova::type_description;

/// The published type of ADO's connection, taken from ADO's own type library.
constexpr const char* Head = R"(import "oaidl.idl";

[object, uuid(00001550-0000-0010-8000-00aa006d2ea4)]
interface _Connection : IDispatch {};

)";

std::string idlType(Type type) {
    switch (type) {
    case Type::Int16:
        return "short";
    case Type::Int32:
        return "long";
    case Type::Double:
        return "double";
    case Type::Boolean:
        return "VARIANT_BOOL";
    case Type::String:
        return "BSTR";
    case Type::Connection:
        return "_Connection *";
    case Type::None:
        break;
    }
    return "void";
}

/// By reference, as all are; one that may be left out is -1 then.
std::string parameterList(std::span<const Parameter> parameters, Type result) {
    std::string list;
    for (const auto& parameter : parameters)
        list += std::string(list.empty() ? "" : ", ") + "[in, out" +
                (parameter.optional ? ", optional, defaultvalue(-1)" : "") + "] " + idlType(parameter.type) +
                " *" + std::string(parameter.name);
    if (result != Type::None)
        list += std::string(list.empty() ? "" : ", ") + "[out, retval] " + idlType(result) + " *result";
    return list.empty() ? "void" : list;
}

void writeInterface(std::ostream& idl) {
    std::vector<Member> slots(members().begin(), members().end());
    std::ranges::sort(slots, {}, &Member::slot);
    idl << "    [odl, object, dual, oleautomation, hidden, nonextensible, version(1.0), uuid("
        << library().interfaceIdentifier << ")]\n    interface " << library().interfaceName
        << " : IDispatch\n    {\n";
    for (const auto& member : slots)
        idl << "        [id(" << member.dispatchId << ")"
            << (member.kind == MemberKind::PropertyRead    ? ", propget"
                : member.kind == MemberKind::PropertyWrite ? ", propput"
                                                           : "")
            << "] HRESULT " << member.name << '(' << parameterList(member.parameters, member.result)
            << ");\n";
    idl << "    };\n\n";
}

void writeEvents(std::ostream& idl) {
    idl << "    [hidden, uuid(" << library().eventInterfaceIdentifier << ")]\n    dispinterface "
        << library().eventInterfaceName << "\n    {\n        properties:\n        methods:\n";
    for (const auto& event : events())
        idl << "            [id(" << event.dispatchId << ")] void " << event.name << '('
            << parameterList(event.parameters, Type::None) << ");\n";
    idl << "    };\n\n";
}

void writeEnumeration(std::ostream& idl) {
    idl << "    [uuid(" << library().enumerationIdentifier << "), version(1.0)]\n    typedef enum "
        << library().enumerationName << "\n    {\n";
    for (const auto& value : enumeration())
        idl << "        " << value.name << " = " << value.value << ",\n";
    idl << "    } " << library().enumerationName << ";\n\n";
}

void writeLibrary(std::ostream& idl) {
    idl << Head << "[uuid(" << library().identifier << "), version(" << library().version << "), lcid("
        << library().locale << "), helpstring(\"Kova Drawer Man\")]\nlibrary " << library().name
        << "\n{\n    importlib(\"stdole2.tlb\");\n    importlib(\"msado15.dll\");\n\n";
    writeEnumeration(idl);
    writeInterface(idl);
    writeEvents(idl);
    for (const auto& alias : library().aliases)
        idl << "    [public, uuid(" << alias.identifier << ")] typedef " << library().interfaceName << " *"
            << alias.name << ";\n";
    idl << "\n    [version(1.0), uuid(" << library().coclassIdentifier << ")]\n    coclass "
        << library().coclass << "\n    {\n        [default] interface " << library().interfaceName
        << ";\n        [default, source] dispinterface " << library().eventInterfaceName << ";\n    };\n}\n";
}

} // namespace

int main(int count, char** arguments) {
    if (count != 2) {
        std::cerr << "usage: kova-write-idl FILE\n";
        return 2;
    }
    std::ofstream idl(arguments[1], std::ios::binary);
    writeLibrary(idl);
    idl.flush();
    return idl ? 0 : 1;
}
