#include "drawer_dialog/frm_Drawer_Management.h"

#include "base/numbered_errors.h"
#include "drawer_dialog/handler.h"

namespace kova {

frm_Drawer_Management::frm_Drawer_Management(ProcessState& process, ParentComponent& parent)
    : process_(process), ParentComponent_(parent), lifetime_(process) {}

frm_Drawer_Management::~frm_Drawer_Management() {
    attempt([this] { Unload(); });
}

DrawerControls& frm_Drawer_Management::controls() {
    if (DrawerControls* const mine = running_ != nullptr ? running_->controls() : lifetime_.controls().get())
        return *mine;
    throw objectNotSet();
}

void frm_Drawer_Management::handlerEnded() {
    if (running_->controls() != lifetime_.controls().get())
        showSelection(Unmarked::Stay); // a save of the dialog before has reset what this one shows
    if (running_->outermost() && std::exchange(overtaken_, false))
        showSelection(Unmarked::Follow);
    process_.entryChanged();
}

std::string frm_Drawer_Management::text(LocalisedString entry) const {
    return GetLocalizedString(process_, entry);
}

std::shared_ptr<DrawerControls> frm_Drawer_Management::ensureLoaded() {
    if (loaded())
        return lifetime_.controls();
    auto fresh = lifetime_.load(process_.platform.eventLoop);
    ++process_.loadedDialogs;
    connectHandlers();
    handled(fresh, [this] {
        Form_Load();
        if (process_.loadedDialogs > 1)
            showSelection(Unmarked::Follow);
    });
    return fresh;
}

void frm_Drawer_Management::connectHandlers() {
    auto& c = *lifetime_;
    const auto on = [&](auto& signal, auto handler) {
        c.handlers.push_back(signal.connect([this, handler](auto&&... arguments) {
            handled(lifetime_.controls(), [&] { handler(arguments...); });
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
    c.handlers.push_back(process_.entryChanged.connect([this] { followSelection(); }));
    connectScreenAids();
}

void frm_Drawer_Management::Show(std::int32_t modality) {
    ensureLoaded();
    const auto shown = lifetime_.controls();
    if (!shown)
        return; // discarded while its grids were filled
    const bool modal = modality != 0;
    const bool onScreen = shown->window.visible();
    // A second modal loop inside a handler would hold that handler, a save perhaps, until the dialog closes.
    if (onScreen && (shown->window.modal() || !modal || running_ != nullptr)) {
        if (!shown->window.blocked())
            process_.windows.show(shown->window, shown->window.modal());
        return;
    }
    if (process_.serverSilent)
        showServerSilent();
    process_.windows.show(shown->window, modal);
    if (modal)
        process_.platform.userInterface.runModal(shown->window);
}

void frm_Drawer_Management::SetSwName(const std::string& locSwName) {
    process_.SoftwareName = locSwName;
    showWhetherListFits();
}

void frm_Drawer_Management::RecuperaFondoCassaPrecedenteAttivo() {
    handled(ensureLoaded(), [this] { controls().cmdRecuperaFondoCassaPrecedente.setVisible(true); });
}

} // namespace kova
