#pragma once
#include <cstdint>
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

} // namespace kova
