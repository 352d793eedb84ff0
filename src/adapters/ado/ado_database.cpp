#include "adapters/ado/ado_database.h"

#include "adapters/ado/ado_objects.h"
#include "ports/server_pause.h"

namespace kova {
namespace {

class AdoConnection final : public DatabaseConnection {
  public:
    explicit AdoConnection(IDispatch* given) : connection_(com::Pointer<IDispatch>(given), ids_.connection) {}
    /// Of a new object, which is not open yet.
    explicit AdoConnection(std::string connectionString, const ServerTimeouts& timeouts)
        : connection_(com::LateBound::create(L"ADODB.Connection", ids_.connection)),
          text_(std::move(connectionString)), timeouts_(timeouts) {}
    /// Throws com::CallFailure.
    void open();
    DatabaseError asError(const com::CallFailure& failure) { return adoError(failure, connection_, ids_); }
    [[nodiscard]] std::chrono::seconds timeout() const override { return std::chrono::seconds(timeout_); }
    Recordset query(const Query& query) override;

  private:
    bool usable();
    std::optional<std::int32_t> timeoutOf(const wchar_t* member);
    /// It may be half open after the server fell silent.
    void close() noexcept;
    Recordset read(const Query& query);
    // Keeps ADO loaded while there is an object of it.
    com::Apartment apartment_;
    AdoIds ids_;
    com::LateBound connection_;
    std::optional<std::string> text_; ///< of one of our own
    ServerTimeouts timeouts_;
    std::atomic<std::int32_t> timeout_ = 0; ///< in seconds, of what is asked now
    ServerPause pause_{timeouts_.pause};
};

void AdoConnection::open() {
    constexpr std::int32_t OptionsUnspecified = -1;
    connection_.set(L"ConnectionString", *text_);
    if (timeouts_.logIn)
        connection_.set(L"ConnectionTimeout", static_cast<std::int32_t>(timeouts_.logIn->count()));
    if (timeouts_.query)
        connection_.set(L"CommandTimeout", static_cast<std::int32_t>(timeouts_.query->count()));
    timeoutOf(L"ConnectionTimeout");
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

/// Told as the one of what is asked next.
std::optional<std::int32_t> AdoConnection::timeoutOf(const wchar_t* member) {
    timeout_ = 0;
    try {
        return timeout_ = connection_.number(member);
    } catch (const com::CallFailure&) { // an object that only answers queries
        return std::nullopt;
    }
}

void AdoConnection::close() noexcept {
    try {
        connection_.call(L"Close");
    } catch (...) { // it was closed
    }
}

Recordset AdoConnection::read(const Query& query) {
    try {
        if (!usable() && text_)
            open();
        else if (!usable())
            return ClosedConnection().query(query);
        const auto timeout = timeoutOf(L"CommandTimeout");
        return Recordset(AdoRecords(connection_, query, ids_, timeout).readAll(query.rowsRead));
    } catch (const com::CallFailure& failure) {
        throw asError(failure);
    }
}

Recordset AdoConnection::query(const Query& query) {
    if (!text_)
        return read(query);
    return pause_.asked([&] {
        try {
            return read(query);
        } catch (const DatabaseError& error) {
            if (meansNoAnswer(error))
                close();
            throw;
        }
    });
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

std::shared_ptr<DatabaseConnection> openAdo(const std::string& connectionString,
                                            const ServerTimeouts& machine) {
    std::shared_ptr<AdoConnection> connection;
    try {
        connection = std::make_shared<AdoConnection>(connectionString, machine);
        connection->open();
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
