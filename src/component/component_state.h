#pragma once
#include "base/signal.h"
#include "component/cls_Kova_Drawer_Man.h"
#include "ports/host_calls.h"
#include "services/parent_component.h"
#include "services/process_state.h"

#include <functional>
#include <memory>
#include <string_view>

namespace kova {

class frm_Drawer_Management;

/// What is behind a component: its options, the connected sinks, its one dialog.
class ComponentState final : public ParentComponent {
  public:
    using Release = std::function<void(cls_Kova_Drawer_Man*)>;

    /// A new component. `process` is shared by all components of a process and outlives them. `release`
    /// deletes the component when nobody holds it any more.
    [[nodiscard]] static std::shared_ptr<cls_Kova_Drawer_Man>
    createComponent(ProcessState& process, Release release = std::default_delete<cls_Kova_Drawer_Man>());
    ~ComponentState() override;
    /// Of a component, for what inside the library needs more than a host.
    [[nodiscard]] static ComponentState& of(const cls_Kova_Drawer_Man& component) {
        return *component.state_;
    }

    [[nodiscard]] const ComponentOptions& options() const override { return options_; }
    [[nodiscard]] ComponentOptions& options() { return options_; }
    [[nodiscard]] std::shared_ptr<const void> keptAlive() const override { return component_.lock(); }
    void dialogClosed() override { closed(); }
    void ApriCassetto() override;
    void Stampa(std::string& DataOP) override;
    void Anteprima(std::string& DataOP) override;
    void SalvaPagamento(std::int32_t& idpagamento, double& importo, std::string& Valuta, std::string& note,
                        std::int16_t& cassetto, std::int32_t& tipoIncasso, bool& isIncasso) override;

    [[nodiscard]] Connection connect(EventSink& sink);
    Signal<> closed; ///< the dialog has left the screen; its slots must not throw
    /// Null before the first `show`.
    [[nodiscard]] frm_Drawer_Management* dialog() const { return dialog_.get(); }
    void show(std::int32_t modality);
    /// An option changed on which the dialog's list depends.
    void listMayDiffer() noexcept;

    [[nodiscard]] ProcessState& process() const { return process_; }
    /// A call that throws when it is refused, after one record. Keeps the component while it runs.
    [[nodiscard]] HostCall admitted(std::string_view label, CallKind kind) const;
    /// A call that never fails; a refusal, too, is one record. Keeps the component while it runs.
    template <class Body>
    void trappedCall(std::string_view label, CallKind kind, const Body& body) {
        const std::shared_ptr component(component_); // the host may release it meanwhile
        trapped(process_, label, [&] {
            const HostCall call(component, process_.platform.hostCalls, kind);
            body();
        });
    }

  private:
    explicit ComponentState(ProcessState& process);
    void initialize();

    using Delivery = std::function<void(EventSink&)>;

    ProcessState& process_;
    std::weak_ptr<cls_Kova_Drawer_Man> component_;
    Signal<const Delivery&> raised_;
    ComponentOptions options_;
    std::unique_ptr<frm_Drawer_Management> dialog_;
    Connection ml_RuntimeSupport_; ///< the language-change notifier
};

/// The component's dialog, null before the first `Show`.
[[nodiscard]] inline frm_Drawer_Management* dialogOf(const cls_Kova_Drawer_Man& component) {
    return ComponentState::of(component).dialog();
}

} // namespace kova
