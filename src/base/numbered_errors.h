#pragma once
#include "base/error.h"

namespace kova {

// The failures with a number that hosts know, in the order of their numbers.

/// A number outside the range of the wanted type.
inline Error overflow() {
    return {6, "Overflow"};
}
inline Error subscriptOutOfRange() {
    return {9, "Subscript out of range"};
}
/// A text or value that the wanted type cannot be made from.
inline Error typeMismatch() {
    return {13, "Type mismatch"};
}
/// Something was asked of a window or connection that is not there.
inline Error objectNotSet() {
    return {91, "Object variable or With block variable not set"};
}
inline Error noSuchArrayElement(int index) {
    return {340, "Control array element '" + std::to_string(index) + "' doesn't exist"};
}
inline Error alreadyDisplayed() {
    return {400, "Form already displayed; can't show modally"};
}
inline Error noSuchMember() {
    return {438, "Object doesn't support this property or method"};
}
inline Error wrongArgumentCount() {
    return {450, "Wrong number of arguments or invalid property assignment"};
}

} // namespace kova
