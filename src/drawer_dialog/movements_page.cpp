#include "component/cls_Kova_Drawer_Man.h"
#include "drawer_dialog/frm_Drawer_Management.h"

namespace kova {

void frm_Drawer_Management::setupReportControl() {
    trapped(process_, "setupReportControl", [&] {
        auto& grid = controls().grd_mov_giornata;
        grid.setEmptyText(text(60, "Nessun elemento da visualizzare"));
        grid.setGroupHint(
            text(59, "Trascinare qui l'intestazione di colonna per raggruppare per quella colonna"));
        grid.setHeaderFont({"Tahoma", 8});
        grid.setSortPrefix(text(61, "Ordina per: "));
    });
}

// Print failures are filed under the confirm button's label, where support has always looked for them.
void frm_Drawer_Management::cmd_print_Click() {
    trapped(process_, "cmdConferma_Click", [&] {
        std::string day = controls().comboData.text();
        component().Stampa(day);
    });
}

void frm_Drawer_Management::cmdAnteprima_Click() {
    trapped(process_, "cmdAnteprima_Click", [&] {
        std::string day = controls().comboData.text();
        component().Anteprima(day);
    });
}

} // namespace kova
