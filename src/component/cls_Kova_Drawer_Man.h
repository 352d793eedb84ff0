#pragma once
#include "base/export.h"
#include "base/signal.h"
#include "component/component_options.h"
#include "component/events.h"
#include "component/variant.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kova {

class HostCall;
class ProcessState;
class frm_Drawer_Management;
enum class CallKind;

/// The component that a host creates, connects and shows: it holds the options and the one movement dialog,
/// and hands every request of the dialog to the host's event sinks. It stores, prints and opens nothing
/// itself. See examples/01_ten_lines.
///
/// All calls come from the user-interface thread, which is the one that made the first component. A call from
/// another one is refused and does nothing but write one record of the error log: an operation that never
/// fails returns normally, any other throws Error. Options may be set and read without that check.
///
/// Parameters are passed by reference as the published interface has them; only the event-raising methods may
/// change their arguments. `Show`, `Inizializza`, `InizializzaByConnString`, `DiscardForm` and the
/// construction never fail towards the host: a failure is one record of the error log.
class KOVA_API cls_Kova_Drawer_Man : public std::enable_shared_from_this<cls_Kova_Drawer_Man> {
  public:
    using Release = std::function<void(cls_Kova_Drawer_Man*)>;

    /// `process` is shared by all components of a process and outlives them. `release` deletes the component
    /// when nobody holds it any more.
    static std::shared_ptr<cls_Kova_Drawer_Man>
    create(ProcessState& process, Release release = std::default_delete<cls_Kova_Drawer_Man>());
    cls_Kova_Drawer_Man(const cls_Kova_Drawer_Man&) = delete;
    cls_Kova_Drawer_Man& operator=(const cls_Kova_Drawer_Man&) = delete;
    ~cls_Kova_Drawer_Man();

    /// Connects a sink, which must outlive the connection. Sinks are called in order of connecting.
    [[nodiscard]] Connection connect(EventSink& sink);

    // Raise the event of the same name; the host may call them too. A sink's exception reaches the caller.
    void ApriCassetto();
    void Stampa(std::string& DataOP);
    void Anteprima(std::string& DataOP);
    void SalvaPagamento(std::int32_t& idpagamento, double& importo, std::string& Valuta, std::string& note,
                        std::int16_t& cassetto, std::int32_t& tipoIncasso, bool& isIncasso);

    /// Shows the dialog: 0 modeless, anything else modal, when it returns after the dialog has closed. A
    /// dialog that is on the screen already gets this call's settings and comes to the front. Always returns
    /// "". After the end of the library it is one record of the error log.
    std::string Show(const std::int32_t& method = -1);
    /// Closes the dialog and what it opened. Before any `Show`, or with the dialog closed, it is no error.
    void DiscardForm();
    void SetSoftwareName(const std::string& SwName);
    /// Makes a connection that the host opened the one of the process, and reads the settings. It is shared,
    /// never closed by the component, and not checked.
    void Inizializza(const std::shared_ptr<DatabaseConnection>& ConnessioneDB);
    /// Opens a connection unless the process has one, and reads the settings.
    void InizializzaByConnString(const std::string& locConnString);

