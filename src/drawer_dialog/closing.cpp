#include "coin_count/frm_CaricaMoneta.h"
#include "drawer_dialog/handler.h"
#include "services/message_box.h"

namespace kova {

void frm_Drawer_Management::cmdAnnulla_Click() {
    trapped(process_, "cmdAnnulla_Click", [&] {
        if (options().PredisponiInserimentoFondoCassaIniziale)
            process_.platform.userInterface.messageBox(
                {"Inserire obbligatoriamente il fondo cassa.",
                 PlatformMessage::OkOnly + PlatformMessage::Information, process_.platform.applicationTitle});
        else
            ProceduraChiudi();
    });
}

void frm_Drawer_Management::ProceduraChiudi() {
    trapped(process_, "ProceduraChiudi", [&] { Unload(); });
}

void frm_Drawer_Management::AnnullaClick() {
    handled(lifetime_.controls(), [this] {
        trapped(process_, "AnnullaClick", [&] {
            if (auto* message = process_.existingMessageWindow())
                message->unload();
            if (const auto coins = process_.coinDialog)
                coins->unload();
            ProceduraChiudi();
        });
    });
}

void frm_Drawer_Management::tmrAutoClose_Timer() {
    controls().tmrAutoClose.stop();
    ProceduraChiudi();
}

void frm_Drawer_Management::Unload() {
    if (!loaded())
        return;
    MetroStyleAttivo_ = false;
    --process_.loadedDialogs;
    ended([&] { lifetime_.unload(); }, [&] { parent().dialogClosed(); });
}

} // namespace kova
