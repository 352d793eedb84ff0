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

/// Cuts the words into lines of at most `width` characters.
std::vector<std::string> wrapped(std::string_view words, std::size_t width);

/// What the C header includes.
void writeC(std::ostream& header);
/// docs/reference.md.
void writeReference(std::ostream& page);

} // namespace kova::bindings