    // Options; each may be set at any time before `Show`. Ids of -1 mean none.
    void AttivaRecuperaFondoCassaPrecedente(const bool& on) {
        options_.AttivaRecuperaFondoCassaPrecedente = on;
    }
    void PredisponiInserimentoFondoCassaIniziale(const bool& on) {
        options_.PredisponiInserimentoFondoCassaIniziale = on;
    }
    void ActiveColorMetroStyle(const bool& on) { options_.ActiveColorMetroStyle = on; }
    void AttivaVisualizzazionePrecontiDefinitivi(const bool& on) {
        options_.AttivaVisualizzazionePrecontiDefinitivi = on;
    }
    [[nodiscard]] bool AttivaVisualizzazionePrecontiDefinitivi() const {
        return options_.AttivaVisualizzazionePrecontiDefinitivi;
    }
    void idCassa(const std::int32_t& id) { options_.idCassa = id; }
    [[nodiscard]] std::int32_t idCassa() const { return options_.idCassa; }
    void ChiusuraAutomatica(const bool& on) { options_.ChiusuraAutomatica = on; }
    [[nodiscard]] bool ChiusuraAutomatica() const { return options_.ChiusuraAutomatica; }
    void InserimentoAutomatico(const bool& on) { options_.InserimentoAutomatico = on; }
    [[nodiscard]] bool InserimentoAutomatico() const { return options_.InserimentoAutomatico; }
    void DoppioInserimentoObbligatorio(const bool& on) { options_.DoppioInserimentoObbligatorio = on; }
    [[nodiscard]] bool DoppioInserimentoObbligatorio() const {
        return options_.DoppioInserimentoObbligatorio;
    }
    void idPagamentoPredefinito(const std::int32_t& id) { options_.idPagamentoPredefinito = id; }
    [[nodiscard]] std::int32_t idPagamentoPredefinito() const { return options_.idPagamentoPredefinito; }
    void idUtente(const std::int32_t& id) { options_.idUtente = id; }
    [[nodiscard]] std::int32_t idUtente() const { return options_.idUtente; }
    void UsaSoloValutaAziendale(const bool& on) { options_.UsaSoloValutaAziendale = on; }
    [[nodiscard]] bool UsaSoloValutaAziendale() const { return options_.UsaSoloValutaAziendale; }
    void VisualizzaMovimentiUtenteLoggato(const bool& on) { options_.VisualizzaMovimentiUtenteLoggato = on; }
    [[nodiscard]] bool VisualizzaMovimentiUtenteLoggato() const {
        return options_.VisualizzaMovimentiUtenteLoggato;
    }
    void ValutaAziendale(const std::string& currency) { options_.ValutaAziendale = currency; }
    [[nodiscard]] const std::string& ValutaAziendale() const { return options_.ValutaAziendale; }

    // Late-bound calls by name (letter case aside) or dispatch id, from the table of type_description. They
    // throw Error: 438 for a member that the interface does not offer, 450 for a wrong number of arguments,
    // 13 and 6 for values of the wrong type or range.
    Variant get(std::string_view name);
    Variant get(int dispatchId);
    void set(std::string_view name, const Variant& value);
    void set(int dispatchId, const Variant& value);
    /// Arguments are by reference: what a sink wrote stands in them afterwards.
    Variant invoke(std::string_view name, std::span<Variant> arguments = {});
    Variant invoke(int dispatchId, std::span<Variant> arguments = {});

    /// Internal to the library: the initial-float option, which the host cannot read back.
    [[nodiscard]] bool predisponiInserimentoFondoCassaIniziale() const {
        return options_.PredisponiInserimentoFondoCassaIniziale;
    }
    /// Internal to the library: the dialog, null before the first `Show`.
    [[nodiscard]] const frm_Drawer_Management* dialog() const { return dialog_.get(); }
    [[nodiscard]] frm_Drawer_Management* dialog() { return dialog_.get(); }

  private:
    explicit cls_Kova_Drawer_Man(ProcessState& process);
    void initialize();

    /// A call that throws when it is refused, after one record. Keeps the component while it runs.
    [[nodiscard]] HostCall admitted(std::string_view label, CallKind kind);
    /// A call that never fails; a refusal, too, is one record. Keeps the component while it runs.
    template <class Body>
    void trappedCall(std::string_view label, CallKind kind, const Body& body);

    using Delivery = std::function<void(EventSink&)>;

    ProcessState& process_;
    Signal<const Delivery&> raised_;
    ComponentOptions options_;
    std::unique_ptr<frm_Drawer_Management> dialog_;
    Connection ml_RuntimeSupport_; ///< the language-change notifier
};

} // namespace kova
