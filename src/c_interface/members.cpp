// The members of the component, each by a function of its own.
#include "c_interface/held_component.h"

using namespace kova;
using namespace kova::c_interface;

namespace {

template <void (cls_Kova_Drawer_Man::*write)(const bool&)>
kova_status writeFlag(kova_component component, const char* function, int32_t value) {
    return call(component, function, [&](auto& drawer) { (drawer.*write)(value != 0); });
}

template <bool (cls_Kova_Drawer_Man::*read)() const>
kova_status readFlag(kova_component component, const char* function, int32_t* result) {
    return call(component, function, [&](auto& drawer) { wanted(result) = (drawer.*read)() ? 1 : 0; });
}

template <void (cls_Kova_Drawer_Man::*write)(const std::int32_t&)>
kova_status writeNumber(kova_component component, const char* function, int32_t value) {
    return call(component, function, [&](auto& drawer) { (drawer.*write)(value); });
}

template <std::int32_t (cls_Kova_Drawer_Man::*read)() const>
kova_status readNumber(kova_component component, const char* function, int32_t* result) {
    return call(component, function, [&](auto& drawer) { wanted(result) = (drawer.*read)(); });
}

template <void (cls_Kova_Drawer_Man::*write)(const std::string&)>
kova_status writeText(kova_component component, const char* function, const char* text) {
    return call(component, function, [&](auto& drawer) { (drawer.*write)(textOf(text)); });
}

/// The text lives on when a handler releases it.
template <void (cls_Kova_Drawer_Man::*raise)(std::string&)>
kova_status raiseText(kova_component component, const char* function, kova_text text) {
    return call(component, function, [&](auto& drawer) {
        const auto kept = keptText(text);
        (drawer.*raise)(*kept->content);
    });
}

} // namespace

kova_status kova_set_idCassa(kova_component component, int32_t value) {
    return writeNumber<&cls_Kova_Drawer_Man::idCassa>(component, __func__, value);
}

kova_status kova_get_idCassa(kova_component component, int32_t* result) {
    return readNumber<&cls_Kova_Drawer_Man::idCassa>(component, __func__, result);
}

kova_status kova_set_idPagamentoPredefinito(kova_component component, int32_t value) {
    return writeNumber<&cls_Kova_Drawer_Man::idPagamentoPredefinito>(component, __func__, value);
}

kova_status kova_get_idPagamentoPredefinito(kova_component component, int32_t* result) {
    return readNumber<&cls_Kova_Drawer_Man::idPagamentoPredefinito>(component, __func__, result);
}

kova_status kova_set_idUtente(kova_component component, int32_t value) {
    return writeNumber<&cls_Kova_Drawer_Man::idUtente>(component, __func__, value);
}

kova_status kova_get_idUtente(kova_component component, int32_t* result) {
    return readNumber<&cls_Kova_Drawer_Man::idUtente>(component, __func__, result);
}

kova_status kova_set_AttivaVisualizzazionePrecontiDefinitivi(kova_component component, int32_t value) {
    return writeFlag<&cls_Kova_Drawer_Man::AttivaVisualizzazionePrecontiDefinitivi>(component, __func__,
                                                                                    value);
}

kova_status kova_get_AttivaVisualizzazionePrecontiDefinitivi(kova_component component, int32_t* result) {
    return readFlag<&cls_Kova_Drawer_Man::AttivaVisualizzazionePrecontiDefinitivi>(component, __func__,
                                                                                   result);
}

kova_status kova_set_ChiusuraAutomatica(kova_component component, int32_t value) {
    return writeFlag<&cls_Kova_Drawer_Man::ChiusuraAutomatica>(component, __func__, value);
}

kova_status kova_get_ChiusuraAutomatica(kova_component component, int32_t* result) {
    return readFlag<&cls_Kova_Drawer_Man::ChiusuraAutomatica>(component, __func__, result);
}

kova_status kova_set_InserimentoAutomatico(kova_component component, int32_t value) {
    return writeFlag<&cls_Kova_Drawer_Man::InserimentoAutomatico>(component, __func__, value);
}

kova_status kova_get_InserimentoAutomatico(kova_component component, int32_t* result) {
    return readFlag<&cls_Kova_Drawer_Man::InserimentoAutomatico>(component, __func__, result);
}

kova_status kova_set_DoppioInserimentoObbligatorio(kova_component component, int32_t value) {
    return writeFlag<&cls_Kova_Drawer_Man::DoppioInserimentoObbligatorio>(component, __func__, value);
}

kova_status kova_get_DoppioInserimentoObbligatorio(kova_component component, int32_t* result) {
    return readFlag<&cls_Kova_Drawer_Man::DoppioInserimentoObbligatorio>(component, __func__, result);
}

