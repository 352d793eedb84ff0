#include "player/script_host.h"

#include "component/component_state.h"
#include "scenario/scenario_parser.h"

namespace kova {

HostedComponent::HostedComponent(std::string name, std::shared_ptr<cls_Kova_Drawer_Man> component,
                                 SinkServices& services)
    : name_(std::move(name)), held_(std::move(component)), component_(held_), services_(services) {
    connectSink(true);
}

void HostedComponent::connectSink(bool on) {
    if (on && !sinkConnected_)
        sink_ = held_->connect(*this);
    else if (!on)
        sink_.disconnect();
    sinkConnected_ = on;
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
        if (component->component() && component->name() == name)
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
    components_.push_back(std::make_unique<HostedComponent>(name, std::move(component), services_));
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
