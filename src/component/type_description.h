#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace kova {

/// The published interface as data: what a type library would hold. Order, slots, dispatch ids and
/// identifiers are frozen: hosts built against an earlier version rely on them.
namespace type_description {

enum class MemberKind { Method, PropertyRead, PropertyWrite };
enum class Type { None, Int16, Int32, Double, Boolean, String, Connection };

/// A parameter, passed by reference like all of them.
struct Parameter {
    std::string_view name;
    Type type;
    bool optional = false;
};

struct Member {
    std::string_view name;
    MemberKind kind;
    int slot;       ///< function slot of the dual interface, from 0
    int dispatchId; ///< the two halves of a property share one
    std::span<const Parameter> parameters;
    Type result = Type::None;
};

struct Event {
    std::string_view name;
    int dispatchId;
    std::span<const Parameter> parameters;
};

struct EnumerationValue {
    std::string_view name;
    std::int32_t value;
};

/// Another name of the interface, for hosts built against an earlier version.
struct Alias {
    std::string_view name, identifier;
};

struct Library {
    std::string_view name, version, identifier;
    int locale;
    std::string_view coclass, programmaticId, coclassIdentifier;
    std::string_view interfaceName, interfaceIdentifier;
    std::string_view eventInterfaceName, eventInterfaceIdentifier;
    std::string_view enumerationName, enumerationIdentifier;
    std::span<const Alias> aliases;
};

const Library& library();
/// The 32 members in the order of publication.
std::span<const Member> members();
std::span<const Event> events();
/// `kDMTypeRow`.
std::span<const EnumerationValue> enumeration();

/// The member of that name (letter case aside) or id and of that kind; null when the interface has none.
const Member* find(std::string_view name, MemberKind kind);
const Member* find(int dispatchId, MemberKind kind);

/// What it is for, in English sentences; both halves of a property have the same.
std::string_view summary(const Member& member);
std::string_view summary(const Event& event);

} // namespace type_description
} // namespace kova
