#include "adapters/ado/ado_database.h"

#include "adapters/ado/ado_objects.h"

namespace kova {
namespace {

class AdoConnection final : public DatabaseConnection {
  public:
    explicit AdoConnection(IDispatch* given) : connection_(com::Pointer<IDispatch>(given), ids_.connection) {}
    /// Of a new object.
    AdoConnection() : connection_(com::LateBound::create(L"ADODB.Connection", ids_.connection)) {}
    /// Throws com::CallFailure.
    void open(const std::string& connectionString);
    DatabaseError asError(const com::CallFailure& failure) { return adoError(failure, connection_, ids_); }
    Recordset query(const Query& query) override;

  private:
    bool usable();
    // Keeps ADO loaded while there is an object of it.
    com::Apartment apartment_;
    AdoIds ids_;
    com::LateBound connection_;
};

void AdoConnection::open(const std::string& connectionString) {
    constexpr std::int32_t OptionsUnspecified = -1;
    connection_.set(L"ConnectionString", connectionString);
    connection_.call(L"Open", "", "", "", OptionsUnspecified);
}

bool AdoConnection::usable() {
    try {
        return isOpen(connection_);
    } catch (const com::CallFailure& failure) {
        if (failure.code() != DISP_E_UNKNOWNNAME && failure.code() != DISP_E_MEMBERNOTFOUND)
            throw;
        throw DatabaseError(DatabaseError::Unspecified, "The object is no Connection of ADO: it has no State",
                            "HY000");
    }
}

Recordset AdoConnection::query(const Query& query) {
    try {
        if (!usable())
            return ClosedConnection().query(query);
        return Recordset(AdoRecords(connection_, query, ids_).readAll());
    } catch (const com::CallFailure& failure) {
        throw asError(failure);
    }
}

/// ADO is not registered, or is one that has the objects and does nothing with them.
bool meansNoAdo(HRESULT code) {
    return code == CO_E_CLASSSTRING || code == REGDB_E_CLASSNOTREG || code == TYPE_E_LIBNOTREGISTERED ||
           code == E_NOTIMPL;
}

} // namespace

std::shared_ptr<DatabaseConnection> shareAdo(IDispatch* connection) {
    return connection == nullptr ? nullptr : std::make_shared<AdoConnection>(connection);
}

std::shared_ptr<DatabaseConnection> openAdo(const std::string& connectionString) {
    std::shared_ptr<AdoConnection> connection;
    try {
        connection = std::make_shared<AdoConnection>();
        connection->open(connectionString);
    } catch (const com::CallFailure& failure) {
        if (meansNoAdo(failure.code()))
            return nullptr;
        if (!connection)
            throw DatabaseError(failure.code(), failure.what(), "HY000");
        throw connection->asError(failure);
    }
    return connection;
}

} // namespace kova
