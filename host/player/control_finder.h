#pragma once
#include "player/player_commands.h"
#include "scenario/scenario_language.h"
#include "widgets/control.h"

#include <optional>
#include <string>
#include <vector>

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

/// The loaded windows in the order in which a control is looked up: the active one, the others on the screen
/// from front to back, then the current component's dialog and the coin count if loaded but not shown.
std::vector<Window*> loadedWindows(const Scene& scene);
/// Throws ScenarioError when no window is on the screen.
Window& activeWindow(const Scene& scene);

/// A control as a line names it.
struct ControlName {
    std::string name;
    std::optional<int> index;
};
/// From NAME [INDEX], all the words given.
ControlName controlName(const Arguments& arguments);
/// Throws ScenarioError when no loaded window has it.
Control& findControl(const Scene& scene, const ControlName& wanted);

/// The control itself, as a kind; throws ScenarioError when it is of another one. `kind` is for the message.
template <class Kind>
Kind& requireKind(Control& control, const std::string& kind) {
    Kind* found = asKind<Kind>(control);
    if (found == nullptr)
        throw ScenarioError(control.name() + " is no " + kind);
    return *found;
}

/// The first control of a kind in a window; null without one.
template <class Kind>
Kind* firstOfKind(const Window& window) {
    for (Control* control : window.controls())
        if (Kind* found = asKind<Kind>(*control))
            return found;
    return nullptr;
}

/// The first control of a kind in the windows of a lookup. Throws ScenarioError without one.
template <class Kind>
Kind& firstOfKind(const std::vector<Window*>& windows, const std::string& kind) {
    for (const Window* window : windows)
        if (Kind* found = firstOfKind<Kind>(*window))
            return *found;
    throw ScenarioError("no " + kind + " is there");
}

} // namespace kova
