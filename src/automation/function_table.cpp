// The function table of the dual interface: each entry is the component's own member.
#include "automation/component_object.h"

#include "adapters/ado/ado_database.h"
#include "com/com_values.h"

#include <utility>

namespace kova::automation {

template <class Body, class... Pointers>
HRESULT ComponentObject::call(const Body& body, Pointers*... arguments) {
    if (GetCurrentThreadId() != thread_)
        return RPC_E_WRONG_THREAD;
    if (((arguments == nullptr) || ...))
        return E_POINTER;
    const com::Pointer<ComponentObject> self(this); // the host may release it inside an event
    return tellThread(outcomeOf(body), IID__cls_Kova_Drawer_Man);
}

HRESULT ComponentObject::readNumber(std::int32_t (cls_Kova_Drawer_Man::*read)() const, LONG* result) {
    return call([&] { *result = (component_.get()->*read)(); }, result);
}

HRESULT ComponentObject::writeNumber(void (cls_Kova_Drawer_Man::*write)(const std::int32_t&),
                                     const LONG* value) {
    return call([&] { (component_.get()->*write)(*value); }, value);
}

HRESULT ComponentObject::readFlag(bool (cls_Kova_Drawer_Man::*read)() const, VARIANT_BOOL* result) {
    return call([&] { *result = (component_.get()->*read)() ? VARIANT_TRUE : VARIANT_FALSE; }, result);
}

HRESULT ComponentObject::writeFlag(void (cls_Kova_Drawer_Man::*write)(const bool&),
                                   const VARIANT_BOOL* value) {
    return call([&] { (component_.get()->*write)(*value != VARIANT_FALSE); }, value);
}

HRESULT ComponentObject::writeText(void (cls_Kova_Drawer_Man::*write)(const std::string&), BSTR* value) {
    return call([&] { (component_.get()->*write)(com::narrow(*value)); }, value);
}

HRESULT ComponentObject::raiseText(void (cls_Kova_Drawer_Man::*raise)(std::string&), BSTR* text) {
    return call(
        [&] {
            com::ReferredText day(*text);
            (component_.get()->*raise)(day.text);
        },
        text);
}

HRESULT ComponentObject::Stampa(BSTR* DataOP) {
    return raiseText(&cls_Kova_Drawer_Man::Stampa, DataOP);
}

HRESULT ComponentObject::Anteprima(BSTR* DataOP) {
    return raiseText(&cls_Kova_Drawer_Man::Anteprima, DataOP);
}

HRESULT ComponentObject::SalvaPagamento(LONG* idpagamento, double* importo, BSTR* Valuta, BSTR* note,
                                        short* cassetto, LONG* tipoIncasso, VARIANT_BOOL* isIncasso) {
    return call(
        [&] {
            com::ReferredText currency(*Valuta), text(*note);
            std::int32_t payment = *idpagamento, activity = *tipoIncasso;
            bool incoming = *isIncasso != VARIANT_FALSE;
            const auto takeBack = [&] {
                *idpagamento = payment;
                *tipoIncasso = activity;
                *isIncasso = incoming ? VARIANT_TRUE : VARIANT_FALSE;
            };
            try {
                component_->SalvaPagamento(payment, *importo, currency.text, text.text, *cassetto, activity,
                                           incoming);
            } catch (...) {
                takeBack();
                throw;
            }
            takeBack();
        },
        idpagamento, importo, Valuta, note, cassetto, tipoIncasso, isIncasso);
}

HRESULT ComponentObject::ApriCassetto() {
    return call([&] { component_->ApriCassetto(); });
}

HRESULT ComponentObject::Show(LONG* method, BSTR* result) {
    return call(
        [&] {
            *result = nullptr;
            *result = com::makeBstr(component_->Show(*method));
        },
        method, result);
}

HRESULT ComponentObject::DiscardForm() {
    return call([&] { component_->DiscardForm(); });
}

HRESULT ComponentObject::Inizializza(_Connection** ConnessioneDB) {
    return call([&] { component_->Inizializza(shareAdo(*ConnessioneDB)); }, ConnessioneDB);
}

HRESULT ComponentObject::InizializzaByConnString(BSTR* locConnString) {
    return writeText(&cls_Kova_Drawer_Man::InizializzaByConnString, locConnString);
}

HRESULT ComponentObject::SetSoftwareName(BSTR* SwName) {
    return writeText(&cls_Kova_Drawer_Man::SetSoftwareName, SwName);
}

HRESULT ComponentObject::put_ValutaAziendale(BSTR* value) {
    return writeText(&cls_Kova_Drawer_Man::ValutaAziendale, value);
}

HRESULT ComponentObject::get_ValutaAziendale(BSTR* result) {
    return call([&] { *result = com::makeBstr(component_->ValutaAziendale()); }, result);
}

HRESULT ComponentObject::put_idCassa(LONG* value) {
    return writeNumber(&cls_Kova_Drawer_Man::idCassa, value);
}

HRESULT ComponentObject::get_idCassa(LONG* result) {
    return readNumber(&cls_Kova_Drawer_Man::idCassa, result);
}

HRESULT ComponentObject::put_idPagamentoPredefinito(LONG* value) {
    return writeNumber(&cls_Kova_Drawer_Man::idPagamentoPredefinito, value);
}

HRESULT ComponentObject::get_idPagamentoPredefinito(LONG* result) {
    return readNumber(&cls_Kova_Drawer_Man::idPagamentoPredefinito, result);
}

HRESULT ComponentObject::put_idUtente(LONG* value) {
    return writeNumber(&cls_Kova_Drawer_Man::idUtente, value);
}

HRESULT ComponentObject::get_idUtente(LONG* result) {
    return readNumber(&cls_Kova_Drawer_Man::idUtente, result);
}

HRESULT ComponentObject::put_ActiveColorMetroStyle(VARIANT_BOOL* value) {
    return writeFlag(&cls_Kova_Drawer_Man::ActiveColorMetroStyle, value);
}

HRESULT ComponentObject::put_AttivaVisualizzazionePrecontiDefinitivi(VARIANT_BOOL* value) {
    return writeFlag(&cls_Kova_Drawer_Man::AttivaVisualizzazionePrecontiDefinitivi, value);
}

HRESULT ComponentObject::get_AttivaVisualizzazionePrecontiDefinitivi(VARIANT_BOOL* result) {
    return readFlag(&cls_Kova_Drawer_Man::AttivaVisualizzazionePrecontiDefinitivi, result);
}

HRESULT ComponentObject::put_ChiusuraAutomatica(VARIANT_BOOL* value) {
    return writeFlag(&cls_Kova_Drawer_Man::ChiusuraAutomatica, value);
}

HRESULT ComponentObject::get_ChiusuraAutomatica(VARIANT_BOOL* result) {
    return readFlag(&cls_Kova_Drawer_Man::ChiusuraAutomatica, result);
}

HRESULT ComponentObject::put_InserimentoAutomatico(VARIANT_BOOL* value) {
    return writeFlag(&cls_Kova_Drawer_Man::InserimentoAutomatico, value);
}

HRESULT ComponentObject::get_InserimentoAutomatico(VARIANT_BOOL* result) {
    return readFlag(&cls_Kova_Drawer_Man::InserimentoAutomatico, result);
}

HRESULT ComponentObject::put_UsaSoloValutaAziendale(VARIANT_BOOL* value) {
    return writeFlag(&cls_Kova_Drawer_Man::UsaSoloValutaAziendale, value);
}

HRESULT ComponentObject::get_UsaSoloValutaAziendale(VARIANT_BOOL* result) {
    return readFlag(&cls_Kova_Drawer_Man::UsaSoloValutaAziendale, result);
}

HRESULT ComponentObject::put_VisualizzaMovimentiUtenteLoggato(VARIANT_BOOL* value) {
    return writeFlag(&cls_Kova_Drawer_Man::VisualizzaMovimentiUtenteLoggato, value);
}

HRESULT ComponentObject::get_VisualizzaMovimentiUtenteLoggato(VARIANT_BOOL* result) {
    return readFlag(&cls_Kova_Drawer_Man::VisualizzaMovimentiUtenteLoggato, result);
}

HRESULT ComponentObject::put_DoppioInserimentoObbligatorio(VARIANT_BOOL* value) {
    return writeFlag(&cls_Kova_Drawer_Man::DoppioInserimentoObbligatorio, value);
}

HRESULT ComponentObject::get_DoppioInserimentoObbligatorio(VARIANT_BOOL* result) {
    return readFlag(&cls_Kova_Drawer_Man::DoppioInserimentoObbligatorio, result);
}

HRESULT ComponentObject::put_AttivaRecuperaFondoCassaPrecedente(VARIANT_BOOL* value) {
    return writeFlag(&cls_Kova_Drawer_Man::AttivaRecuperaFondoCassaPrecedente, value);
}

HRESULT ComponentObject::put_PredisponiInserimentoFondoCassaIniziale(VARIANT_BOOL* value) {
    return writeFlag(&cls_Kova_Drawer_Man::PredisponiInserimentoFondoCassaIniziale, value);
}

} // namespace kova::automation
