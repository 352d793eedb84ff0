#include "drawer_dialog/frm_Drawer_Management.h"
#include "report/movement_query.h"
#include "services/conversions.h"

namespace kova {
namespace {

/// What the list needs to know of the user's region to sort, to add up and to offer its menu.
void prepareList(ProcessState& process, ReportGrid& grid) {
    const auto& regional = process.platform.regional;
    grid.setConventions({[&regional](std::string_view cell) { return parseNumber(cell, regional); },
                         [&regional](std::string_view cell) -> std::optional<double> {
                             const auto date = parseDate(cell, regional);
                             if (!date)
                                 return std::nullopt;
                             return static_cast<double>(date->time_since_epoch().count());
                         },
                         [&process](double amount, std::string_view currency) {
                             const auto& format = process.numberFormat();
                             return currency.empty() ? format.FormatSum(amount)
                                                     : format.FormatMoney(amount, currency);
                         },
                         regional.decimalSeparator});
    grid.setSummedColumns("importo", "valuta");
    grid.setWriting([&process](const auto& work) { process.work(Word::SavingList, work); });
}

} // namespace

void frm_Drawer_Management::setupReportControl() {
    trapped(process_, "setupReportControl", [&] {
        auto& grid = controls().grd_mov_giornata;
        grid.setEmptyText(text({60, "Nessun elemento da visualizzare"}));
        grid.setGroupHint(
            text({59, "Trascinare qui l'intestazione di colonna per raggruppare per quella colonna"}));
        grid.setHeaderFont({"Tahoma", 8});
        grid.setSortPrefix(text({61, "Ordina per: "}));
        prepareList(process_, grid);
    });
}

void frm_Drawer_Management::TabControl_SelectedChanged(int index) {
    trapped(process_, "TabControl_SelectedChanged", [&] {
        if (index == 1)
            loadMovements();
    });
}

void frm_Drawer_Management::cmdCaricaMovimenti_Click() {
    loadMovements();
}

void frm_Drawer_Management::loadMovements() {
    auto& c = controls();
    c.listNotice.goOn();
    const std::string date = c.comboData.text();
    attempt([&] {
        const std::string request = movementRequest(process_, date, options());
        if (!request.empty()) // else it stays as it is
            c.listRequest = request;
    });
    carica_Movimenti_Giornata(process_, c.grd_mov_giornata, date, options());
    showWhetherListFits();
}

void frm_Drawer_Management::showWhetherListFits() noexcept {
    if (!loaded() || lifetime_->listRequest.empty())
        return;
    attempt([&] {
        auto& c = *lifetime_;
        const bool stale = movementRequest(process_, c.comboData.text(), options()) != c.listRequest;
        c.grd_mov_giornata.setStale(stale);
        c.cmdCaricaMovimenti.setSuggested(stale);
    });
}

// Print failures are filed under the confirm button's label, where support has always looked for them.
void frm_Drawer_Management::cmd_print_Click() {
    trapped(process_, "cmdConferma_Click", [&] {
        std::string day = controls().comboData.text();
        parent().Stampa(day);
    });
}

void frm_Drawer_Management::cmdAnteprima_Click() {
    trapped(process_, "cmdAnteprima_Click", [&] {
        std::string day = controls().comboData.text();
        parent().Anteprima(day);
    });
}

} // namespace kova
