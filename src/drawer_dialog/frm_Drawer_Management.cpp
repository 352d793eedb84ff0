#include "drawer_dialog/frm_Drawer_Management.h"

#include "drawer_dialog/handler_scope.h"

namespace kova {

frm_Drawer_Management::frm_Drawer_Management(ProcessState& process, cls_Kova_Drawer_Man& component)
    : process_(process), ParentComponent_(&component) {}

frm_Drawer_Management::~frm_Drawer_Management() {
    Unload();
}

DrawerControls& frm_Drawer_Management::controls() {
    if (controls_)
        return *controls_;
    if (const auto retired = retired_.lock())
        return *retired; // a running handler keeps it alive
    throw Error(91, "Object variable or With block variable not set");
}

std::string frm_Drawer_Management::text(std::int32_t id, std::string_view italian) const {
    return GetLocalizedString(process_, id, italian);
}

void frm_Drawer_Management::ensureLoaded() {
    if (controls_)
        return;
    auto fresh = std::make_shared<DrawerControls>(process_.platform.eventLoop);
    fresh->view = process_.platform.userInterface.present(fresh->window);
    controls_ = std::move(fresh);
    connectHandlers();
    const HandlerScope scope(*this);
    Form_Load();
}

void frm_Drawer_Management::connectHandlers() {
    auto& c = *controls_;
    const auto on = [&](auto& signal, auto handler) {
        c.handlers.push_back(signal.connect([this, handler](auto&&... arguments) {
            const HandlerScope scope(*this);
            handler(arguments...);
        }));
    };
    using Key = const std::string&;
    on(c.Pulsantiera_Attivita.buttonClick, [this](Key key) { Pulsantiera_Attivita_buttonClick(key); });
    on(c.Pulsantiera_Pagamenti.buttonClick, [this](Key key) { Pulsantiera_Pagamenti_buttonClick(key); });
    on(c.Pulsantiera_Pagamenti_Versamenti.buttonClick,
       [this](Key key) { Pulsantiera_Pagamenti_Versamenti_buttonClick(key); });
    on(c.Pulsantiera_Valuta.buttonClick, [this](Key key) { Pulsantiera_Valuta_buttonClick(key); });
    on(c.TimerAttivita.tick, [this] { TimerAttivita_Timer(); });
    on(c.TimerVersamenti.tick, [this] { TimerVersamenti_Timer(); });
    on(c.tmrAutoClose.tick, [this] { tmrAutoClose_Timer(); });
    on(c.Virtual_KeyPAD.Keyboard, [this](std::string& key) { Virtual_KeyPAD_Keyboard(key); });
    on(c.txtVisore.keyPress, [this](char32_t& character) { txtVisore_KeyPress(character); });
    on(c.txtNote.gotFocus, [this] { txtNote_GotFocus(); });
    on(c.cmdNascondiTastiera.pressed, [this] { cmdNascondiTastiera_Click(); });
    for (auto& button : c.cmdCassetto)
        on(button.pressed,
           [this, index = static_cast<std::int16_t>(*button.index())] { cmdCassetto_Click(index); });
    on(c.cmdConferma.pressed, [this] { cmdConferma_Click(); });
    on(c.cmdAnnulla.pressed, [this] { cmdAnnulla_Click(); });
    on(c.cmdRecuperaFondoCassaPrecedente.pressed, [this] { cmdRecuperaFondoCassaPrecedente_Click(); });
    on(c.CMD_CaricaMoneta.pressed, [this] { cmd_CaricaMoneta_Click(); });
    on(c.tabs.selectedChanged, [this](int index) { TabControl_SelectedChanged(index); });
    on(c.cmdCaricaMovimenti.pressed, [this] { cmdCaricaMovimenti_Click(); });
    on(c.cmd_print.pressed, [this] { cmd_print_Click(); });
    on(c.cmdAnteprima.pressed, [this] { cmdAnteprima_Click(); });
    on(c.PushButton1.pressed, [this] { Unload(); });
    on(c.window.activated, [this] { Form_Activate(); });
    on(c.window.closeRequested, [this] { Unload(); });
    connectScreenAids();
}

void frm_Drawer_Management::Show(std::int32_t modality) {
    ensureLoaded();
    const auto shown = controls_;
    const bool modal = modality != 0;
    const bool onScreen = shown->window.visible();
    // A second modal loop inside a handler would hold that handler, a save perhaps, until the dialog closes.
    if (onScreen && (shown->window.modal() || !modal || runningHandlers_ > 0)) {
        if (!shown->window.blocked())
            process_.windows.show(shown->window, shown->window.modal());
        return;
    }
    process_.windows.show(shown->window, modal);
    if (modal)
        process_.platform.userInterface.runModal(shown->window);
}

void frm_Drawer_Management::SetSwName(const std::string& locSwName) {
    process_.SoftwareName = locSwName;
}

void frm_Drawer_Management::RecuperaFondoCassaPrecedenteAttivo() {
    ensureLoaded();
    controls().cmdRecuperaFondoCassaPrecedente.setVisible(true);
}

} // namespace kova
