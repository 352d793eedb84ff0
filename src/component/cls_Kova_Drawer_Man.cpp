#include "component/cls_Kova_Drawer_Man.h"

#include "component/component_state.h"
#include "drawer_dialog/frm_Drawer_Management.h"

namespace kova {

cls_Kova_Drawer_Man::cls_Kova_Drawer_Man(std::unique_ptr<ComponentState> state) : state_(std::move(state)) {}

cls_Kova_Drawer_Man::~cls_Kova_Drawer_Man() = default;

Connection cls_Kova_Drawer_Man::connect(EventSink& sink) {
    return state_->connect(sink);
}

void cls_Kova_Drawer_Man::ApriCassetto() {
    state_->ApriCassetto();
}

void cls_Kova_Drawer_Man::Stampa(std::string& DataOP) {
    state_->Stampa(DataOP);
}

void cls_Kova_Drawer_Man::Anteprima(std::string& DataOP) {
    state_->Anteprima(DataOP);
}

void cls_Kova_Drawer_Man::SalvaPagamento(std::int32_t& idpagamento, double& importo, std::string& Valuta,
                                         std::string& note, std::int16_t& cassetto, std::int32_t& tipoIncasso,
                                         bool& isIncasso) {
    state_->SalvaPagamento(idpagamento, importo, Valuta, note, cassetto, tipoIncasso, isIncasso);
}

std::string cls_Kova_Drawer_Man::Show(const std::int32_t& method) {
    state_->show(method);
    return "";
}

void cls_Kova_Drawer_Man::DiscardForm() {
    auto& state = *state_;
    state.trappedCall("DiscardForm: ", CallKind::Operation, [&] {
        if (auto* const dialog = state.dialog())
            dialog->AnnullaClick();
    });
}

void cls_Kova_Drawer_Man::Inizializza(const std::shared_ptr<DatabaseConnection>& ConnessioneDB) {
    auto& process = state_->process();
    state_->trappedCall("RicercaCliente.Inizializza : ", CallKind::Operation, [&] {
        process.SharedConnection = ConnessioneDB;
        InitOpt(process);
    });
}

void cls_Kova_Drawer_Man::InizializzaByConnString(const std::string& locConnString) {
    auto& process = state_->process();
    state_->trappedCall("InizializzaByConnString: ", CallKind::Operation, [&] {
        if (!process.SharedConnection) {
            // A failed opening leaves a closed connection behind, which later calls reuse as they find it.
            process.SharedConnection = std::make_shared<ClosedConnection>();
            process.SharedConnection = process.openDatabase(locConnString);
        }
        InitOpt(process);
    });
}

void cls_Kova_Drawer_Man::SetSoftwareName(const std::string& SwName) {
    state_->options().SwName = SwName;
}

void cls_Kova_Drawer_Man::AttivaRecuperaFondoCassaPrecedente(const bool& on) {
    state_->options().AttivaRecuperaFondoCassaPrecedente = on;
}

void cls_Kova_Drawer_Man::PredisponiInserimentoFondoCassaIniziale(const bool& on) {
    state_->options().PredisponiInserimentoFondoCassaIniziale = on;
}

void cls_Kova_Drawer_Man::ActiveColorMetroStyle(const bool& on) {
    state_->options().ActiveColorMetroStyle = on;
}

void cls_Kova_Drawer_Man::AttivaVisualizzazionePrecontiDefinitivi(const bool& on) {
    state_->options().AttivaVisualizzazionePrecontiDefinitivi = on;
    state_->listMayDiffer();
}

bool cls_Kova_Drawer_Man::AttivaVisualizzazionePrecontiDefinitivi() const {
    return state_->options().AttivaVisualizzazionePrecontiDefinitivi;
}

void cls_Kova_Drawer_Man::idCassa(const std::int32_t& id) {
    state_->options().idCassa = id;
    state_->listMayDiffer();
}

std::int32_t cls_Kova_Drawer_Man::idCassa() const {
    return state_->options().idCassa;
}

void cls_Kova_Drawer_Man::ChiusuraAutomatica(const bool& on) {
    state_->options().ChiusuraAutomatica = on;
}

bool cls_Kova_Drawer_Man::ChiusuraAutomatica() const {
    return state_->options().ChiusuraAutomatica;
}

void cls_Kova_Drawer_Man::InserimentoAutomatico(const bool& on) {
    state_->options().InserimentoAutomatico = on;
}

bool cls_Kova_Drawer_Man::InserimentoAutomatico() const {
    return state_->options().InserimentoAutomatico;
}

void cls_Kova_Drawer_Man::DoppioInserimentoObbligatorio(const bool& on) {
    state_->options().DoppioInserimentoObbligatorio = on;
}

bool cls_Kova_Drawer_Man::DoppioInserimentoObbligatorio() const {
    return state_->options().DoppioInserimentoObbligatorio;
}

void cls_Kova_Drawer_Man::idPagamentoPredefinito(const std::int32_t& id) {
    state_->options().idPagamentoPredefinito = id;
}

std::int32_t cls_Kova_Drawer_Man::idPagamentoPredefinito() const {
    return state_->options().idPagamentoPredefinito;
}

void cls_Kova_Drawer_Man::idUtente(const std::int32_t& id) {
    state_->options().idUtente = id;
    state_->listMayDiffer();
}

std::int32_t cls_Kova_Drawer_Man::idUtente() const {
    return state_->options().idUtente;
}

void cls_Kova_Drawer_Man::UsaSoloValutaAziendale(const bool& on) {
    state_->options().UsaSoloValutaAziendale = on;
}

bool cls_Kova_Drawer_Man::UsaSoloValutaAziendale() const {
    return state_->options().UsaSoloValutaAziendale;
}

void cls_Kova_Drawer_Man::VisualizzaMovimentiUtenteLoggato(const bool& on) {
    state_->options().VisualizzaMovimentiUtenteLoggato = on;
    state_->listMayDiffer();
}

bool cls_Kova_Drawer_Man::VisualizzaMovimentiUtenteLoggato() const {
    return state_->options().VisualizzaMovimentiUtenteLoggato;
}

void cls_Kova_Drawer_Man::ValutaAziendale(const std::string& currency) {
    state_->options().ValutaAziendale = currency;
}

const std::string& cls_Kova_Drawer_Man::ValutaAziendale() const {
    return state_->options().ValutaAziendale;
}

} // namespace kova
