#pragma once
#include "component/type_description.h"

#include <ostream>
#include <string>
#include <vector>

namespace kova::bindings {

/// One function of the C interface that is a member of the component.
struct TypedFunction {
    const type_description::Member* member;
    std::string name;
};

/// All of them in the order of publication.
std::vector<TypedFunction> typedFunctions();
/// One member of each name: both halves of a property have one.
std::vector<const type_description::Member*> namedMembers();

/// Cuts the words into lines of at most `width` characters.
std::vector<std::string> wrapped(std::string_view words, std::size_t width);
/// The words between commas.
std::string joined(const std::vector<std::string>& words);

/// Whether the member raises an event, so that a handler may change its arguments.
bool raisesEvent(const type_description::Member& member);

/// The name with the case of its first letter changed.
std::string capitalized(std::string_view name);
std::string uncapitalized(std::string_view name);

/// What the C header includes.
void writeC(std::ostream& header);
/// The class that Java's `DrawerMan` extends.
void writeJava(std::ostream& source);
/// The part of C#'s `DrawerMan` that has the members.
void writeCSharp(std::ostream& source);

} // namespace kova::bindings
