// Writes the interface definition that the type library and the early-bound header are compiled from, and the
// manifest for hosts that use the library beside their program unregistered, so that all say what the
// component's own table of members says:
//
//   kova-write-idl IDL MANIFEST amd64|x86
#include "automation/marshallers.h"
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
    for (int slot = 0; const Member& member : slots)
        if (member.slot != slot++)
            idl.setstate(std::ios::failbit); // the table of functions would have a hole, or two for one place
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

std::string braced(std::string_view identifier) {
    return "{" + std::string(identifier) + "}";
}

void writeMarshalling(std::ostream& manifest, std::string_view name, std::string_view identifier,
                      const char* marshaller) {
    manifest << "  <comInterfaceExternalProxyStub name=\"" << name << "\" iid=\"" << braced(identifier)
             << "\"\n      tlbid=\"" << braced(library().identifier) << "\" proxyStubClsid32=\"" << marshaller
             << "\"/>\n";
}

/// What the registry says otherwise. Versions have decimal digits here, which there are hexadecimal, as the
/// locale is in both. The assembly is not called like the library, where Windows would look for the manifest
/// inside.
void writeManifest(std::ostream& manifest, std::string_view processor) {
    const std::string name(library().name);
    manifest << R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>
<assembly xmlns="urn:schemas-microsoft-com:asm.v1" manifestVersion="1.0">
  <assemblyIdentity type="win32" name=")"
             << name << ".automation\" version=\"" << library().version << ".0.0\" processorArchitecture=\""
             << processor << "\"/>\n  <file name=\"" << name << ".dll\">\n    <comClass clsid=\""
             << braced(library().coclassIdentifier) << "\" progid=\"" << library().programmaticId
             << "\"\n        tlbid=\"" << braced(library().identifier)
             << "\" threadingModel=\"Apartment\"/>\n    <typelib tlbid=\"" << braced(library().identifier)
             << "\" version=\"" << library().version << "\" resourceid=\"" << std::hex << library().locale
             << "\" helpdir=\"\"/>\n  </file>\n";
    writeMarshalling(manifest, library().interfaceName, library().interfaceIdentifier,
                     kova::automation::TableMarshaller);
    writeMarshalling(manifest, library().eventInterfaceName, library().eventInterfaceIdentifier,
                     kova::automation::DispatchMarshaller);
    manifest << "</assembly>\n";
}

} // namespace

int main(int count, char** arguments) {
    if (count != 4) {
        std::cerr << "usage: kova-write-idl IDL MANIFEST amd64|x86\n";
        return 2;
    }
    std::ofstream idl(arguments[1], std::ios::binary), manifest(arguments[2], std::ios::binary);
    writeLibrary(idl);
    writeManifest(manifest, arguments[3]);
    idl.flush();
    manifest.flush();
    return idl && manifest ? 0 : 1;
}
