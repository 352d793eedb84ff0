#include "player/script_host.h"

#include "component/component_state.h"
#include "scenario/scenario_language.h"

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

void EventHandlers::run(std::string_view event, ComponentDoor& component,
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

void MovementStore::switchOn(bool on) {
    if (on && database_ == nullptr)
        throw ScenarioError("only the embedded database can store movements");
    on_ = on;
}

void MovementStore::save(const Movement& movement, ComponentDoor& component) {
    if (on_)
        database_->storeMovement({clock_.now(), std::get<std::int32_t>(component.get("idCassa")),
                                  std::get<std::int32_t>(component.get("idUtente")), movement});
}

HostedComponent::HostedComponent(std::string name, const std::shared_ptr<cls_Kova_Drawer_Man>& component,
                                 std::shared_ptr<ComponentDoor> door, SinkServices& services)
    : name_(std::move(name)), held_(std::move(door)), door_(held_), component_(component),
      services_(services) {
    connectSink(true);
}

void HostedComponent::connectSink(bool on) {
    if (on && sink_.use_count() == 0)
        sink_ = held_->connect(*this);
    else if (!on)
        sink_.reset();
}

void HostedComponent::release() {
    name_.clear();
    held_.reset();
}

void HostedComponent::handle(std::string_view event, std::span<const EventArgument> arguments) {
    if (const auto component = living())
        services_.handlers.run(event, *component, arguments);
}

void HostedComponent::SalvaPagamento(std::int32_t& idpagamento, double& importo, std::string& Valuta,
                                     std::string& note, std::int16_t& cassetto, std::int32_t& tipoIncasso,
                                     bool& isIncasso) {
    services_.trace.add(TraceLine("event SalvaPagamento")
                            .with("idpagamento", idpagamento)
                            .with("importo", importo)
                            .with("Valuta", Valuta)
                            .with("note", note)
                            .with("cassetto", cassetto)
                            .with("tipoIncasso", tipoIncasso)
                            .with("isIncasso", isIncasso));
    if (const auto component = living())
        services_.store.save({idpagamento, importo, Valuta, note, cassetto, tipoIncasso, isIncasso},
                             *component);
    const EventArgument arguments[]{&idpagamento, &importo,     &Valuta,   &note,
                                    &cassetto,    &tipoIncasso, &isIncasso};
    handle("SalvaPagamento", arguments);
}

void HostedComponent::Stampa(std::string& DataOperazione) {
    services_.trace.add(TraceLine("event Stampa").with("DataOperazione", DataOperazione));
    const EventArgument arguments[]{&DataOperazione};
    handle("Stampa", arguments);
}

void HostedComponent::Anteprima(std::string& DataOperazione) {
    services_.trace.add(TraceLine("event Anteprima").with("DataOperazione", DataOperazione));
    const EventArgument arguments[]{&DataOperazione};
    handle("Anteprima", arguments);
}

void HostedComponent::ApriCassetto() {
    services_.trace.add("event ApriCassetto");
    handle("ApriCassetto", {});
}

HostedComponent* ScriptHost::find(const std::string& name) const {
    for (const auto& component : components_)
        if (component->door() && component->name() == name)
            return component.get();
    return nullptr;
}

HostedComponent& ScriptHost::named(const std::string& name) const {
    HostedComponent* component = find(name);
    if (component == nullptr)
        throw ScenarioError("no component of this name: " + name);
    return *component;
}

void ScriptHost::create(const std::string& name) {
    if (find(name) != nullptr)
        throw ScenarioError("a component of this name exists: " + name);
    auto component = ComponentState::createComponent(process_);
    auto door = openDoor_(component);
    components_.push_back(std::make_unique<HostedComponent>(name, component, std::move(door), services_));
    current_ = components_.back().get();
}

void ScriptHost::release(const std::string& name) {
    HostedComponent& component = named(name);
    if (current_ == &component)
        current_ = nullptr;
    component.release();
}

HostedComponent& ScriptHost::current() const {
    if (current_ == nullptr)
        throw ScenarioError("no component is current");
    return *current_;
}

void ScriptHost::discardAll() {
    for (std::size_t i = 0; i < components_.size(); ++i)
        if (const auto component = components_[i]->living())
            component->invoke("DiscardForm");
}

} // namespace kova
