#include "coin_count/frm_CaricaMoneta.h"
#include "drawer_dialog/frm_Drawer_Management.h"
#include "services/conversions.h"

namespace kova {

// A failure on the way leaves the reference, so that the counted money is not lost: the next opening shows
// the same count again, unless it was unloaded meanwhile.
void frm_Drawer_Management::cmd_CaricaMoneta_Click() {
    trapped(process_, "cmd_CaricaMoneta_Click", [&] {
        const auto coins = process_.coinDialog && process_.coinDialog->loaded()
                               ? process_.coinDialog
                               : std::make_shared<frm_CaricaMoneta>(process_);
        coins->load();
        process_.coinDialog = coins;
        if (MetroStyleAttivo_)
            coins->setMetroStyle();
        coins->sayNotLoaded(readsBack());
        const bool hidden = coins->showModal();
        if (hidden && coins->result() == frm_CaricaMoneta::Loaded)
            takeCountedAmounts(*coins);
        if (process_.coinDialog == coins)
            process_.coinDialog.reset();
    });
}

void frm_Drawer_Management::takeCountedAmounts(const frm_CaricaMoneta& coins) {
    const auto take = [&](double amount, std::int32_t payment) {
        controls().txtVisore.setText(toText(amount, process_.platform.regional));
        Pulsantiera_Pagamenti_buttonClick(elencoPagamenti().GetItem(1, payment));
    };
    if (process_.settings.ValutaAziendale == "€") {
        take(coins.getImportoPrimaValuta(), IndicePagamentoAziendale_);
    } else { // the euro comes last and stays
        take(coins.getImportoSecondaValuta(), IndicePagamentoAziendale_);
        take(coins.getImportoPrimaValuta(), IndicePagamentoEstero_);
    }
}

} // namespace kova
