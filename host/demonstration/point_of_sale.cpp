#include "demonstration/point_of_sale.h"

#include "host_options.h"

#include <QDateTime>
#include <QStandardPaths>

namespace kova {
namespace {

bool wantsSampleFile(const HostOptions& options) {
    return !options.connection && options.database == "sample";
}

/// In the user's data folder.
std::string sampleFile() {
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    return folder.toStdString() + "/sample.sqlite";
}

HostDatabase openDatabaseOf(const HostOptions& options) {
    if (!wantsSampleFile(options))
        return openHostDatabase(options, openDatabase);
    auto database = ShopDatabase::openSampleFile(sampleFile());
    auto connection = database.connection();
    return {std::move(database), std::move(connection)};
}

} // namespace

std::string databaseName(const HostOptions& options) {
    if (options.connection)
        return "--connection";
    return wantsSampleFile(options) ? sampleFile() : options.database;
}

PointOfSale::PointOfSale(const HostOptions& options) : database_(openDatabaseOf(options)) {
    if (database_.embedded)
        database_.embedded->requireWritable();
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

void PointOfSale::show(const Choices& choices) {
    for (const auto& [name, value] : choices.options)
        component_->set(name, value);
    component_->SetSoftwareName(choices.softwareName);
    component_->Show();
}

ShopCatalogues PointOfSale::catalogues() const {
    return readCatalogues(*database_.connection, regionalSettings());
}

std::vector<ListedMovement> PointOfSale::latestMovements() const {
    return kova::latestMovements(*database_.connection, regionalSettings());
}

DayReport PointOfSale::dayReport(DateTime day) const {
    DayScope scope{day, {}, {}};
    if (component_->idCassa() != -1)
        scope.till = component_->idCassa();
    if (component_->VisualizzaMovimentiUtenteLoggato())
        scope.user = component_->idUtente();
    return makeDayReport(scope, database_.connection->query(dayReportQuery(scope)), regionalSettings());
}

void PointOfSale::store(const Movement& movement) {
    if (!canStore())
        throw DatabaseError(DatabaseError::Unspecified, "this connection only reads", "25006");
    database_.embedded->storeMovement({now(), component_->idCassa(), component_->idUtente(), movement});
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
    const Movement movement{idpagamento, importo, Valuta, note, cassetto, tipoIncasso, isIncasso};
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
