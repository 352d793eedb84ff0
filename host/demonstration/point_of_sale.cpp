#include "demonstration/point_of_sale.h"

#include "demonstration/database.h"
#include "host_options.h"
#include "services/conversions.h"

#include <QDateTime>

namespace kova {
namespace {

std::vector<NamedId> readNames(DatabaseConnection& connection, const std::string& query) {
    const RegionalSettings regional = regionalSettings();
    std::vector<NamedId> names;
    for (Recordset rows = connection.query({query}); !rows.endOfFile(); rows.moveNext())
        if (!std::holds_alternative<Null>(rows.field(0)))
            names.push_back({asInt32(rows.field(0), regional), asText(rows.field(1), regional)});
    return names;
}

} // namespace

PointOfSale::PointOfSale(const HostOptions& options) : database_(openDemonstrationDatabase(options)) {
    if (options.logFolder)
        setLogFolder(*options.logFolder);
    component_ = createComponent();
    sink_ = component_->connect(*this);
    if (regionalSettings().decimalSeparator != ",")
        setDecimalKey(DecimalKey::Region);
    component_->Inizializza(database_.connection);
}

PointOfSale::~PointOfSale() {
    component_.reset();
    shutDown();
}

DateTime PointOfSale::now() {
    const QDateTime local = QDateTime::currentDateTime();
    return DateTime(std::chrono::milliseconds(local.toMSecsSinceEpoch()) +
                    std::chrono::seconds(local.offsetFromUtc()));
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
    found.users = readNames(connection, "SELECT idutente, Nome FROM tabUtenti ORDER BY Nome");
    found.payments =
        readNames(connection, "SELECT idpagamento, TipoPagamento FROM tabPagamenti ORDER BY idOrdinamento");
    found.activities = readNames(connection, "SELECT id, Description FROM tabActivityDrawer");
    for (Recordset rows = connection.query({"SELECT Valuta FROM tabValute"}); !rows.endOfFile();
         rows.moveNext())
        found.currencies.push_back(asText(rows.field(0), regionalSettings()));
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
    return makeDayReport(scope, database_.connection->query(dayReportQuery(scope)), regionalSettings());
}

void PointOfSale::store(const SavedMovement& movement) {
    if (!canStore())
        throw DatabaseError(DatabaseError::Unspecified, "this connection only reads", "25006");
    database_.embedded->storeMovement(storedMovement(movement, *component_, now()));
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
    ReceivedEvent event{now(), "SalvaPagamento", movement, {}, {}};
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
    announce({now(), "Stampa", {}, DataOperazione, {}});
}

void PointOfSale::Anteprima(std::string& DataOperazione) {
    announce({now(), "Anteprima", {}, DataOperazione, {}});
}

void PointOfSale::ApriCassetto() {
    announce({now(), "ApriCassetto", {}, {}, {}});
}

} // namespace kova
