#pragma once
#include "base/connection.h"
#include "component/events.h"
#include "component/variant.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace kova {

class ComponentState;

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
class cls_Kova_Drawer_Man {
  public:
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
    void AttivaRecuperaFondoCassaPrecedente(const bool& on);
    void PredisponiInserimentoFondoCassaIniziale(const bool& on);
    void ActiveColorMetroStyle(const bool& on);
    void AttivaVisualizzazionePrecontiDefinitivi(const bool& on);
    [[nodiscard]] bool AttivaVisualizzazionePrecontiDefinitivi() const;
    void idCassa(const std::int32_t& id);
    [[nodiscard]] std::int32_t idCassa() const;
    void ChiusuraAutomatica(const bool& on);
    [[nodiscard]] bool ChiusuraAutomatica() const;
    void InserimentoAutomatico(const bool& on);
    [[nodiscard]] bool InserimentoAutomatico() const;
    void DoppioInserimentoObbligatorio(const bool& on);
    [[nodiscard]] bool DoppioInserimentoObbligatorio() const;
    void idPagamentoPredefinito(const std::int32_t& id);
    [[nodiscard]] std::int32_t idPagamentoPredefinito() const;
    void idUtente(const std::int32_t& id);
    [[nodiscard]] std::int32_t idUtente() const;
    void UsaSoloValutaAziendale(const bool& on);
    [[nodiscard]] bool UsaSoloValutaAziendale() const;
    void VisualizzaMovimentiUtenteLoggato(const bool& on);
    [[nodiscard]] bool VisualizzaMovimentiUtenteLoggato() const;
    void ValutaAziendale(const std::string& currency);
    [[nodiscard]] const std::string& ValutaAziendale() const;

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

  private:
    friend class ComponentState;
    explicit cls_Kova_Drawer_Man(std::unique_ptr<ComponentState> state);
    std::unique_ptr<ComponentState> state_;
};

} // namespace kova
