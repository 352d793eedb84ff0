#include "drawer_dialog/frm_Drawer_Management.h"
#include "services/conversions.h"

#include <algorithm>

namespace kova {
namespace {

void markOnly(ButtonGrid& grid, const std::string& key) {
    grid.clearSelection();
    grid.selectButton(key, true);
}

/// The same, drawn only where it differs. An empty key marks nothing, whatever buttons there are.
void showMark(ButtonGrid& grid, const std::string& key) {
    const auto* const wanted = key.empty() ? nullptr : grid.find(key);
    const auto right = [&](const ButtonGrid::Button& button) { return button.marked == (&button == wanted); };
    if (std::ranges::all_of(grid.buttons(), right))
        return;
    grid.clearSelection();
    if (wanted != nullptr)
        grid.selectButton(key, true);
}

std::string keyOf(std::int32_t id) {
    return id == -1 ? std::string() : std::to_string(id);
}

/// Whether a coefficient reads "1": a number by its value, a text to the letter.
bool isOne(const Value& coefficient, const RegionalSettings& regional) {
    if (const auto* text = std::get_if<std::string_view>(&coefficient))
        return *text == "1";
    return equalsNumber(coefficient, 1, regional);
}

} // namespace

// The touch only remembers its key; the timer applies the last one.
void frm_Drawer_Management::Pulsantiera_Attivita_buttonClick(const std::string& key) {
    trapped(process_, "Pulsantiera_Attivita_buttonClick", [&] { applyLater(key, controls().TimerAttivita); });
}

// In a dialog that was unloaded meanwhile no timer comes, and the key of the next one must not be replaced.
void frm_Drawer_Management::applyLater(const std::string& key, Timer& timer) {
    if (timer.retired())
        return;
    ChiaveInAttesa_ = key;
    timer.start();
}

void frm_Drawer_Management::TimerAttivita_Timer() {
    trapped(process_, "TimerAttivita_Timer", [&] {
        auto& c = controls();
        c.TimerAttivita.stop();
        markOnly(c.Pulsantiera_Attivita, ChiaveInAttesa_);
        AggiornaVariabiliSelezioneAttivita(keyToId(ChiaveInAttesa_, process_.platform.regional));
        if (process_.serverSilent) // it was not chosen; what is marked is what will be sent
            showMark(c.Pulsantiera_Attivita, keyOf(process_.selection.idAttivita));
        if (options().PredisponiInserimentoFondoCassaIniziale && process_.selection.isOpenECRDrawer)
            parent().ApriCassetto();
        if (options().InserimentoAutomatico)
            cmdConferma_Click();
    });
}

void frm_Drawer_Management::AggiornaVariabiliSelezioneAttivita(const std::int32_t& id) {
    trapped(process_, "AggiornaVariabiliSelezioneAttivita", [&] {
        const auto& regional = process_.platform.regional;
        auto& selection = process_.selection;
        selection.isOpenECRDrawer = false;
        const Recordset rows =
            process_.query({"SELECT description, coefficient, IsAutomaticNote, isOpenECRDrawer FROM "
                            "tabActivityDrawer WHERE id = " +
                            std::to_string(id)},
                           Word::ReadingActivity);
        if (rows.endOfFile()) {
            selection.isIncasso = false;
        } else {
            const Value no = std::int64_t{0};
            selection.isIncasso = isOne(rows.field("coefficient"), regional);
            const bool automaticNote = asBoolean(NullToDefault(rows.field("isAutomaticNote"), no), regional);
            selection.isOpenECRDrawer = asBoolean(NullToDefault(rows.field("isOpenECRDrawer"), no), regional);
            auto& note = controls().txtNote;
            if (automaticNote && note.text().empty()) {
                note.setText(asText(NullToDefault(rows.field("Description"), ""), regional));
                attempt([&] { automaticNote_ = {id, note.text()}; });
            }
        }
        selection.idAttivita = id;
        process_.entryChanged(); // before a message or the host's handler can come
    });
}

void frm_Drawer_Management::Pulsantiera_Pagamenti_buttonClick(const std::string& key) {
    trapped(process_, "Pulsantiera_Pagamenti_buttonClick", [&] {
        markOnly(controls().Pulsantiera_Pagamenti, key);
        process_.selection.idPagamento = keyToId(key, process_.platform.regional);
    });
}

void frm_Drawer_Management::Pulsantiera_Pagamenti_Versamenti_buttonClick(const std::string& key) {
    trapped(process_, "Pulsantiera_Pagamenti_Versamenti_buttonClick",
            [&] { applyLater(key, controls().TimerVersamenti); });
}

void frm_Drawer_Management::TimerVersamenti_Timer() {
    trapped(process_, "TimerVersamenti_Timer", [&] {
        auto& c = controls();
        c.TimerVersamenti.stop();
        markOnly(c.Pulsantiera_Pagamenti_Versamenti, ChiaveInAttesa_);
        process_.selection.idPagamentoVersamento = keyToId(ChiaveInAttesa_, process_.platform.regional);
        if (options().InserimentoAutomatico)
            cmdConferma_Click();
    });
}

void frm_Drawer_Management::Pulsantiera_Valuta_buttonClick(const std::string& key) {
    trapped(process_, "Pulsantiera_Valuta_buttonClick", [&] {
        markOnly(controls().Pulsantiera_Valuta, key);
        process_.selection.Valuta = key;
    });
}

// All dialogs share one selection, and each marks its own buttons. What another one changed is what this one
// would send, so it is marked here as well.
void frm_Drawer_Management::followSelection() noexcept {
    const bool alone = process_.acting == nullptr && process_.loadedDialogs < 2;
    if (alone || process_.acting == this)
        return;
    showSelection(Unmarked::Follow);
    overtaken_ = running_ != nullptr; // it may be filling a grid
}

void frm_Drawer_Management::showSelection(Unmarked unmarked) noexcept {
    if (!loaded())
        return;
    auto& c = *lifetime_;
    const auto& s = process_.selection;
    const auto mark = [&](ButtonGrid& grid, const std::string& key) {
        if (unmarked == Unmarked::Follow || std::ranges::any_of(grid.buttons(), &ButtonGrid::Button::marked))
            showMark(grid, key);
    };
    attempt([&] { mark(c.Pulsantiera_Attivita, keyOf(s.idAttivita)); });
    attempt([&] { mark(c.Pulsantiera_Pagamenti, keyOf(s.idPagamento)); });
    attempt([&] { mark(c.Pulsantiera_Pagamenti_Versamenti, keyOf(s.idPagamentoVersamento)); });
    attempt([&] { mark(c.Pulsantiera_Valuta, s.Valuta); });
    for (auto& button : c.cmdCassetto)
        attempt([&] { button.setLatched(button.index() == s.Cassetto); });
}

} // namespace kova
