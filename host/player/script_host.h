#pragma once
#include "component/cls_Kova_Drawer_Man.h"
#include "player/event_handlers.h"
#include "player/trace.h"
#include "ports/platform.h"
#include "shop/shop_database.h"

#include <memory>
#include <string>
#include <vector>

namespace kova {

class ProcessState;

/// Stores the movements that the component hands over, while a script wants that.
class MovementStore {
  public:
    /// Both outlive the store; without a database it cannot be switched on.
    MovementStore(ShopDatabase* database, const Clock& clock) : database_(database), clock_(clock) {}
    /// Throws ScenarioError without a database.
    void switchOn(bool on);
    /// Committed when it returns. Throws DatabaseError.
    void save(const Movement& movement, const cls_Kova_Drawer_Man& component);

  private:
    ShopDatabase* database_;
    const Clock& clock_;
    bool on_ = false;
};

/// What the host's event sinks work with.
struct SinkServices {
    Trace& trace;
    EventHandlers& handlers;
    MovementStore& store;
};

/// One component as its host holds it, with the host's event sink.
class HostedComponent final : public EventSink {
  public:
    HostedComponent(std::string name, std::shared_ptr<cls_Kova_Drawer_Man> component, SinkServices& services);

    /// Empty after the release.
    [[nodiscard]] const std::string& name() const { return name_; }
    /// Not after the release. Holding what it returns keeps the component alive during a call.
    [[nodiscard]] std::shared_ptr<cls_Kova_Drawer_Man> component() const { return held_; }
    /// Null when it is gone; a released component lives on while its modal dialog is open.
    [[nodiscard]] std::shared_ptr<cls_Kova_Drawer_Man> living() const { return component_.lock(); }
    void connectSink(bool on);
    void release();

    void SalvaPagamento(std::int32_t& idpagamento, double& importo, std::string& Valuta, std::string& note,
                        std::int16_t& cassetto, std::int32_t& tipoIncasso, bool& isIncasso) override;
    void Stampa(std::string& DataOperazione) override;
    void Anteprima(std::string& DataOperazione) override;
    void ApriCassetto() override;

  private:
    void handle(std::string_view event, std::span<const EventArgument> arguments);
    std::string name_;
    std::shared_ptr<cls_Kova_Drawer_Man> held_;
    std::weak_ptr<cls_Kova_Drawer_Man> component_;
    SinkServices& services_;
    Connection sink_;
    bool sinkConnected_ = false;
};

/// The components that a script creates, one of which may be the current one.
class ScriptHost {
  public:
    /// Both outlive the host.
    ScriptHost(ProcessState& process, SinkServices services) : process_(process), services_(services) {}

    // These throw ScenarioError for a name that does not exist, or exists already.
    void create(const std::string& name);
    void use(const std::string& name) { current_ = &named(name); }
    void release(const std::string& name);
    /// Throws ScenarioError without one.
    [[nodiscard]] HostedComponent& current() const;
    [[nodiscard]] HostedComponent* currentIfAny() const { return current_; }
    /// Closes the dialogs of all living components.
    void discardAll();

  private:
    [[nodiscard]] HostedComponent* find(const std::string& name) const;
    [[nodiscard]] HostedComponent& named(const std::string& name) const;
    ProcessState& process_;
    SinkServices services_;
    std::vector<std::unique_ptr<HostedComponent>> components_; ///< the released ones too: their sinks stay
    HostedComponent* current_ = nullptr;
};

} // namespace kova
