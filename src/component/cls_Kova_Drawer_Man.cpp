#include "component/cls_Kova_Drawer_Man.h"

#include "drawer_dialog/frm_Drawer_Management.h"
#include "services/process_state.h"
#include "services/settings.h"

namespace kova {

std::shared_ptr<cls_Kova_Drawer_Man> cls_Kova_Drawer_Man::create(ProcessState& process) {
    std::shared_ptr<cls_Kova_Drawer_Man> component(new cls_Kova_Drawer_Man(process));
    component->initialize();
    return component;
}

cls_Kova_Drawer_Man::cls_Kova_Drawer_Man(ProcessState& process) : process_(process) {}

cls_Kova_Drawer_Man::~cls_Kova_Drawer_Man() = default;

void cls_Kova_Drawer_Man::initialize() {
    trapped(process_, "RicercaCliente.Class_Initialize: ", [&] {
        PredisponiInserimentoFondoCassaIniziale(false);
        AttivaRecuperaFondoCassaPrecedente(false);
        InitLanguage(process_);
        auto& runtime = process_.platform.languageRuntime;
        ml_RuntimeSupport_ = runtime.languageChanged.connect(
            [this](std::int32_t id, const std::string& name) { SetLanguage(process_, id, name); });
        SetLanguage(process_, runtime.languageId(), runtime.languageName());
        idCassa(-1);
        SetSoftwareName("KOVA");
        AttivaVisualizzazionePrecontiDefinitivi(false);
        ActiveColorMetroStyle(false);
        idUtente(-1);
        ValutaAziendale("€");
        UsaSoloValutaAziendale(false);
        idPagamentoPredefinito(-1);
        ChiusuraAutomatica(false);
        InserimentoAutomatico(false);
        DoppioInserimentoObbligatorio(false);
        VisualizzaMovimentiUtenteLoggato(false);
        process_.settings.idCassettoCausPred_Prelievi = -1;
        process_.settings.idCassettoCausPred_Versamenti = -1;
    });
}

Connection cls_Kova_Drawer_Man::connect(EventSink& sink) {
    return raised_.connect([&sink](const Delivery& deliver) { deliver(sink); });
}

void cls_Kova_Drawer_Man::ApriCassetto() {
    raised_([](EventSink& sink) { sink.ApriCassetto(); });
}

void cls_Kova_Drawer_Man::Stampa(std::string& DataOP) {
    raised_([&](EventSink& sink) { sink.Stampa(DataOP); });
}

void cls_Kova_Drawer_Man::Anteprima(std::string& DataOP) {
    raised_([&](EventSink& sink) { sink.Anteprima(DataOP); });
}

void cls_Kova_Drawer_Man::SalvaPagamento(std::int32_t& idpagamento, double& importo, std::string& Valuta,
                                         std::string& note, std::int16_t& cassetto, std::int32_t& tipoIncasso,
                                         bool& isIncasso) {
    raised_([&](EventSink& sink) {
        sink.SalvaPagamento(idpagamento, importo, Valuta, note, cassetto, tipoIncasso, isIncasso);
    });
}

std::string cls_Kova_Drawer_Man::Show(const std::int32_t& method) {
    const auto self = shared_from_this(); // the host may release the component while the dialog is open
    const std::int32_t modality = method;
    trapped(process_, "RicercaCliente.Show: ", [&] {
        if (!dialog_)
            dialog_ = std::make_unique<frm_Drawer_Management>(process_, *this);
        dialog_->setParentComponent(*this);
        dialog_->set_button_Drawer();
        dialog_->SetSwName(options_.SwName);
        if (options_.ActiveColorMetroStyle)
            dialog_->setColorMetroStyle();
        if (options_.PredisponiInserimentoFondoCassaIniziale)
            dialog_->PredisponiPerInserimentoFondoCassaIniziale();
        if (options_.AttivaRecuperaFondoCassaPrecedente)
            dialog_->RecuperaFondoCassaPrecedenteAttivo();
        dialog_->Show(modality);
    });
    return "";
}

void cls_Kova_Drawer_Man::DiscardForm() {
    trapped(process_, "DiscardForm: ", [&] {
        if (dialog_)
            dialog_->AnnullaClick();
    });
}

void cls_Kova_Drawer_Man::SetSoftwareName(const std::string& SwName) {
    options_.SwName = SwName;
}

void cls_Kova_Drawer_Man::Inizializza(const std::shared_ptr<DatabaseConnection>& ConnessioneDB) {
    trapped(process_, "RicercaCliente.Inizializza : ", [&] {
        process_.SharedConnection = ConnessioneDB;
        InitOpt(process_);
    });
}

void cls_Kova_Drawer_Man::InizializzaByConnString(const std::string& locConnString) {
    trapped(process_, "InizializzaByConnString: ", [&] {
        if (!process_.SharedConnection) {
            // A failed opening leaves a closed connection behind, which later calls reuse as they find it.
            process_.SharedConnection = std::make_shared<ClosedConnection>();
            process_.SharedConnection = process_.platform.databases.open(locConnString);
        }
        InitOpt(process_);
    });
}

} // namespace kova
