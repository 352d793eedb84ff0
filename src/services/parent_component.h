#pragma once
#include <cstdint>
#include <memory>
#include <string>

namespace kova {

/// The options of one component. The flags begin as off; the component's construction gives the others their
/// defaults, and leaves those that it did not reach when it fails.
struct ComponentOptions {
    std::int32_t idCassa = 0;
    std::int32_t idUtente = 0;
    std::int32_t idPagamentoPredefinito = 0;
    std::string ValutaAziendale;
    bool UsaSoloValutaAziendale = false;
    bool AttivaVisualizzazionePrecontiDefinitivi = false;
    bool ChiusuraAutomatica = false;
    bool InserimentoAutomatico = false;
    bool DoppioInserimentoObbligatorio = false;
    bool VisualizzaMovimentiUtenteLoggato = false;
    bool ActiveColorMetroStyle = false;
    bool AttivaRecuperaFondoCassaPrecedente = false;
    bool PredisponiInserimentoFondoCassaIniziale = false;
    std::string SwName;
};

/// What the dialog sees of the component that it belongs to: the options as they are now, and the requests to
/// the host, whose failures reach the caller.
class ParentComponent {
  public:
    ParentComponent() = default;
    ParentComponent(const ParentComponent&) = delete;
    ParentComponent& operator=(const ParentComponent&) = delete;
    virtual ~ParentComponent() = default;

    [[nodiscard]] virtual const ComponentOptions& options() const = 0;
    /// Keeps the component while it is held; null when the component is being destroyed.
    [[nodiscard]] virtual std::shared_ptr<const void> keptAlive() const = 0;

    /// The dialog has left the screen.
    virtual void dialogClosed() = 0;
    virtual void ApriCassetto() = 0;
    virtual void Stampa(std::string& DataOP) = 0;
    virtual void Anteprima(std::string& DataOP) = 0;
    virtual void SalvaPagamento(std::int32_t& idpagamento, double& importo, std::string& Valuta,
                                std::string& note, std::int16_t& cassetto, std::int32_t& tipoIncasso,
                                bool& isIncasso) = 0;
};

} // namespace kova