kova_status kova_set_UsaSoloValutaAziendale(kova_component component, int32_t value) {
    return writeFlag<&cls_Kova_Drawer_Man::UsaSoloValutaAziendale>(component, __func__, value);
}

kova_status kova_get_UsaSoloValutaAziendale(kova_component component, int32_t* result) {
    return readFlag<&cls_Kova_Drawer_Man::UsaSoloValutaAziendale>(component, __func__, result);
}

kova_status kova_set_VisualizzaMovimentiUtenteLoggato(kova_component component, int32_t value) {
    return writeFlag<&cls_Kova_Drawer_Man::VisualizzaMovimentiUtenteLoggato>(component, __func__, value);
}

kova_status kova_get_VisualizzaMovimentiUtenteLoggato(kova_component component, int32_t* result) {
    return readFlag<&cls_Kova_Drawer_Man::VisualizzaMovimentiUtenteLoggato>(component, __func__, result);
}

kova_status kova_set_AttivaRecuperaFondoCassaPrecedente(kova_component component, int32_t value) {
    return writeFlag<&cls_Kova_Drawer_Man::AttivaRecuperaFondoCassaPrecedente>(component, __func__, value);
}

kova_status kova_set_PredisponiInserimentoFondoCassaIniziale(kova_component component, int32_t value) {
    return writeFlag<&cls_Kova_Drawer_Man::PredisponiInserimentoFondoCassaIniziale>(component, __func__,
                                                                                    value);
}

kova_status kova_set_ActiveColorMetroStyle(kova_component component, int32_t value) {
    return writeFlag<&cls_Kova_Drawer_Man::ActiveColorMetroStyle>(component, __func__, value);
}

kova_status kova_set_ValutaAziendale(kova_component component, const char* value) {
    return writeText<&cls_Kova_Drawer_Man::ValutaAziendale>(component, __func__, value);
}

kova_status kova_get_ValutaAziendale(kova_component component, const char** result) {
    return call(component, __func__,
                [&](auto& drawer) { wanted(result) = handedOut(drawer.ValutaAziendale()); });
}

kova_status kova_SetSoftwareName(kova_component component, const char* SwName) {
    return writeText<&cls_Kova_Drawer_Man::SetSoftwareName>(component, __func__, SwName);
}

kova_status kova_InizializzaByConnString(kova_component component, const char* locConnString) {
    return writeText<&cls_Kova_Drawer_Man::InizializzaByConnString>(component, __func__, locConnString);
}

kova_status kova_Inizializza(kova_component component, kova_database ConnessioneDB) {
    return call(component, __func__, [&](auto& drawer) { drawer.Inizializza(databaseOf(ConnessioneDB)); });
}

kova_status kova_Show(kova_component component, int32_t method, const char** result) {
    return guarded([&] {
        const auto shown = held(component, "kova_Show");
        std::string empty = shown->component().Show(method);
        if (!shown->open())
            shown->tellClosed();
        if (result != nullptr)
            *result = handedOut(std::move(empty));
    });
}

kova_status kova_DiscardForm(kova_component component) {
    return call(component, __func__, [](auto& drawer) { drawer.DiscardForm(); });
}

kova_status kova_ApriCassetto(kova_component component) {
    return call(component, __func__, [](auto& drawer) { drawer.ApriCassetto(); });
}

kova_status kova_Stampa(kova_component component, kova_text DataOP) {
    return raiseText<&cls_Kova_Drawer_Man::Stampa>(component, __func__, DataOP);
}

kova_status kova_Anteprima(kova_component component, kova_text DataOP) {
    return raiseText<&cls_Kova_Drawer_Man::Anteprima>(component, __func__, DataOP);
}

kova_status kova_SalvaPagamento(kova_component component, int32_t* idpagamento, double* importo,
                                kova_text Valuta, kova_text note, int16_t* cassetto, int32_t* tipoIncasso,
                                int32_t* isIncasso) {
    return call(component, __func__, [&](auto& drawer) {
        const auto currency = keptText(Valuta), text = keptText(note);
        auto& into = wanted(isIncasso);
        bool incoming = into != 0;
        const auto takeBack = [&](bool*) { into = incoming ? 1 : 0; };
        const std::unique_ptr<bool, decltype(takeBack)> atEnd(&incoming,
                                                              takeBack); // when a handler fails, too
        drawer.SalvaPagamento(wanted(idpagamento), wanted(importo), *currency->content, *text->content,
                              wanted(cassetto), wanted(tipoIncasso), incoming);
    });
}
