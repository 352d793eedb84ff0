#include "player/event_handlers.h"

#include "scenario/arguments.h"
#include "scenario/scenario_parser.h"

#include <algorithm>
#include <stdexcept>

namespace kova {
namespace {

void write(const Variant& value, const EventArgument& argument) {
    std::visit(
        [&](auto* target) {
            *target = std::get<std::remove_pointer_t<decltype(target)>>(value); // coerced when defined
        },
        argument);
}

} // namespace

std::size_t EventHandlers::position(std::string_view event) {
    const auto events = type_description::events();
    const auto found = std::ranges::find(events, event, &type_description::Event::name);
    if (found == events.end())
        throw ScenarioError("no such event: " + std::string(event));
    return static_cast<std::size_t>(found - events.begin());
}

void EventHandlers::replace(const std::string& event, Action action) {
    auto& actions = actions_.at(position(event));
    std::erase_if(actions, [&](const Action& present) {
        return present.kind == action.kind && present.parameter == action.parameter && !present.at &&
               !action.at;
    });
    actions.push_back(std::move(action));
}

void EventHandlers::write(const std::string& event, const std::string& parameter, const std::string& value) {
    const auto parameters = type_description::events()[position(event)].parameters;
    const auto found = std::ranges::find(parameters, parameter, &type_description::Parameter::name);
    if (found == parameters.end())
        throw ScenarioError("no such parameter: " + parameter);
    const auto index = static_cast<std::size_t>(found - parameters.begin());
    replace(event, {Kind::Write, index, valueFromWord(value, found->type), {}, {}});
}

void EventHandlers::fail(const std::string& event, const std::string& text, std::optional<int> at) {
    replace(event, {Kind::Fail, 0, {}, text, at});
}

void EventHandlers::clear(const std::string& event) {
    actions_.at(position(event)).clear();
}

void EventHandlers::run(std::string_view event, cls_Kova_Drawer_Man& component,
                        std::span<const EventArgument> arguments) {
    auto& defined = actions_.at(position(event));
    for (auto& action : defined)
        if (action.at)
            --*action.at;
    const Actions actions = defined; // a dialog shown below may play lines that change the definition
    for (const auto& action : actions) {
        switch (action.kind) {
        case Kind::Write:
            kova::write(action.value, arguments[action.parameter]);
            break;
        case Kind::Fail:
            if (!action.at || *action.at == 0)
                throw std::runtime_error(action.text);
            break;
        case Kind::Discard:
            component.invoke("DiscardForm");
            break;
        case Kind::Show:
            component.invoke("Show");
            break;
        }
    }
}

} // namespace kova
