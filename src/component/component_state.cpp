#include "component/component_state.h"

#include "drawer_dialog/frm_Drawer_Management.h"

namespace kova {

std::shared_ptr<cls_Kova_Drawer_Man> ComponentState::createComponent(ProcessState& process, Release release) {
    std::unique_ptr<ComponentState> made(new ComponentState(process));
    auto& state = *made;
    std::shared_ptr<cls_Kova_Drawer_Man> component(new cls_Kova_Drawer_Man(std::move(made)),
                                                   std::move(release));
    state.component_ = component;
    state.initialize();
    return component;
}

ComponentState::ComponentState(ProcessState& process) : process_(process) {}

ComponentState::~ComponentState() = default;

void ComponentState::initialize() {
    trapped(process_, "RicercaCliente.Class_Initialize: ", [&] {
        InitLanguage(process_);
        auto& runtime = process_.platform.languageRuntime;
        ml_RuntimeSupport_ = runtime.languageChanged.connect(
            [this](std::int32_t id, const std::string& name) { SetLanguage(process_, id, name); });
        SetLanguage(process_, runtime.languageId(), runtime.languageName());
        options_.idCassa = -1;
        options_.SwName = "KOVA";
        options_.idUtente = -1;
        options_.ValutaAziendale = "€";
        options_.idPagamentoPredefinito = -1;
        process_.settings.idCassettoCausPred_Prelievi = -1;
        process_.settings.idCassettoCausPred_Versamenti = -1;
    });
}

HostCall ComponentState::admitted(std::string_view label, CallKind kind) const {
    try {
        return {std::shared_ptr(component_), process_.platform.hostCalls, kind};
    } catch (const Error& refusal) {
        process_.logError(label, refusal.what());
        throw;
    }
}

Connection ComponentState::connect(EventSink& sink) {
    const HostCall call = admitted("connect", CallKind::Operation);
    return raised_.connect([&sink](const Delivery& deliver) { deliver(sink); });
}

void ComponentState::ApriCassetto() {
    const HostCall call = admitted("ApriCassetto", CallKind::Event);
    raised_([](EventSink& sink) { sink.ApriCassetto(); });
}

void ComponentState::Stampa(std::string& DataOP) {
    const HostCall call = admitted("Stampa", CallKind::Event);
    raised_([&](EventSink& sink) { sink.Stampa(DataOP); });
}

void ComponentState::Anteprima(std::string& DataOP) {
    const HostCall call = admitted("Anteprima", CallKind::Event);
    raised_([&](EventSink& sink) { sink.Anteprima(DataOP); });
}

void ComponentState::SalvaPagamento(std::int32_t& idpagamento, double& importo, std::string& Valuta,
                                    std::string& note, std::int16_t& cassetto, std::int32_t& tipoIncasso,
                                    bool& isIncasso) {
    const HostCall call = admitted("SalvaPagamento", CallKind::Event);
    raised_([&](EventSink& sink) {
        sink.SalvaPagamento(idpagamento, importo, Valuta, note, cassetto, tipoIncasso, isIncasso);
    });
}

void ComponentState::show(std::int32_t modality) {
    trappedCall("RicercaCliente.Show: ", CallKind::Opening, [&] {
        if (!dialog_)
            dialog_ = std::make_unique<frm_Drawer_Management>(process_, *this);
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
}

void ComponentState::listMayDiffer() noexcept {
    if (dialog_)
        dialog_->showWhetherListFits();
}

} // namespace kova
