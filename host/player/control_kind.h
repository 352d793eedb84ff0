#pragma once
#include "widgets/control.h"

namespace kova {

/// The control as one of the kinds that ControlVisitor knows; null when it is of another kind.
template <class Kind>
Kind* asKind(Control& control) {
    struct Visitor : ControlVisitor {
        using ControlVisitor::visit;
        void visit(Kind& found) override { kind = &found; }
        Kind* kind = nullptr;
    } visitor;
    control.accept(visitor);
    return visitor.kind;
}

} // namespace kova
