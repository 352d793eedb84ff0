#pragma once
#include "component/type_description.h"
#include "player/component_door.h"
#include "player/trace.h"
#include "ports/platform.h"
#include "shop/shop_database.h"

#include <array>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <variant>
#include <vector>

namespace kova {

class ProcessState;

/// A by-reference argument of an event.
using EventArgument = std::variant<std::int16_t*, std::int32_t*, double*, bool*, std::string*>;

/// What the host's event handlers do besides recording, as a script defines it. The same for all components
/// of the script. Throws ScenarioError for an event or a parameter that does not exist.
class EventHandlers {
  public:
    /// Each is added to what the handler of the event does already, in this order. A second value for a
    /// parameter, or a second failure at each event, replaces the first.
    void write(const std::string& event, const std::string& parameter, const std::string& value);
    /// `at` counts the events from now on; without it each one fails.
    void fail(const std::string& event, const std::string& text, std::optional<int> at);
    void discard(const std::string& event) { replace(event, {Kind::Discard, 0, {}, {}, {}}); }
    void show(const std::string& event) { replace(event, {Kind::Show, 0, {}, {}, {}}); }
    void clear(const std::string& event);

    /// Does what was defined for an event of `component`; `arguments` as in the type description. A failure
    /// told by the script is thrown as std::runtime_error.
    void run(std::string_view event, ComponentDoor& component, std::span<const EventArgument> arguments);

  private:
    enum class Kind { Write, Fail, Discard, Show };
    struct Action {
        Kind kind;
        std::size_t parameter; ///< position of the one to write
        Variant value;
        std::string text;      ///< of the failure
        std::optional<int> at; ///< events left until the failure, this one included
    };
    using Actions = std::vector<Action>;

    [[nodiscard]] static std::size_t position(std::string_view event);
    void replace(const std::string& event, Action action);
    std::array<Actions, 4> actions_; ///< by position of the event in the type description
};

/// Stores the movements that the component hands over, while a script wants that.
class MovementStore {
  public:
    /// Both outlive the store; without a database it cannot be switched on.
    MovementStore(ShopDatabase* database, const Clock& clock) : database_(database), clock_(clock) {}
    /// Throws ScenarioError without a database.
    void switchOn(bool on);
    /// Committed when it returns. Throws DatabaseError.
    void save(const Movement& movement, ComponentDoor& component);

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
    HostedComponent(std::string name, const std::shared_ptr<cls_Kova_Drawer_Man>& component,
                    std::shared_ptr<ComponentDoor> door, SinkServices& services);

    /// Empty after the release.
    [[nodiscard]] const std::string& name() const { return name_; }
    /// Not after the release. Holding what it returns keeps the component alive during a call.
    [[nodiscard]] std::shared_ptr<ComponentDoor> door() const { return held_; }
    /// Null when it is gone; a released component lives on while its modal dialog is open.
    [[nodiscard]] std::shared_ptr<ComponentDoor> living() const { return door_.lock(); }
    /// What is behind the door, for those who look at its dialog; null when it is gone.
    [[nodiscard]] std::shared_ptr<cls_Kova_Drawer_Man> component() const { return component_.lock(); }
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
    std::shared_ptr<ComponentDoor> held_;
    std::weak_ptr<ComponentDoor> door_;
    std::weak_ptr<cls_Kova_Drawer_Man> component_;
    SinkServices& services_;
    std::shared_ptr<void> sink_;
};

/// The components that a script creates, one of which may be the current one.
class ScriptHost {
  public:
    using Doors = std::shared_ptr<ComponentDoor> (*)(const std::shared_ptr<cls_Kova_Drawer_Man>&);
    /// The process outlives the host.
    ScriptHost(ProcessState& process, Doors doors, SinkServices services)
        : process_(process), openDoor_(doors), services_(services) {}

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
    Doors openDoor_;
    SinkServices services_;
    std::vector<std::unique_ptr<HostedComponent>> components_; ///< the released ones too: their sinks stay
    HostedComponent* current_ = nullptr;
};

} // namespace kova
