#include "coin_count/frm_CaricaMoneta.h"
#include "component/component_state.h"
#include "drawer_dialog/frm_Drawer_Management.h"
#include "player/control_finder.h"
#include "player/player_commands.h"
#include "player/script_database.h"
#include "player/script_host.h"
#include "player/script_world.h"
#include "player/trace.h"
#include "services/message_box.h"
#include "widgets/button_grid.h"
#include "widgets/report_grid.h"

#include <utility>

namespace kova {
namespace {

/// The current component's dialog; null before it was shown first.
frm_Drawer_Management* currentDialog(const Scene& scene) {
    const auto* current = scene.host.currentIfAny();
    return current == nullptr ? nullptr : dialogOf(*current->component());
}

void dumpSelection(Scene& scene, const Arguments& arguments) {
    arguments.requireCount(0);
    const auto& selection = scene.process.selection;
    scene.trace.add(TraceLine("selection")
                        .with("idAttivita", selection.idAttivita)
                        .with("isIncasso", selection.isIncasso)
                        .with("isOpenECRDrawer", selection.isOpenECRDrawer)
                        .with("Cassetto", selection.Cassetto)
                        .with("idPagamento", selection.idPagamento)
                        .with("idPagamentoVersamento", selection.idPagamentoVersamento)
                        .with("Valuta", selection.Valuta)
                        .with("MultiValuta", selection.MultiValuta));
}

void dumpSettings(Scene& scene, const Arguments& arguments) {
    arguments.requireCount(0);
    const auto& settings = scene.process.settings;
    scene.trace.add(TraceLine("settings")
                        .with("ValutaAziendale", settings.ValutaAziendale)
                        .with("CifreDecimali", settings.CifreDecimali)
                        .with("CifreDecimaliQuantita", settings.CifreDecimaliQuantita)
                        .with("idCassettoCausPred_Prelievi", settings.idCassettoCausPred_Prelievi)
                        .with("idCassettoCausPred_Versamenti", settings.idCassettoCausPred_Versamenti)
                        .with("SoftwareName", scene.process.SoftwareName)
                        .with("CurrentLanguageId", scene.process.CurrentLanguageId));
}

void dumpDialog(Scene& scene, const Arguments& arguments) {
    arguments.requireCount(0);
    const auto* dialog = currentDialog(scene);
    const bool exists = dialog != nullptr;
    constexpr std::int32_t None = -1; // what the fields of a new dialog hold
    scene.trace.add(
        TraceLine("dialog")
            .with("idAttivitaFondoCassaIniziale", exists ? dialog->idAttivitaFondoCassaIniziale() : None)
            .with("ChiaveInAttesa", exists ? dialog->ChiaveInAttesa() : std::string())
            .with("MetroStyleAttivo", exists && dialog->MetroStyleAttivo())
            .with("IndicePagamentoAziendale", exists ? dialog->IndicePagamentoAziendale() : None)
            .with("IndicePagamentoEstero", exists ? dialog->IndicePagamentoEstero() : None));
}

void dumpPayments(Scene& scene, const Arguments& arguments) {
    arguments.requireCount(0);
    const auto* dialog = currentDialog(scene);
    const auto* payments = dialog == nullptr ? nullptr : dialog->ElencoPagamenti();
    if (payments == nullptr)
        return;
    for (std::int32_t row = 0; static_cast<std::size_t>(row) < payments->rowCount(); ++row)
        scene.trace.add(TraceLine("payment " + traced(row))
                            .then(payments->GetItem(1, row))
                            .then(payments->GetItem(2, row)));
}

void dumpCoin(Scene& scene, const Arguments& arguments) {
    arguments.requireCount(0);
    const auto& coins = scene.process.coinDialog;
    if (!coins) {
        scene.trace.add("coin none");
        return;
    }
    scene.trace.add(TraceLine("coin")
                        .with("IndiceMoneta", coins->IndiceMoneta())
                        .with("ImportoPrimaValuta", coins->getImportoPrimaValuta())
                        .with("ImportoSecondaValuta", coins->getImportoSecondaValuta())
                        .with("result", coins->result()));
}

void traceForm(Scene& scene, const std::string& name, const Window* window) {
    const bool loaded = window != nullptr;
    scene.trace.add(TraceLine("form " + name)
                        .with("loaded", loaded)
                        .with("visible", loaded && window->visible())
                        .with("title", loaded ? window->caption() : std::string()));
}

void dumpForms(Scene& scene, const Arguments& arguments) {
    arguments.requireCount(0);
    auto* dialog = currentDialog(scene);
    auto* message = scene.process.existingMessageWindow();
    traceForm(scene, "frm_Drawer_Management", dialog == nullptr ? nullptr : dialog->window());
    const auto& coins = scene.process.coinDialog;
    traceForm(scene, "frm_CaricaMoneta", coins ? coins->window() : nullptr);
    traceForm(scene, "frmMsgBox", message == nullptr ? nullptr : message->window());
}

void dumpControl(Scene& scene, const Arguments& arguments) {
    scene.trace.add(describedControl(findControl(scene, controlName(arguments))));
}

void dumpGrid(Scene& scene, const Arguments& arguments) {
    arguments.requireCount(1);
    traceGrid(scene.trace,
              requireKind<ButtonGrid>(findControl(scene, {arguments.text(0), {}}), "ButtonGrid"));
}

void traceRecord(Scene& scene, const ReportGrid& grid, std::size_t number, std::size_t record) {
    TraceLine line("record " + traced(static_cast<std::int32_t>(number)));
    for (std::size_t column = 0; column < grid.columns().size(); ++column)
        line.then(std::string(grid.item(record, column)));
    scene.trace.add(line);
}

void dumpReport(Scene& scene, const Arguments& arguments) {
    arguments.requireCount(0);
    const ReportGrid none({nullptr, {}, {}});
    const ReportGrid* shown = nullptr;
    for (const Window* window : loadedWindows(scene))
        shown = shown == nullptr ? firstOfKind<ReportGrid>(*window) : shown;
    const ReportGrid& grid = shown == nullptr ? none : *shown;
    scene.trace.add(TraceLine("report")
                        .with("columns", static_cast<std::int32_t>(grid.columns().size()))
                        .with("records", static_cast<std::int32_t>(grid.recordCount()))
                        .with("empty-text", grid.emptyText())
                        .with("group-hint", grid.groupHint())
                        .with("sort-prefix", grid.sortPrefix()));
    for (std::size_t i = 0; i < grid.columns().size(); ++i) {
        const auto& column = grid.columns()[i];
        scene.trace.add(TraceLine("column " + traced(static_cast<std::int32_t>(i)))
                            .with("caption", column.caption)
                            .with("width", column.width)
                            .with("resizable", column.resizable));
    }
    std::size_t number = 0;
    for (const std::int32_t record : grid.order())
        traceRecord(scene, grid, number++, static_cast<std::size_t>(record));
}

void dumpSql(Scene& scene, const Arguments& arguments) {
    arguments.requireCount(0);
    for (const Query& query : scene.queries.takeQueries()) {
        std::string line = "sql " + traced(query.text);
        for (const auto& parameter : query.parameters)
            line += " parameter " + parameter.name + " date " + traced(parameter.text);
        scene.trace.add(line);
    }
}

void dumpLog(Scene& scene, const Arguments& arguments) {
    arguments.requireCount(0);
    for (const LogRecord& record : std::exchange(scene.world.log, {}))
        scene.trace.add(TraceLine("log")
                            .then(record.procedure)
                            .then(record.message)
                            .with("number", record.number)
                            .with("text", record.text));
}

/// What `dump` can look at.
constexpr Command Subjects[] = {
    {"selection", dumpSelection},
    {"settings", dumpSettings},
    {"dialog", dumpDialog},
    {"payments", dumpPayments},
    {"coin", dumpCoin},
    {"forms", dumpForms},
    {"control", dumpControl},
    {"grid", dumpGrid},
    {"report", dumpReport},
    {"sql", dumpSql},
    {"log", dumpLog},
};

void dump(Scene& scene, const Arguments& arguments) {
    arguments.requireCount(1, 3);
    for (const Command& subject : Subjects)
        if (subject.name == arguments.text(0)) {
            subject.run(scene, arguments.from(1));
            return;
        }
    throw ScenarioError("not a subject of dump: " + arguments.text(0));
}

} // namespace

std::span<const Command> lookingCommands() {
    static constexpr Command Commands[] = {{"dump", dump}};
    return Commands;
}

} // namespace kova
