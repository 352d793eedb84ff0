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

/// What the C header includes.
void writeC(std::ostream& header);
/// A module of the package for Python.
void writePython(std::ostream& module);
/// What the unit for Pascal includes.
void writePascal(std::ostream& include);

} // namespace kova::bindings
