#include "component/cls_Kova_Drawer_Man.h"

#include "drawer_dialog/frm_Drawer_Management.h"
#include "ports/host_calls.h"
#include "services/process_state.h"

namespace kova {

std::shared_ptr<cls_Kova_Drawer_Man> cls_Kova_Drawer_Man::create(ProcessState& process, Release release) {
    std::shared_ptr<cls_Kova_Drawer_Man> component(new cls_Kova_Drawer_Man(process), std::move(release));
    component->initialize();
    return component;
}

cls_Kova_Drawer_Man::cls_Kova_Drawer_Man(ProcessState& process) : process_(process) {}

cls_Kova_Drawer_Man::~cls_Kova_Drawer_Man() = default;

void cls_Kova_Drawer_Man::initialize() {
    trapped(process_, "RicercaCliente.Class_Initialize: ", [&] {
        InitLanguage(process_);
        auto& runtime = process_.platform.languageRuntime;
        ml_RuntimeSupport_ = runtime.languageChanged.connect(
            [this](std::int32_t id, const std::string& name) { SetLanguage(process_, id, name); });
        SetLanguage(process_, runtime.languageId(), runtime.languageName());
        idCassa(-1);
        SetSoftwareName("KOVA");
        idUtente(-1);
        ValutaAziendale("€");
        idPagamentoPredefinito(-1);
        process_.settings.idCassettoCausPred_Prelievi = -1;
        process_.settings.idCassettoCausPred_Versamenti = -1;
    });
}

HostCall cls_Kova_Drawer_Man::admitted(std::string_view label, CallKind kind) {
    try {
        return {shared_from_this(), process_.platform.hostCalls, kind};
    } catch (const Error& refusal) {
        process_.logError(label, refusal.what());
        throw;
    }
}

template <class Body>
void cls_Kova_Drawer_Man::trappedCall(std::string_view label, CallKind kind, const Body& body) {
    const auto self = shared_from_this(); // the host may release the component meanwhile
    trapped(process_, label, [&] {
        const HostCall call(self, process_.platform.hostCalls, kind);
        body();
    });
}

Connection cls_Kova_Drawer_Man::connect(EventSink& sink) {
    const HostCall call = admitted("connect", CallKind::Operation);
    return raised_.connect([&sink](const Delivery& deliver) { deliver(sink); });
}

void cls_Kova_Drawer_Man::ApriCassetto() {
    const HostCall call = admitted("ApriCassetto", CallKind::Event);
    raised_([](EventSink& sink) { sink.ApriCassetto(); });
}

void cls_Kova_Drawer_Man::Stampa(std::string& DataOP) {
    const HostCall call = admitted("Stampa", CallKind::Event);
    raised_([&](EventSink& sink) { sink.Stampa(DataOP); });
}

void cls_Kova_Drawer_Man::Anteprima(std::string& DataOP) {
    const HostCall call = admitted("Anteprima", CallKind::Event);
    raised_([&](EventSink& sink) { sink.Anteprima(DataOP); });
}

void cls_Kova_Drawer_Man::SalvaPagamento(std::int32_t& idpagamento, double& importo, std::string& Valuta,
                                         std::string& note, std::int16_t& cassetto, std::int32_t& tipoIncasso,
                                         bool& isIncasso) {
    const HostCall call = admitted("SalvaPagamento", CallKind::Event);
    raised_([&](EventSink& sink) {
        sink.SalvaPagamento(idpagamento, importo, Valuta, note, cassetto, tipoIncasso, isIncasso);
    });
}

std::string cls_Kova_Drawer_Man::Show(const std::int32_t& method) {
    const std::int32_t modality = method;
    trappedCall("RicercaCliente.Show: ", CallKind::Opening, [&] {
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
    trappedCall("DiscardForm: ", CallKind::Operation, [&] {
        if (dialog_)
            dialog_->AnnullaClick();
    });
}

void cls_Kova_Drawer_Man::SetSoftwareName(const std::string& SwName) {
    options_.SwName = SwName;
}

void cls_Kova_Drawer_Man::Inizializza(const std::shared_ptr<DatabaseConnection>& ConnessioneDB) {
    trappedCall("RicercaCliente.Inizializza : ", CallKind::Operation, [&] {
        process_.SharedConnection = ConnessioneDB;
        InitOpt(process_);
    });
}

void cls_Kova_Drawer_Man::InizializzaByConnString(const std::string& locConnString) {
    trappedCall("InizializzaByConnString: ", CallKind::Operation, [&] {
        if (!process_.SharedConnection) {
            // A failed opening leaves a closed connection behind, which later calls reuse as they find it.
            process_.SharedConnection = std::make_shared<ClosedConnection>();
            process_.SharedConnection = process_.platform.databases.open(locConnString);
        }
        InitOpt(process_);
    });
}

} // namespace kova
