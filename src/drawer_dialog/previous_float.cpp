#include "drawer_dialog/frm_Drawer_Management.h"
#include "services/activity_kinds.h"
#include "services/conversions.h"

#include <cmath>

namespace kova {
namespace {

std::string lastClosingFloatQuery(std::int32_t till) {
    return "SELECT TOP 1 (tabPagamentiScontriniBackoffice.Coefficiente * "
           "tabPagamentiScontriniBackoffice.ImportoIncassato) as Totale,"
           " tabUtenti.Nome, tabPagamentiScontriniBackoffice.DataOperazione "
           " From tabPagamentiScontriniBackoffice left join tabUtenti ON "
           "     tabPagamentiScontriniBackoffice.idutente = tabUtenti.idutente"
           " WHERE TipoOperazione IN"
           "     ("
           "     SELECT ID"
           "     From dbo.tabActivityDrawer"
           "     Where idTypeRow = " +
           std::to_string(static_cast<std::int32_t>(kDMTypeRow::kDMTR_FondoCassaFinale)) +
           "     )"
           "     AND ISNULL(idTestata,-1) = -1"
           "     AND idCassa = " +
           std::to_string(till) + " ORDER BY DataOperazione DESC";
}

/// dd/mm/yyyy hh:mm in the region's separators; what is no date stays as it is.
std::string dayAndTime(const Value& value, const RegionalSettings& regional) {
    using namespace std::chrono;
    const auto* time = std::get_if<DateTime>(&value);
    if (time == nullptr)
        return asText(value, regional);
    const year_month_day day(floor<days>(*time));
    const hh_mm_ss clock(floor<minutes>(*time - floor<days>(*time)));
    const std::string& slash = regional.dateSeparator;
    return twoDigits(static_cast<unsigned>(day.day())) + slash +
           twoDigits(static_cast<unsigned>(day.month())) + slash +
           std::to_string(static_cast<int>(day.year())) + " " + twoDigits(clock.hours().count()) +
           regional.timeSeparator + twoDigits(clock.minutes().count());
}

} // namespace

void frm_Drawer_Management::cmdRecuperaFondoCassaPrecedente_Click() {
    trapped(process_, "cmdRecuperaFondoCassaPrecedente_Click", [&] {
        const auto& regional = process_.platform.regional;
        const auto ask = [&](const std::string& message, std::int32_t buttons) {
            return process_.platform.userInterface.messageBox(
                {message, buttons + PlatformMessage::Information, process_.platform.applicationTitle});
        };
        const Recordset rows = process_.query({lastClosingFloatQuery(options().idCassa)}, Word::ReadingFloat);
        if (rows.endOfFile()) {
            ask("Nessun dato trovato.", PlatformMessage::OkOnly);
            return;
        }
        const double total =
            std::fabs(asDouble(NullToDefault(rows.field("Totale"), std::int64_t{0}), regional));
        const std::string message = "Fondo cassa disponibile per la cassa corrente: \r\n\r\n"
                                    "Importo: € " +
                                    process_.numberFormat().FormatAmount(total, 2) +
                                    "\r\n"
                                    "Operatore: " +
                                    asText(NullToDefault(rows.field("Nome"), ""), regional) +
                                    "\r\n"
                                    "Data operazione: " +
                                    dayAndTime(NullToDefault(rows.field("DataOperazione"), ""), regional) +
                                    "\r\n"
                                    "Precaricare il valore?\r\n";
        if (ask(message, PlatformMessage::YesNo) != MessageAnswer::Yes)
            return;
        controls().txtVisore.setText(toText(total, regional));
        Pulsantiera_Pagamenti_buttonClick(elencoPagamenti().GetItem(1, IndicePagamentoAziendale_));
        Pulsantiera_Attivita_buttonClick(std::to_string(idAttivitaFondoCassaIniziale_));
    });
}

} // namespace kova
