#include "adapters/odbc/odbc_database.h"

#include "adapters/odbc/odbc_error.h"
#include "adapters/odbc/odbc_handles.h"
#include "adapters/odbc/odbc_statement.h"

#include <optional>

namespace kova {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds BearableWait{500}; ///< of a cashier, several times in a row

class SharedConnection final : public DatabaseConnection {
  public:
    explicit SharedConnection(SQLHDBC connection) : connection_(connection) {}
    Recordset query(const Query& query) override {
        OdbcStatement statement(connection_, std::nullopt);
        statement.execute(query);
        return Recordset(statement.readAll());
    }

  private:
    SQLHDBC connection_;
};

class OwnConnection final : public DatabaseConnection {
  public:
    explicit OwnConnection(OdbcConnectionText text) : text_(std::move(text)) { connect(); }
    Recordset query(const Query& query) override;

  private:
    void connect();
    std::unique_ptr<OdbcStatement> send(const Query& query);
    /// Null when the link turns out to have died since it was used last.
    std::unique_ptr<OdbcStatement> sendOnOldLink(const Query& query);
    void dropIfUnusable(const DatabaseError& error);

    OdbcConnectionText text_;
    std::unique_ptr<OdbcSession> session_; ///< null after the link was lost
    Clock::time_point nextAttempt_{};
    std::optional<DatabaseError> lastFailure_; ///< of connecting
};

/// A server that cannot be reached may keep the cashier waiting until the log-in time-out, and a dialog that
/// opens sends several queries. After an attempt that took long, none follows for as long again: the queries
/// of that time fail at once.
void OwnConnection::connect() {
    const auto start = Clock::now();
    if (lastFailure_ && start < nextAttempt_)
        throw *lastFailure_;
    try {
        session_ = std::make_unique<OdbcSession>(text_);
        lastFailure_.reset();
    } catch (const DatabaseError& error) {
        const auto duration = Clock::now() - start;
        nextAttempt_ = Clock::now() + (duration < BearableWait ? Clock::duration::zero() : duration);
        lastFailure_ = error;
        throw;
    }
}

/// After a time-out the server may still be about to answer, so that the connection is as good as lost.
void OwnConnection::dropIfUnusable(const DatabaseError& error) {
    if (isConnectionFailure(error) || error.number() == QueryTimedOut || isDead(session_->get()))
        session_.reset();
}

std::unique_ptr<OdbcStatement> OwnConnection::send(const Query& query) {
    try {
        auto statement = std::make_unique<OdbcStatement>(session_->get(), text_.queryTimeout);
        statement->execute(query);
        return statement;
    } catch (const DatabaseError& error) {
        dropIfUnusable(error);
        throw;
    }
}

std::unique_ptr<OdbcStatement> OwnConnection::sendOnOldLink(const Query& query) {
    try {
        return send(query);
    } catch (const DatabaseError& error) {
        if (session_ || error.number() == QueryTimedOut)
            throw;
        return nullptr;
    }
}

Recordset OwnConnection::query(const Query& query) {
    auto statement = session_ ? sendOnOldLink(query) : nullptr;
    if (!statement) { // a query that only reads may be sent again
        connect();
        statement = send(query);
    }
    try {
        return Recordset(statement->readAll());
    } catch (const DatabaseError& error) {
        statement.reset(); // before its connection
        dropIfUnusable(error);
        throw;
    }
}

} // namespace

std::shared_ptr<DatabaseConnection> openOdbc(const std::string& connectionString) {
    return std::make_shared<OwnConnection>(parseOdbcConnectionText(connectionString, serverDriver()));
}

std::shared_ptr<DatabaseConnection> shareOdbc(void* connectionHandle) {
    return std::make_shared<SharedConnection>(connectionHandle);
}

} // namespace kova
