#include "drawer_dialog/frm_Drawer_Management.h"
#include "services/activity_kinds.h"
#include "services/conversions.h"

namespace kova {
namespace {

constexpr Color ButtonFace{211, 211, 211};
constexpr std::uint32_t SelectedColor = 33023; // orange

enum class Arrangement { OneRow, TwoColumns };

void arrange(ButtonGrid& grid, Arrangement arrangement, std::int32_t count) {
    const bool twoColumns = arrangement == Arrangement::TwoColumns && count > 0;
    grid.setColumns(twoColumns ? 2 : count);
    grid.setRows(twoColumns ? (count + 1) / 2 : count > 0 ? 1 : 0);
    grid.layoutButtons();
}

/// What a grid offers. When it cannot be read nothing is offered, unless the server is silent: then what was
/// read before serves on.
Recordset choices(ProcessState& process, ButtonGrid& grid, const std::string& query) {
    try {
        return process.query({query}, Word::ReadingChoices);
    } catch (...) {
        if (process.serverSilent)
            grid.clearSelection();
        else
            grid.clearButtons();
        throw;
    }
}

/// Fills a grid with one button per row of the query. `addRow(row, position)` adds the button and whatever
/// else the row means. Waiting events are handled after each row: a touch may come while the grid is
/// incomplete.
template <class AddRow>
void fill(ProcessState& process, ButtonGrid& grid, const std::string& query, Arrangement arrangement,
          AddRow addRow) {
    grid.setAnimated(false);
    Recordset rows = choices(process, grid, query);
    grid.clearButtons();
    arrange(grid, arrangement, rows.recordCount());
    if (rows.endOfFile())
        return;
    grid.setCaptionsWrapped(true);
    grid.setEqualFonts(true);
    grid.setSelectedColor(Color::fromInteger(SelectedColor));
    for (std::int32_t position = 0; !rows.endOfFile(); ++position) {
        addRow(rows, position);
        rows.moveNext();
        process.platform.eventLoop.processPendingEvents();
        if (grid.buttons().size() != static_cast<std::size_t>(position) + 1)
            return; // an event brought another save, which has filled the grid again
    }
}

} // namespace

ComboMultiColumn& frm_Drawer_Management::elencoPagamenti() {
    if (!ElencoPagamenti_)
        ElencoPagamenti_ = std::make_unique<ComboMultiColumn>(process_);
    return *ElencoPagamenti_;
}

void frm_Drawer_Management::Load_Attivita() {
    trapped(process_, "Load_Attivita", [&] {
        const auto& regional = process_.platform.regional;
        auto& grid = controls().Pulsantiera_Attivita;
        const auto addActivity = [&](const Recordset& row, std::int32_t) {
            grid.addButton(asText(NullToDefault(row.field("id"), ""), regional),
                           asText(NullToDefault(row.field("Description"), ""), regional), ButtonFace,
                           colors::Black, "");
            const Value kind = NullToDefault(row.field("idTypeRow"), std::int64_t{-1});
            if (equalsNumber(kind, static_cast<double>(kDMTypeRow::kDMTR_FondoCassaIniziale), regional))
                idAttivitaFondoCassaIniziale_ = asInt32(row.field("id"), regional);
        };
        fill(process_, grid, "SELECT * FROM [dbo].[tabActivityDrawer] where visible <> 0 order by Sorting",
             Arrangement::OneRow, addActivity);
    });
}

void frm_Drawer_Management::Load_Pagamenti(ButtonGrid& grid) {
    trapped(process_, "Load_Pagamenti", [&] {
        const auto& regional = process_.platform.regional;
        const auto addPayment = [&](const Recordset& row, std::int32_t position) {
            if (position == 0) {
                IndicePagamentoAziendale_ = IndicePagamentoEstero_ = -1;
                paymentCurrencies_.clear();
            }
            const std::string key =
                asText(NullToDefault(row.field("idpagamento"), std::int64_t{-1}), regional);
            const std::string caption = asText(NullToDefault(row.field("TipoPagamento"), ""), regional);
            grid.addButton(key, caption, ButtonFace, colors::Black, "");
            elencoPagamenti().AddItem(position, key, caption);

            const bool cash = equalsNumber(NullToDefault(row.field("IdTipoPagamento"), ""), 1, regional);
            const Value currency = row.field("Valuta");
            attempt([&] { paymentCurrencies_.emplace(key, asText(currency, regional)); });
            if (!cash || std::holds_alternative<Null>(currency))
                return; // Null neither equals nor differs
            const bool company = asText(currency, regional) == process_.settings.ValutaAziendale;
            auto& index = company ? IndicePagamentoAziendale_ : IndicePagamentoEstero_;
            if (index == -1)
                index = position;
        };
        fill(process_, grid,
             "SELECT tabPagamenti.* "
             "FROM tabPagamenti "
             "order by tabPagamenti.idOrdinamento ",
             Arrangement::TwoColumns, addPayment);
    });
}

void frm_Drawer_Management::Load_Valute() {
    trapped(process_, "Load_Pagamenti", [&] {
        if (options().UsaSoloValutaAziendale)
            return;
        auto& grid = controls().Pulsantiera_Valuta;
        const auto addCurrency = [&](const Recordset& row, std::int32_t) {
            const std::string currency =
                asText(NullToDefault(row.field("Valuta"), ""), process_.platform.regional);
            grid.addButton(currency, currency, ButtonFace, colors::Black, "");
        };
        fill(process_, grid, "SELECT [Valuta] FROM [dbo].[tabValute]", Arrangement::TwoColumns, addCurrency);
    });
}

} // namespace kova
