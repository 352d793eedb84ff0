#include "demonstration/point_of_sale.h"

#include "adapters/system/file_error_logger.h"
#include "adapters/system/own_folder.h"
#include "adapters/system/system_regional_settings.h"
#include "component/component_state.h"
#include "demonstration/database.h"
#include "host_options.h"
#include "services/conversions.h"

namespace kova {
namespace {

SqliteHostDatabase* embeddedIn(HostDatabase& database) {
    return database.embedded ? &*database.embedded : nullptr;
}

std::vector<NamedId> readNames(DatabaseConnection& connection, const std::string& query,
                               const RegionalSettings& regional) {
    std::vector<NamedId> names;
    for (Recordset rows = connection.query({query}); !rows.endOfFile(); rows.moveNext())
        if (!std::holds_alternative<Null>(rows.field(0)))
            names.push_back({asInt32(rows.field(0), regional), asText(rows.field(1), regional)});
    return names;
}

} // namespace

PointOfSale::PointOfSale(const HostOptions& options)
    : regional_(systemRegionalSettings()), database_(openDemonstrationDatabase(options, servers_)),
      store_(embeddedIn(database_), clock_), process_(platform(options)),
      component_(ComponentState::createComponent(process_)), sink_(component_->connect(*this)) {
    if (canStore())
        store_.switchOn(true);
    if (regional_.decimalSeparator != ",")
        process_.decimalKey = DecimalKey::Region;
    component_->Inizializza(database_.connection);
}

PointOfSale::~PointOfSale() {
    component_->DiscardForm();
    eventLoop_.settle();
}

Platform PointOfSale::platform(const HostOptions& options) {
    return {.userInterface = userInterface_,
            .eventLoop = eventLoop_,
            .clock = clock_,
            .languageRuntime = language_,
            .settingsStore = settings_,
            .databases = servers_,
            .regional = regional_,
            .makeErrorLogger = [this] { return std::make_shared<SystemErrorLogger>(clock_); },
            .componentFolder = options.logFolder.value_or(ownFolder())};
}

void PointOfSale::show(const ComponentOptions& choices) {
    auto& c = *component_;
    c.idCassa(choices.idCassa);
    c.idUtente(choices.idUtente);
    c.idPagamentoPredefinito(choices.idPagamentoPredefinito);
    c.ValutaAziendale(choices.ValutaAziendale);
    c.SetSoftwareName(choices.SwName);
    c.UsaSoloValutaAziendale(choices.UsaSoloValutaAziendale);
    c.AttivaVisualizzazionePrecontiDefinitivi(choices.AttivaVisualizzazionePrecontiDefinitivi);
    c.ChiusuraAutomatica(choices.ChiusuraAutomatica);
    c.InserimentoAutomatico(choices.InserimentoAutomatico);
    c.DoppioInserimentoObbligatorio(choices.DoppioInserimentoObbligatorio);
    c.VisualizzaMovimentiUtenteLoggato(choices.VisualizzaMovimentiUtenteLoggato);
    c.ActiveColorMetroStyle(choices.ActiveColorMetroStyle);
    c.AttivaRecuperaFondoCassaPrecedente(choices.AttivaRecuperaFondoCassaPrecedente);
    c.PredisponiInserimentoFondoCassaIniziale(choices.PredisponiInserimentoFondoCassaIniziale);
    c.Show();
}

ShopCatalogues PointOfSale::catalogues() const {
    DatabaseConnection& connection = *database_.connection;
    ShopCatalogues found;
    found.users = readNames(connection, "SELECT idutente, Nome FROM tabUtenti ORDER BY Nome", regional_);
    found.payments = readNames(
        connection, "SELECT idpagamento, TipoPagamento FROM tabPagamenti ORDER BY idOrdinamento", regional_);
    found.activities = readNames(connection, "SELECT id, Description FROM tabActivityDrawer", regional_);
    for (Recordset rows = connection.query({"SELECT Valuta FROM tabValute"}); !rows.endOfFile();
         rows.moveNext())
        found.currencies.push_back(asText(rows.field(0), regional_));
    return found;
}

// The newest is the one stored last: a sample's dates may lie after today's.
Recordset PointOfSale::latestMovements() const {
    return database_.connection->query(
        {"SELECT TOP 200 m.DataOperazione, a.Description, p.TipoPagamento, m.Coefficiente, "
         "m.ImportoIncassato, m.Valuta, m.Note, m.Cassetto, m.idCassa, u.Nome "
         "FROM tabPagamentiScontriniBackoffice AS m "
         "LEFT JOIN tabActivityDrawer AS a ON a.id = m.TipoOperazione "
         "LEFT JOIN tabPagamenti AS p ON p.idpagamento = m.idpagamento "
         "LEFT JOIN tabUtenti AS u ON u.idutente = m.idutente "
         "ORDER BY m.id DESC"});
}

DayReport PointOfSale::dayReport(DateTime day) const {
    DayScope scope{day, {}, {}};
    if (component_->idCassa() != -1)
        scope.till = component_->idCassa();
    if (component_->VisualizzaMovimentiUtenteLoggato())
        scope.user = component_->idUtente();
    return makeDayReport(scope, database_.connection->query(dayReportQuery(scope)), regional_);
}

void PointOfSale::store(const SavedMovement& movement) {
    if (!canStore())
        throw DatabaseError(DatabaseError::Unspecified, "this connection only reads", "25006");
    store_.save(movement, *component_);
}

/// What the window makes of an event must not reach the component: a movement that is stored would count as
/// failed, and be entered a second time.
void PointOfSale::announce(const ReceivedEvent& event) noexcept {
    try {
        received(event);
    } catch (const std::exception& failure) {
        qWarning("%s", failure.what());
    }
}

void PointOfSale::SalvaPagamento(std::int32_t& idpagamento, double& importo, std::string& Valuta,
                                 std::string& note, std::int16_t& cassetto, std::int32_t& tipoIncasso,
                                 bool& isIncasso) {
    const SavedMovement movement{idpagamento, importo, Valuta, note, cassetto, tipoIncasso, isIncasso};
    ReceivedEvent event{clock_.now(), "SalvaPagamento", movement, {}, {}};
    try {
        store(movement);
    } catch (const std::exception& failure) {
        event.failure = failure.what();
        announce(event);
        throw; // the component then keeps what the cashier entered
    }
    announce(event);
}

void PointOfSale::Stampa(std::string& DataOperazione) {
    announce({clock_.now(), "Stampa", {}, DataOperazione, {}});
}

void PointOfSale::Anteprima(std::string& DataOperazione) {
    announce({clock_.now(), "Anteprima", {}, DataOperazione, {}});
}

void PointOfSale::ApriCassetto() {
    announce({clock_.now(), "ApriCassetto", {}, {}, {}});
}

} // namespace kova
