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

/// The members without the second halves of properties, in the order of publication.
std::vector<const type_description::Member*> distinctMembers();

/// Whether it is a method that raises the event of its name, so that handlers may change its arguments.
bool raisesEvent(const type_description::Member& member);

/// Cuts the words into lines of at most `width` characters.
std::vector<std::string> wrapped(std::string_view words, std::size_t width);
/// The words between commas.
std::string joined(const std::vector<std::string>& words);

/// The name with the case of its first letter changed.
std::string capitalized(std::string_view name);
std::string uncapitalized(std::string_view name);

/// What the C header includes.
void writeC(std::ostream& header);
/// docs/reference.md.
void writeReference(std::ostream& page);
/// A module of the package for Python.
void writePython(std::ostream& module);
/// What the unit for Pascal includes.
void writePascal(std::ostream& include);
/// The class that Java's `DrawerMan` extends.
void writeJava(std::ostream& source);
/// The part of C#'s `DrawerMan` that has the members.
void writeCSharp(std::ostream& source);

} // namespace kova::bindings
